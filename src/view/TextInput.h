#pragma once

#include "view/EditorCommands.h"
#include "view/EditorTyping.h"
#include "view/TextEditor.h"
#include "viewbase/InputBase.h"

// What the user does to a text view: routes keys (EditorKeys), characters (EditorTyping), commands (EditorCommands) and
// the mouse to the files Editor*.h, which work on the editor. Without a document there is nothing to be done.
class TextInput final : public InputBase<TextEditor> {
public:
    explicit TextInput(TextEditor& shown) : InputBase(shown, EditorCommands::Rows) {}

    // EditorInput.
    void OnSize(bool coloursChanged) override { editor.LayOut(coloursChanged); }
    void OnKeyDown(uint32_t key) override;
    void OnChar(Char character) override { TypeUnit(character, TypedBy::Keys); }
    void OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) override;

    // A wheel was tilted, or fingers went sideways: 120 is a notch to the right. A notch is worth some columns, but no
    // more than are seen.
    void OnSidewaysWheel(int32_t delta, int32_t columnsPerNotch);
    // Opens the file that the line names in output, else selects the word.
    void OnDoubleClick();
    // An input method begins to compose at the caret, which is scrolled into view if what it composes can be typed.
    void OnComposition();
    // What it has composed, character by character. Ctrl may be held: it has keys with Ctrl of its own.
    void OnComposed(Char character) { TypeUnit(character, TypedBy::InputMethod); }

private:
    // Holds back the first half of a pair until the second one comes (WholeCharacters).
    void TypeUnit(Char character, TypedBy source);

    // DragTarget.
    bool BeginSelection(ClientPoint point, bool extend) override;
    void ExtendSelection(ClientPoint point) override;

    MouseWheel sidewaysWheel;
    Char firstHalf = 0; // of a pair whose second half is to be typed next; 0 for none
};
