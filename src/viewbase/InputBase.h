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

    Editor& editor;
    MouseWheel wheel;

private:
    const CommandRows<Editor>& commands;
    DragSelection drag{editor.Surface(), *this};
};
