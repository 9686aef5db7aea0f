#include "document/LineMarks.h"

#include "base/Assert.h"

LineMark* LineMarks::Find(uint32_t line) const {
    LineMark* mark = marks.head;
    while (mark && mark->line < line) mark = mark->next;
    return mark && mark->line == line ? mark : nullptr;
}

LineMark* LineMarks::Next(uint32_t line, LineMark::Flags mask, bool inclusive) const {
    for (LineMark* mark = marks.head; mark; mark = mark->next) {
        if ((mark->flags & mask) && (mark->line > line || (inclusive && mark->line == line))) return mark;
    }
    return nullptr;
}

LineMark* LineMarks::Previous(uint32_t line, LineMark::Flags mask, bool inclusive) const {
    for (LineMark* mark = marks.tail; mark; mark = mark->previous) {
        if ((mark->flags & mask) && (mark->line < line || (inclusive && mark->line == line))) return mark;
    }
    return nullptr;
}

LineMark* LineMarks::FirstAfter(uint32_t line) const {
    LineMark* mark = marks.head;
    while (mark && mark->line <= line) mark = mark->next;
    return mark;
}

bool LineMarks::ToggleBookmark(uint32_t line) {
    if (LineMark* mark = Find(line)) {
        mark->flags &= ~LineMark::Bookmark;
        if (mark->flags == 0) Remove(mark);
        return true;
    }
    auto* mark = new LineMark;
    if (!mark) return false;
    mark->line = line;
    mark->flags = LineMark::Bookmark;
    InsertInOrder(mark, marks.tail);
    ORVANE_ASSERT(IsInOrder());
    return true;
}

void LineMarks::ClearBookmarks() {
    for (LineMark *mark = marks.head, *next; mark; mark = next) {
        next = mark->next;
        mark->flags &= ~LineMark::Bookmark;
        if (mark->flags == 0) Remove(mark);
    }
}

void LineMarks::LinesInserted(LinesAfter lines) {
    for (LineMark* mark = FirstAfter(lines.line); mark; mark = mark->next) mark->line += lines.count;
    ORVANE_ASSERT(IsInOrder());
}

void LineMarks::LinesDeleted(LinesAfter lines) {
    const uint32_t count = lines.count;
    const uint64_t lastDeleted = uint64_t{lines.line} + count; // 64 bits: both may be near the largest number
    for (LineMark *mark = FirstAfter(lines.line), *next; mark; mark = next) {
        next = mark->next;
        // The mark before has moved already. One that would meet it gives way: a line has one mark.
        const bool survives =
            mark->line > lastDeleted && (!mark->previous || mark->line - count > mark->previous->line);
        if (survives) {
            mark->line -= count;
        } else {
            Remove(mark);
        }
    }
    ORVANE_ASSERT(IsInOrder());
}

void LineMarks::LinesTakenBack(LinesAfter lines) {
    for (LineMark *mark = FirstAfter(lines.line), *next; mark; mark = next) {
        next = mark->next; // before the mark may be freed below
        mark->line = mark->line > lines.count ? mark->line - lines.count : 0;
        LineMark* before = mark->previous;
        // A mark on one of the lines that go away lands above `lines.line`, maybe among the marks there.
        if (!before || before->line < mark->line) continue;
        marks.Remove(mark);
        InsertInOrder(mark, before);
    }
    ORVANE_ASSERT(IsInOrder());
}

bool LineMarks::IsInOrder() const {
    for (const LineMark* mark = marks.head; mark; mark = mark->next) {
        if (mark->flags == 0 || (mark->next && mark->next->line <= mark->line)) return false;
    }
    return true;
}

void LineMarks::Clear() {
    while (LineMark* mark = marks.TakeHead()) delete mark;
}

// Frees the mark when its line has one already, which then takes its flags: it is not to be touched afterwards.
void LineMarks::InsertInOrder(LineMark* mark, LineMark* before) {
    while (before && before->line > mark->line) before = before->previous;
    if (before && before->line == mark->line) {
        before->flags |= mark->flags;
        delete mark;
        return;
    }
    marks.InsertAfter(before, mark);
}

void LineMarks::Remove(LineMark* mark) {
    marks.Remove(mark);
    delete mark;
}
