// What commands print, appended to an output document.

#include "document/TextBuffer.h"

#include <cstring>

bool TextBuffer::GetOutputState(bool& running) const {
    if (!isOutput) return false;
    running = run.process != nullptr;
    return true;
}

bool TextBuffer::AppendOutputText(Char* added) {
    if (!isOutput) return false;
    uint32_t oldLine = 0;
    uint32_t oldColumn = 0;
    OffsetToLineColumn(length, oldLine, oldColumn);
    uint32_t addedLines = 0;
    uint32_t style = 0;
    const uint32_t count = NormaliseLineBreaks(added, addedLines, style);
    if (!InsertIntoStore(length, added, count, addedLines - 1)) return false;
    FollowEnd(oldLine, oldColumn);
    return true;
}

void TextBuffer::FollowEnd(uint32_t oldLine, uint32_t oldColumn) {
    if (editLineNo != None32) {
        const uint32_t open = editLineNo;
        DropEditLine();
        LoadEditLine(open);
    }
    uint32_t line = 0;
    uint32_t column = 0;
    OffsetToLineColumn(length, line, column);
    for (const ViewNode* node = views.head; node; node = node->next) {
        DocumentView* view = node->view;
        if (view->CaretLine() == oldLine && view->CaretColumn() == oldColumn) view->MoveCaret(line, column);
    }
    RepaintAll();
}

bool TextBuffer::EmptyAndResetUndo() {
    for (const ViewNode* node = views.head; node; node = node->next) node->view->MoveCaret(0, 0);
    FreeRecords(undoHead);
    FreeRecords(redoHead);
    savedUndoHead = 0;
    marks.Clear();
    lineCache.Clear();
    CloseEditLine();
    if (text) {
        // Should giving back the room not work, the empty text just keeps it.
        if (void* smaller = Heap::Resize(text, capacity * sizeof(Char), sizeof(Char))) {
            text = static_cast<Char*>(smaller);
            capacity = 1;
        }
        text[0] = 0;
    }
    length = 0;
    TellTextChanged(0);
    SetLineCount(1);
    RepaintAll();
    return true;
}

// Commands are not run into documents yet, so there is never one to stop.
void TextBuffer::StopProcess() {}
