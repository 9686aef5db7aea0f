#pragma once

#include "viewbase/CommandRows.h"
#include "viewbase/EditorInput.h"

// The part of an EditorInput that is the same for every editor: passes on what needs no decision, and the numbered
// commands. Without a document there is nothing to be done.
template <class Editor> class InputBase : public EditorInput, public DragTarget {
public:
    InputBase(const InputBase&) = delete;
    InputBase& operator=(const InputBase&) = delete;

    // EditorInput.
    void OnAttached() override { editor.WindowAttached(); }
    void OnFocus() override { editor.FocusGained(); }
    // Along the vertical axis; along the other one nothing happens.
    void OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) override {
        if (axis == ScrollAxis::Vertical) ScrollTo(editor.Viewport().ScrolledRows().After(request, 1, trackPosition));
    }
    void OnWheel(const WheelTurn& turn) override {
        const int64_t rows = wheel.Turn(turn, editor.Surface().Host());
        if (rows != 0) ScrollTo(editor.Viewport().ScrolledRows().Moved(rows));
    }
    DragSelection& Drag() override { return drag; }
    int32_t VisibleLines() const override { return editor.Viewport().VisibleRows(); }
    void Invalidate() override { editor.Invalidate(); }
    void SuspendRedraw() override { editor.SuspendRedraw(); }
    void ResumeRedraw() override { editor.ResumeRedraw(); }

    bool IsCommandEnabled(ViewCommand command) const {
        return editor.HasDocument() && commands.IsEnabled(editor, command);
    }
    // False for an unknown command.
    bool ExecuteCommand(ViewCommand command) {
        if (!IsKnown(command)) return false;
        if (editor.HasDocument()) commands.Execute(editor, command);
        return true;
    }

protected:
    InputBase(Editor& shown, const CommandRows<Editor>& rows) : editor(shown), commands(rows) {}
    ~InputBase() = default;

    // DragTarget.
    bool BeginSelection(ClientPoint point, bool extend) override {
        if (!editor.HasDocument()) return false;
        editor.Surface().TakeFocus();
        // With Shift the new selection reaches from the caret, not from where the old one began.
        editor.CollapseSelection();
        editor.MoveCaret(editor.PlaceAt(point), extend);
        return true;
    }

    Editor& editor;

private:
    void ScrollTo(uint64_t row) {
        if (!editor.HasDocument()) return;
        editor.ScrollTo(row);
        editor.UpdateCaret(false);
    }

    MouseWheel wheel;
    const CommandRows<Editor>& commands;
    DragSelection drag{editor.Surface(), *this};
};
