#pragma once

#include "view/TextEditor.h"
#include "viewbase/EditorInput.h"
#include "viewbase/ViewCommand.h"

// What the user does to a text view: routes keys, characters, the mouse and commands to the files Editor*.h, which
// work on the editor. Without a document there is nothing to be done.
class TextInput final : public EditorInput, public DragTarget {
public:
    explicit TextInput(TextEditor& shown) : editor(shown) {}
    TextInput(const TextInput&) = delete;
    TextInput& operator=(const TextInput&) = delete;

    // EditorInput.
    void OnAttached() override { editor.WindowAttached(); }
    void OnSize(bool coloursChanged) override { editor.LayOut(coloursChanged); }
    void OnFocus() override { editor.FocusGained(); }
    void OnKeyDown(uint32_t key) override;
    void OnChar(Char character) override;
    void OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) override;
    void OnWheel(const WheelTurn& turn) override;
    void OnSidewaysWheel(int32_t delta, int32_t columnsPerNotch) override;
    DragSelection& Drag() override { return drag; }
    int32_t VisibleLines() const override { return editor.VisibleLines(); }
    void Invalidate() override { editor.Invalidate(); }
    void SuspendRedraw() override { editor.SuspendRedraw(); }
    void ResumeRedraw() override { editor.ResumeRedraw(); }

    // Opens the file that the line names in output, else selects the word.
    void OnDoubleClick();
    bool IsCommandEnabled(ViewCommand command) const;
    // False for an unknown command.
    bool ExecuteCommand(ViewCommand command);

private:
    // DragTarget.
    bool BeginSelection(ClientPoint point, bool extend) override;
    void ExtendSelection(ClientPoint point) override;

    TextEditor& editor;
    DragSelection drag{editor.Surface(), *this};
    MouseWheel wheel;
    MouseWheel sidewaysWheel;
};
