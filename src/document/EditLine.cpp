// The line of a TextBuffer that is being typed in, and the editing operations.

#include "base/Assert.h"
#include "base/Text.h"
#include "document/TextBuffer.h"

#include <algorithm>
#include <cstring>

bool TextBuffer::LoadEditLine(uint32_t line) {
    // Nothing is typed into a read-only document, whose last line may be long and go on growing.
    if (!text || readOnly) return true;
    ORVANE_ASSERT(!telling);
    line = std::min(line, lineCount - 1);
    if (line == editLineNo) return true;
    if (!CommitEdit()) return false;

    const uint32_t start = LineToOffset(line);
    bool isLast = false;
    const uint32_t count = LineLength(start, isLast) + 1; // with its line feed or the terminator
    if (!editLine.Assign(text + start, count)) return false;
    editLineNo = line;
    editLineStart = start;
    editLineStoreLen = count;
    return true;
}

bool TextBuffer::CommitEdit() {
    if (readOnly || !editDirty || editLineNo == None32) return true;
    ORVANE_ASSERT(!telling);
    const uint32_t oldCount = editLineStoreLen;
    const uint32_t newCount = editLine.Length();
    const uint64_t newLength = uint64_t{length} - oldCount + newCount;
    if (!EnsureCapacity(newLength)) return false;

    // On the last line the edit line's end stands for the terminator, which `length` does not count:
    // nothing follows then.
    const size_t end = size_t{editLineStart} + oldCount;
    const size_t tail = length > end ? length - end : 0;
    std::memmove(text + editLineStart + newCount, text + end, tail * sizeof(Char));
    if (newCount > oldCount) lineCache.Inserted(editLineStart, newCount - oldCount, 0);
    if (newCount < oldCount) lineCache.Deleted(editLineStart + newCount, oldCount - newCount, 0);
    std::memcpy(text + editLineStart, editLine.Text(), newCount * sizeof(Char));
    length = static_cast<uint32_t>(newLength);
    text[length] = 0;

    lastLineStart = None32;
    MarkCommitted(undoHead);
    MarkCommitted(redoHead);
    MarkCommitted(stashedRedo);
    DropEditLine();
    editDirty = 0;
    TellTextChanged(editLineStart);
    return true;
}

bool TextBuffer::OpenCaretLine(const DocumentView* view) {
    if (view && !LoadEditLine(view->CaretLine())) return false;
    return editLineNo != None32 && !editLine.IsEmpty();
}

bool TextBuffer::TypeChar(DocumentView* view, Char ch, uint32_t column, bool notifyEngine, bool overwrite) {
    if (readOnly) return true;
    // A line feed typed as such breaks the line as well: the edit line never holds one inside.
    if (ch == u'\r' || ch == u'\n') return NewLine(view, column);
    if (!OpenCaretLine(view)) return false;
    const uint64_t committed = uint64_t{length} - editLineStoreLen + editLine.Length();
    if (committed + 1 >= None32) return false;

    const uint32_t end = editLine.Length() - 1;
    column = std::min(column, end);
    if (!overwrite && undoHead && undoHead->state == UndoRecord::InEditLine) {
        auto& typed = static_cast<LineEdit&>(*undoHead);
        if (typed.Continues(ch, column)) return ExtendTyping(typed, view, ch, column, notifyEngine);
    }
    const Char replaced = overwrite && column < end ? editLine[column] : u'\0';
    return PushLineEdit(new LineEdit(this, false), column, &ch, 1, replaced);
}

