#include "document/BulkEdit.h"

#include "base/Scan.h"
#include "document/EditTarget.h"

#include <cstring>

bool BulkEdit::SetUp(Array<ReplacedRange>& places, const Char* inserted, uint32_t length) {
    ranges.TakeAll(places);
    uint64_t removed = 0;
    for (size_t i = 0; i < ranges.Count(); ++i) removed += ranges[i].removed;
    const uint64_t added = uint64_t{length} * ranges.Count();
    if (target.content.Length() - removed + added >= TextStore::LengthLimit) return false;
    if (!SetUpEdit(ranges[0].offset, inserted, length)) return false;
    growth = static_cast<int64_t>(added) - static_cast<int64_t>(removed);

    if (!removedText.Reserve(static_cast<uint32_t>(removed))) return false;
    for (size_t i = 0; i < ranges.Count(); ++i)
        if (!removedText.Append(target.content.Content() + ranges[i].offset, ranges[i].removed)) return false;
    removedLines = static_cast<uint32_t>(Scan::CountLineFeeds(removedText.Text(), removedText.Length()));
    return true;
}

bool BulkEdit::Redo() {
    const uint64_t newLength = target.content.Length() + static_cast<uint64_t>(growth);
    if (!target.parts.store.EnsureCapacity(newLength)) return false;
    // Both count lines in the old text. So Undo calls MoveMarks last, when the old text is back.
    if (!hasRun) MapTopLines();
    MoveMarks(false);
    ChangeText(false);
    RecordChange(false);
    return true;
}

void BulkEdit::MoveViews(bool undoing) {
    if (HasOtherViews()) CountChangedLines(undoing);
    if (undoing) return TextEdit::MoveViews(true);
    const size_t end = ranges.Count() - 1;
    const uint32_t last = NewOffset(end, removedText.Length() - ranges[end].removed) + count;
    for (ViewState* viewState = &viewStates; viewState; viewState = viewState->next) {
        if (target.views.Holds(viewState->view)) MoveView(*viewState, last);
    }
    hasRun = true;
    MoveOtherViews();
}

// Has the effect of changing the places one by one, each moving the caret and scrolling it into view. The places
// ascend, so only the first and the last decide where a view ends up; on redo only the last.
void BulkEdit::MoveView(ViewState& viewState, uint32_t last) {
    TextDocumentView& view = *viewState.view;
    if (hasRun) {
        view.PlaceTopLine(viewState.topLineAfter);
    } else {
        const uint32_t first = ranges[0].removed ? ranges[0].offset : ranges[0].offset + count;
        view.PlaceTopLine(LineAt(viewState.topLineAfter));
        view.PlaceSelection({first, first});
    }
    view.PlaceSelection({last, last});
    viewState.topLineAfter = view.TopLine();
}

// As one change from the first place to the end of the last.
void BulkEdit::RecordChange(bool undoing) {
    const size_t end = ranges.Count() - 1;
    const uint32_t newEnd = NewOffset(end, removedText.Length() - ranges[end].removed) + count;
    const uint32_t oldEnd = ranges[end].offset + ranges[end].removed;
    change = TextChange();
    change.start = ranges[0].offset;
    change.removed.characters = (undoing ? newEnd : oldEnd) - change.start;
    change.inserted.characters = (undoing ? oldEnd : newEnd) - change.start;
}

// Costs a pass over the change, which only views that the record does not know are worth.
void BulkEdit::CountChangedLines(bool undoing) {
    const auto addedLines = lineFeeds * static_cast<uint32_t>(ranges.Count());
    // The store holds the new text. Outside of the change the old one is the same, so that the number of its lines
    // inside follows from the totals.
    const uint32_t linesNow = LinesIn({change.start, change.start + change.inserted.characters});
    change.startLine = LineAt(change.start);
    change.removed.lineFeeds = undoing ? linesNow + addedLines - removedLines : linesNow + removedLines - addedLines;
    change.inserted.lineFeeds = linesNow;
}

bool BulkEdit::Undo() {
    if (!target.parts.store.EnsureCapacity(target.content.Length() - static_cast<uint64_t>(growth))) return false;
    ChangeText(true);
    MoveMarks(true);
    RecordChange(true);
    return true;
}

uint32_t BulkEdit::NewOffset(size_t index, uint32_t removedBefore) const {
    return ranges[index].offset + static_cast<uint32_t>(index) * count - removedBefore;
}

// `topLineAfter` becomes the offset, in the new text, of a place on the line that the view then begins
// with. A top line that starts inside what changes gives way to the line of the change.
void BulkEdit::MapTopLines() {
    for (ViewState* viewState = &viewStates; viewState && viewState->view; viewState = viewState->next) {
        uint32_t top = target.content.LineToOffset(viewState->topLineBefore);
        uint32_t shift = 0; // modulo 2^32
        for (size_t i = 0; i < ranges.Count(); ++i) {
            // `top` and the place are those of the text with all earlier places changed.
            const uint32_t place = ranges[i].offset + shift;
            if (top < place) break;
            const bool inside = top < place + ranges[i].removed;
            top = inside ? place : top - ranges[i].removed;
            if (inside || top < place + count) {
                top = place;
                break;
            }
            top += count;
            shift += count - ranges[i].removed;
        }
        viewState->topLineAfter = top;
    }
}

