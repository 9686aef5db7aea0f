#include "document/BulkEdit.h"

#include "base/Scan.h"
#include "document/TextBuffer.h"

#include <cstring>

bool TextBuffer::ReplaceRanges(Array<ReplacedRange>& changes, const Char* inserted, uint32_t count) {
    if (readOnly || changes.IsEmpty()) return true;
    if (!CommitEdit()) return false;
    auto* record = new BulkEdit(this);
    if (!record || !record->SetUp(changes, inserted, count)) {
        delete record;
        return false;
    }
    DropEditLine();
    return PerformAndPush(record);
}

bool BulkEdit::SetUp(Array<ReplacedRange>& places, const Char* inserted, uint32_t length) {
    changes.TakeAll(places);
    uint64_t removed = 0;
    for (size_t i = 0; i < changes.Count(); ++i) removed += changes[i].removed;
    const uint64_t added = uint64_t{length} * changes.Count();
    if (document->length - removed + added >= None32) return false;
    if (!SetUpEdit(changes[0].offset, inserted, length)) return false;
    growth = static_cast<int64_t>(added) - static_cast<int64_t>(removed);

    if (!removedText.Reserve(static_cast<uint32_t>(removed))) return false;
    for (size_t i = 0; i < changes.Count(); ++i)
        removedText.Append(document->text + changes[i].offset, changes[i].removed);
    removedLines = static_cast<uint32_t>(Scan::CountLineFeeds(removedText.Text(), removedText.Length()));
    return true;
}

bool BulkEdit::Redo() {
    const uint64_t newLength = document->length + static_cast<uint64_t>(growth);
    if (!document->EnsureCapacity(newLength)) return false;
    if (!performed) MapTopLines();
    MoveMarks(false);
    ChangeText(false);
    TakeDownChange(false);
    return true;
}

void BulkEdit::MoveViews(bool undone) {
    if (undone) return TextEdit::MoveViews(true);
    const size_t end = changes.Count() - 1;
    const uint32_t last = NewOffset(end, removedText.Length() - changes[end].removed) + count;
    for (ViewState* viewState = &views; viewState; viewState = viewState->next) {
        if (document->HasView(viewState->view)) MoveView(*viewState, last);
    }
    performed = true;
    MoveOtherViews();
}

// Every single change would take the carets along and scroll them into view. As they go downwards only,
// the first and the last of them decide where a view comes to stand; done again, the last alone.
void BulkEdit::MoveView(ViewState& viewState, uint32_t last) {
    DocumentView& view = *viewState.view;
    if (performed) {
        view.PlaceTopLine(viewState.topLineAfter);
    } else {
        const uint32_t first = changes[0].removed ? changes[0].offset : changes[0].offset + count;
        view.PlaceTopLine(LineAfter(viewState.topLineAfter));
        view.PlaceSelection(first, first);
    }
    view.PlaceSelection(last, last);
    viewState.topLineAfter = view.TopLine();
}

// As one change from the first place to the end of the last.
void BulkEdit::TakeDownChange(bool back) {
    const size_t end = changes.Count() - 1;
    const uint32_t newEnd = NewOffset(end, removedText.Length() - changes[end].removed) + count;
    const uint32_t oldEnd = changes[end].offset + changes[end].removed;
    const uint32_t start = changes[0].offset;
    const auto addedLines = newLines * static_cast<uint32_t>(changes.Count());
    const uint32_t linesNow = LinesBetween(start, back ? oldEnd : newEnd);
    change = TextChange();
    change.start = start;
    change.removed = (back ? newEnd : oldEnd) - start;
    change.inserted = (back ? oldEnd : newEnd) - start;
    change.startLine = LineAfter(start);
    change.removedLines = back ? linesNow + addedLines - removedLines : linesNow + removedLines - addedLines;
    change.insertedLines = linesNow;
}

bool BulkEdit::Undo() {
    if (!document->EnsureCapacity(document->length - static_cast<uint64_t>(growth))) return false;
    ChangeText(true);
    MoveMarks(true);
    TakeDownChange(true);
    return true;
}

uint32_t BulkEdit::NewOffset(size_t index, uint32_t removedBefore) const {
    return changes[index].offset + static_cast<uint32_t>(index) * count - removedBefore;
}

// `topLineAfter` becomes the offset, in the new text, of a place on the line that the view then begins
// with. A top line that starts inside what changes gives way to the line of the change.
void BulkEdit::MapTopLines() {
    for (ViewState* viewState = &views; viewState && viewState->view; viewState = viewState->next) {
        uint32_t top = document->LineToOffset(viewState->topLineBefore);
        uint32_t shift = 0; // modulo 2^32
        for (size_t i = 0; i < changes.Count(); ++i) {
            const uint32_t start = changes[i].offset + shift;
            if (top < start) break;
            const bool inside = top < start + changes[i].removed;
            top = inside ? start : top - changes[i].removed;
            if (inside || top < start + count) {
                top = start;
                break;
            }
            top += count;
            shift += count - changes[i].removed;
        }
        viewState->topLineAfter = top;
    }
}

