// What commands print, appended to an output document.

#include "base/Scan.h"
#include "document/TextBuffer.h"

#include <cstring>

bool TextBuffer::GetOutputState(bool& running) const {
    if (!isOutput) return false;
    running = run.process != nullptr;
    return true;
}

bool TextBuffer::MarkAsOutput() {
    // What is typed cannot be written back once the document is read-only.
    if (!CommitEdit()) return false;
    CloseEditLine();
    readOnly = isOutput = 1;
    return true;
}

bool TextBuffer::AppendOutputText(Char* added) {
    if (!isOutput) return false;
    uint32_t addedLines = 0;
    uint32_t style = 0;
    const uint32_t from = length;
    const uint32_t count = NormaliseLineBreaks(added, addedLines, style);
    if (!EnsureCapacity(uint64_t{length} + count)) return false;
    std::memcpy(text + length, added, count * sizeof(Char));
    length += count;
    text[length] = 0;
    NotifyAppended(from, addedLines - 1);
    return true;
}

void TextBuffer::NotifyAppended(uint32_t from, uint32_t newLines) {
    const uint32_t oldLine = lineCount - 1;
    const uint32_t oldStart =
        lastLineStart != None32 ? lastLineStart : static_cast<uint32_t>(Scan::FindLineStart(text, from));
    const size_t newStart = from + Scan::FindLineStart(text + from, length - from);
    const Operation operation(*this);
    const Telling guard(*this);
    edited = true;
    TellTextChanged(from);
    lastLineStart = newLines ? static_cast<uint32_t>(newStart) : oldStart;
    lineCount += newLines;
    const uint32_t column = length - lastLineStart;
    for (const ViewNode* node = views.head; node; node = node->next) {
        DocumentView* view = node->view;
        const bool wasAtEnd = view->CaretLine() == oldLine && view->CaretColumn() == from - oldStart;
        if (wasAtEnd) view->PlaceCaret(lineCount - 1, column);
    }
    // The views hear of the count only now: a scroll bar, which is slow to set, is then set once.
    SetLineCount(lineCount);
    InvalidateViews();
}

bool TextBuffer::EmptyAndResetUndo() {
    const Operation operation(*this);
    ForgetUndo();
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
    lineCount = 1;
    lastLineStart = None32;
    MoveViewsToStart();
    InvalidateViews();
    return true;
}
