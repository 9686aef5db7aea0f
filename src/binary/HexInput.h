#pragma once

#include "binary/HexEditor.h"
#include "viewbase/EditorInput.h"
#include "viewbase/ViewCommand.h"

// What the user does to a hex view: routes keys, characters, the mouse and commands to HexKeys, HexTyping and
// HexCommands, which work on the editor. Without a document there is nothing to be done.
class HexInput final : public EditorInput, public DragTarget {
public:
    explicit HexInput(HexEditor& shown) : editor(shown) {}
    HexInput(const HexInput&) = delete;
    HexInput& operator=(const HexInput&) = delete;

    // EditorInput.
    void OnAttached() override { editor.WindowAttached(); }
    void OnSize(bool) override { editor.LayOut(); }
    void OnFocus() override { editor.FocusGained(); }
    void OnKeyDown(uint32_t key) override;
    void OnChar(Char character) override;
    void OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) override;
    void OnWheel(const WheelTurn& turn) override;
    void OnSidewaysWheel(int32_t, int32_t) override {} // nothing ever scrolls sideways
    DragSelection& Drag() override { return drag; }
    int32_t VisibleLines() const override { return editor.Viewport().VisibleRows(); }
    void Invalidate() override { editor.Invalidate(); }
    void SuspendRedraw() override { editor.SuspendRedraw(); }
    void ResumeRedraw() override { editor.ResumeRedraw(); }

    bool IsCommandEnabled(ViewCommand command) const;
    // False for an unknown command.
    bool ExecuteCommand(ViewCommand command);

private:
    // DragTarget.
    bool BeginSelection(ClientPoint point, bool extend) override;
    void ExtendSelection(ClientPoint point) override;

    HexEditor& editor;
    DragSelection drag{editor.Surface(), *this};
    MouseWheel wheel;
};
