#pragma once

#include "binary/HexCommands.h"
#include "binary/HexEditor.h"
#include "viewbase/InputBase.h"

// What the user does to a hex view: routes keys, characters, the mouse and commands to HexKeys, HexTyping and
// HexCommands, which work on the editor. Without a document there is nothing to be done.
class HexInput final : public InputBase<HexEditor> {
public:
    explicit HexInput(HexEditor& shown) : InputBase(shown, HexCommands::Rows) {}

    // EditorInput.
    void OnSize(bool) override { editor.LayOut(); }
    void OnKeyDown(uint32_t key) override;
    void OnChar(Char character) override;

private:
    // DragTarget.
    void ExtendSelection(ClientPoint point) override;
};
