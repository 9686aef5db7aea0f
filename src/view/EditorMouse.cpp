// The mouse in a TextEditor.

#include "view/EditorActions.h"
#include "view/TextEditor.h"

void TextEditor::OnLeftButtonDown(int32_t x, int32_t y, bool shift) {
    if (!document) return;
    document->CommitEdit();
    surface.TakeFocus();
    CollapseSelection();
    uint32_t line = 0;
    uint32_t column = 0;
    PositionAt(x, y, line, column);
    MoveCaret(line, column, shift);
    dragging = true;
    dragX = x;
    dragY = y;
    surface.BeginDrag();
}

void TextEditor::OnMouseMove(int32_t x, int32_t y) {
    if (!dragging) return;
    dragX = x;
    dragY = y;
    OnDragTimer();
}

// The move scrolls the caret into view: a mouse held above or below the window scrolls on.
void TextEditor::OnDragTimer() {
    if (!dragging) return;
    uint32_t line = 0;
    uint32_t column = 0;
    PositionAt(dragX, dragY, line, column);
    if (line != caretLine || column != caretColumn) MoveCaret(line, column, true);
}

void TextEditor::OnLeftButtonUp() {
    if (dragging) surface.EndDrag();
}

void TextEditor::OnCaptureLost() {
    if (!dragging) return;
    dragging = false;
    surface.EndDrag();
}

void TextEditor::OnDoubleClick() {
    if (!document) return;
    if (document->IsOutput()) {
        EditorActions::OpenNamedFile(*this);
    } else {
        EditorActions::SelectWord(*this, false);
    }
}