bool TextBuffer::ExtendTyping(LineEdit& typed, DocumentView* view, Char ch, uint32_t column, bool notifyEngine) {
    const Operation operation(*this);
    TextChange change = {editLineStart + column, 0, 1, editLineNo, 0, 0, true, false};
    bool affects = notifyEngine && EditLineAffectsFollowingLines();
    if (!typed.text.Reserve(typed.text.Length() + 1) || !editLine.Insert(column, &ch, 1)) return false;
    typed.text.AppendChar(ch);
    ++typed.count;
    ++typed.growth;
    editDirty = 1;
    // Only a step taken back while memory was short can be left here; it does not fit the line any more.
    FreeRecords(redoHead);
    affects = affects || (notifyEngine && EditLineAffectsFollowingLines());
    change.affectsFollowingLines = affects;
    TellTyped(change, view, column + 1, notifyEngine);
    return true;
}

void TextBuffer::TellTyped(const TextChange& change, DocumentView* view, uint32_t caretColumn, bool repaint) {
    const Telling guard(*this);
    TellChange(change);
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view != view) node->view->FollowChange(change);
    }
    if (view) view->PlaceCaret(view->CaretLine(), caretColumn);
    if (repaint) RepaintChange(change);
}

bool TextBuffer::PushLineEdit(LineEdit* record, uint32_t column, const Char* changed, uint32_t count, Char replaced) {
    if (record && record->SetUp(column, changed, count, replaced)) return PerformAndPush(record);
    delete record;
    return false;
}

bool TextBuffer::NewLine(DocumentView* view, uint32_t column) {
    if (readOnly) return true;
    if (!OpenCaretLine(view)) return false;
    const uint32_t end = editLine.Length() - 1;
    column = std::min(column, end);
    const Char* line = editLine.Text();
    const uint32_t blanks = std::all_of(line + column, line + end, Text::IsBlank) ? end - column : 0;
    uint32_t indent = 0;
    while (indent < column && Text::IsBlank(line[indent])) ++indent;

    WString inserted;
    if (!inserted.Assign(u"\n") || !inserted.Append(line, indent)) return false;
    const uint32_t offset = editLineStart + column;
    if (!blanks) return InsertText(offset, inserted.Text(), inserted.Length());
    return BreakBeforeBlanks(view, column, blanks, offset, inserted);
}

// An Enter that also removes the blanks after the caret.
bool TextBuffer::BreakBeforeBlanks(DocumentView* view, uint32_t column, uint32_t blanks, uint32_t offset,
                                   const WString& inserted) {
    const Operation operation(*this);
    if (!CommitEdit() || !BeginGroup()) return false;
    if (DeleteInEditLine(view, column, blanks) && InsertText(offset, inserted.Text(), inserted.Length()) && EndGroup())
        return true;
    AbandonGroup();
    return false;
}

bool TextBuffer::DeleteInEditLine(DocumentView* view, uint32_t column, uint32_t count) {
    if (readOnly) return true;
    if (!OpenCaretLine(view)) return false;
    const uint32_t end = editLine.Length() - 1; // its line feed, or the terminator on the last line
    if (column <= end && editLine[end] == u'\n') return CommitEdit() && DeleteText(editLineStart + column, count);
    if (column >= end || count == 0) return false;
    count = std::min(count, end - column);
    return PushLineEdit(new LineEdit(this, true), column, editLine.Text() + column, count, u'\0');
}

bool TextBuffer::InsertText(uint32_t offset, const Char* inserted, uint32_t count) {
    if (readOnly || count == 0) return true;
    if (!CommitEdit() || uint64_t{length} + count >= None32) return false;
    auto* record = new InsertEdit(this);
    if (!record || !record->SetUp(std::min(offset, length), inserted, count)) {
        delete record;
        return false;
    }
    DropEditLine();
    return PerformAndPush(record);
}

bool TextBuffer::DeleteText(uint32_t offset, uint32_t count) {
    if (readOnly) return true;
    if (!CommitEdit()) return false;
    offset = std::min(offset, length);
    count = std::min(count, length - offset);
    if (count == 0) return true;
    auto* record = new DeleteEdit(this);
    if (!record || !record->SetUp(offset, count)) {
        delete record;
        return false;
    }
    DropEditLine();
    return PerformAndPush(record);
}