uint32_t BulkEdit::LineAt(uint32_t offset) const {
    uint32_t lineStart = 0;
    return target.content.OffsetToLine(offset, lineStart);
}

void BulkEdit::ChangeText(bool undoing) {
    const auto total = static_cast<uint32_t>(undoing ? -growth : growth); // modulo 2^32
    const uint32_t newLength = target.content.Length() + total;
    // In place: nothing may be written over before it was moved. One direction does for all places, as either all of
    // them grow or all shrink.
    if (Grows() != undoing) {
        SpreadOut(undoing, newLength);
    } else {
        CloseUp(undoing);
    }
    const uint32_t addedLines = lineFeeds * static_cast<uint32_t>(ranges.Count());
    TextStore& store = target.parts.store;
    const uint32_t gained = undoing ? removedLines - addedLines : addedLines - removedLines; // modulo 2^32
    store.Rewritten({newLength, store.LineCount() - 1 + gained});
}

// From the end to the start: everything moves to the right or stays.
void BulkEdit::SpreadOut(bool undoing, uint32_t newLength) {
    Char* const content = target.parts.store.Data();
    uint32_t from = target.content.Length();
    uint32_t to = newLength;
    uint32_t removedBefore = removedText.Length();
    for (size_t i = ranges.Count(); i-- > 0;) {
        removedBefore -= ranges[i].removed;
        const Place place = PlaceOf(i, removedBefore, undoing);
        const uint32_t end = place.offset + place.oldLength;
        to -= from - end;
        if (to != end) std::memmove(content + to, content + end, (from - end) * sizeof(Char));
        to -= place.newLength;
        std::memcpy(content + to, place.newText, place.newLength * sizeof(Char));
        from = place.offset;
    }
}

// From the start to the end: everything moves to the left or stays.
void BulkEdit::CloseUp(bool undoing) {
    Char* const content = target.parts.store.Data();
    uint32_t from = ranges[0].offset;
    uint32_t to = from;
    uint32_t removedBefore = 0;
    for (size_t i = 0; i < ranges.Count(); ++i) {
        const Place place = PlaceOf(i, removedBefore, undoing);
        removedBefore += ranges[i].removed;
        std::memmove(content + to, content + from, (place.offset - from) * sizeof(Char));
        to += place.offset - from;
        std::memcpy(content + to, place.newText, place.newLength * sizeof(Char));
        to += place.newLength;
        from = place.offset + place.oldLength;
    }
    std::memmove(content + to, content + from, (size_t{target.content.Length()} - from) * sizeof(Char));
}

BulkEdit::Place BulkEdit::PlaceOf(size_t index, uint32_t removedBefore, bool undoing) const {
    const ReplacedRange& range = ranges[index];
    if (!undoing) return {range.offset, range.removed, count, text.Text()};
    return {NewOffset(index, removedBefore), count, range.removed, removedText.Text() + removedBefore};
}

// As every single change would move them. The store holds the old text.
void BulkEdit::MoveMarks(bool undoing) {
    if ((lineFeeds == 0 && removedLines == 0) || !target.parts.marks.Head()) return;
    const size_t places = ranges.Count();
    // Undone from the last place to the first, as each move of marks expects the lines that the one before it has left.
    // At each place those before it are changed then, and those after it are not, just as on the way there.
    uint32_t before = LinesIn({0, ranges[undoing ? places - 1 : 0].offset}); // old line of the place
    uint32_t removedBefore = undoing ? removedLines : 0;                     // line feeds removed at the places before
    for (size_t step = 0; step < places; ++step) {
        const size_t i = undoing ? places - 1 - step : step;
        const ReplacedRange& range = ranges[i];
        const uint32_t removed = LinesIn({range.offset, range.offset + range.removed});
        if (undoing) removedBefore -= removed;
        // The line once all earlier places have changed.
        MoveMarksAt({before - removedBefore + static_cast<uint32_t>(i) * lineFeeds, removed}, undoing);
        if (undoing) {
            before -= i ? LinesIn({ranges[i - 1].offset, range.offset}) : 0;
        } else {
            removedBefore += removed;
            before += i + 1 < places ? LinesIn({range.offset, ranges[i + 1].offset}) : 0;
        }
    }
}

void BulkEdit::MoveMarksAt(LinesAfter removed, bool undoing) {
    LineMarks& marks = target.parts.marks;
    const LinesAfter added = {removed.line, lineFeeds};
    if (removed.count && !undoing) marks.LinesDeleted(removed);
    if (lineFeeds && !undoing) marks.LinesInserted(added);
    if (lineFeeds && undoing) marks.LinesTakenBack(added);
    if (removed.count && undoing) marks.LinesInserted(removed);
}

uint32_t BulkEdit::LinesIn(TextRange range) const {
    return static_cast<uint32_t>(Scan::CountLineFeeds(target.content.Content() + range.start, range.Length()));
}