uint32_t BulkEdit::LineAfter(uint32_t offset) const {
    uint32_t lineStart = 0;
    return document->OffsetToLine(offset, lineStart);
}

void BulkEdit::ChangeText(bool back) {
    const auto total = static_cast<uint32_t>(back ? -growth : growth); // modulo 2^32
    const uint32_t newLength = document->length + total;
    if (Grows() != back) {
        SpreadOut(back, newLength);
    } else {
        CloseUp(back);
    }
    document->length = newLength;
    document->text[newLength] = 0;
    document->lineCache.Clear();
    document->lastLineStart = None32;
    const uint32_t addedLines = newLines * static_cast<uint32_t>(changes.Count());
    document->lineCount += back ? removedLines - addedLines : addedLines - removedLines;
}

// From the end to the start: everything moves to the right or stays.
void BulkEdit::SpreadOut(bool back, uint32_t newLength) {
    Char* store = document->text;
    uint32_t from = document->length;
    uint32_t to = newLength;
    uint32_t removedBefore = removedText.Length();
    for (size_t i = changes.Count(); i-- > 0;) {
        removedBefore -= changes[i].removed;
        const Place place = PlaceOf(i, removedBefore, back);
        const uint32_t behind = place.offset + place.oldLength;
        to -= from - behind;
        if (to != behind) std::memmove(store + to, store + behind, (from - behind) * sizeof(Char));
        to -= place.newLength;
        std::memcpy(store + to, place.newText, place.newLength * sizeof(Char));
        from = place.offset;
    }
}

// From the start to the end: everything moves to the left or stays.
void BulkEdit::CloseUp(bool back) {
    Char* store = document->text;
    uint32_t from = changes[0].offset;
    uint32_t to = from;
    uint32_t removedBefore = 0;
    for (size_t i = 0; i < changes.Count(); ++i) {
        const Place place = PlaceOf(i, removedBefore, back);
        removedBefore += changes[i].removed;
        std::memmove(store + to, store + from, (place.offset - from) * sizeof(Char));
        to += place.offset - from;
        std::memcpy(store + to, place.newText, place.newLength * sizeof(Char));
        to += place.newLength;
        from = place.offset + place.oldLength;
    }
    std::memmove(store + to, store + from, (size_t{document->length} - from) * sizeof(Char));
}

BulkEdit::Place BulkEdit::PlaceOf(size_t index, uint32_t removedBefore, bool back) const {
    const ReplacedRange& range = changes[index];
    if (!back) return {range.offset, range.removed, count, text.Text()};
    return {NewOffset(index, removedBefore), count, range.removed, removedText.Text() + removedBefore};
}

// As every single change would move them. The store holds the old text.
void BulkEdit::MoveMarks(bool back) {
    if ((newLines == 0 && removedLines == 0) || !document->marks.Head()) return;
    const size_t places = changes.Count();
    uint32_t before = LinesBetween(0, changes[back ? places - 1 : 0].offset); // old line of the place
    uint32_t goneBefore = back ? removedLines : 0;
    for (size_t step = 0; step < places; ++step) {
        const size_t i = back ? places - 1 - step : step;
        const ReplacedRange& range = changes[i];
        const uint32_t gone = LinesBetween(range.offset, range.offset + range.removed);
        if (back) goneBefore -= gone;
        // The line once all earlier places have changed.
        MoveMarksAt(before - goneBefore + static_cast<uint32_t>(i) * newLines, gone, back);
        if (back) {
            before -= i ? LinesBetween(changes[i - 1].offset, range.offset) : 0;
        } else {
            goneBefore += gone;
            before += i + 1 < places ? LinesBetween(range.offset, changes[i + 1].offset) : 0;
        }
    }
}

void BulkEdit::MoveMarksAt(uint32_t line, uint32_t gone, bool back) {
    LineMarks& marks = document->marks;
    if (gone && !back) marks.LinesDeleted(line, gone);
    if (newLines && !back) marks.LinesInserted(line, newLines);
    if (newLines && back) marks.LinesTakenBack(line, newLines);
    if (gone && back) marks.LinesInserted(line, gone);
}

uint32_t BulkEdit::LinesBetween(uint32_t from, uint32_t to) const {
    return static_cast<uint32_t>(Scan::CountLineFeeds(document->text + from, to - from));
}
