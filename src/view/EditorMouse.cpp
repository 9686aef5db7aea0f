// The mouse in a TextEditor.

#include "view/EditorActions.h"
#include "view/TextEditor.h"

void TextEditor::OnLeftButtonDown(ClientPoint point, bool shift) {
    if (!document) return;
    document->CommitEdit();
    surface.TakeFocus();
    CollapseSelection();
    uint32_t line = 0;
    uint32_t column = 0;
    PositionAt(point, line, column);
    MoveCaret(line, column, shift);
    drag.Begin(point);
}

void TextEditor::OnMouseMove(ClientPoint point) {
    if (drag.MoveTo(point)) DragTo(point);
}

void TextEditor::OnDragTimer() {
    if (drag.IsActive()) DragTo(drag.Point());
}

// The move scrolls the caret into view: a mouse held above or below the window scrolls on.
void TextEditor::DragTo(ClientPoint point) {
    uint32_t line = 0;
    uint32_t column = 0;
    PositionAt(point, line, column);
    if (line != caretLine || column != caretColumn) MoveCaret(line, column, true);
}

void TextEditor::OnDoubleClick() {
    if (!document) return;
    if (document->IsOutput()) {
        EditorActions::OpenNamedFile(*this);
    } else {
        EditorActions::SelectWord(*this, false);
    }
}
