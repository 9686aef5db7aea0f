#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "document/TextPosition.h"

struct LineMark : HeapObject {
    // The kinds of marks of a line, as bits. A type of its own, so that a line number cannot be passed by mistake.
    enum Flags : uint32_t { Bookmark = 1 };

    uint32_t line = 0;
    uint32_t flags = 0;
    LineMark* next = nullptr;
    LineMark* previous = nullptr;
};

// The marked lines of a document, ascending, at most one node a line and none with flags 0.
class LineMarks {
public:
    LineMarks() = default;
    ~LineMarks() { Clear(); }
    LineMarks(const LineMarks&) = delete;
    LineMarks& operator=(const LineMarks&) = delete;

    LineMark* Head() const { return marks.head; }
    LineMark* Find(uint32_t line) const;
    // The first (last) node with a flag of `mask` after (before) `line`, or on it when `inclusive`.
    LineMark* Next(uint32_t line, LineMark::Flags mask, bool inclusive) const;
    LineMark* Previous(uint32_t line, LineMark::Flags mask, bool inclusive) const;
    // False only without memory.
    [[nodiscard]] bool ToggleBookmark(uint32_t line);
    void ClearBookmarks();
    // These lines came in: the marks after them follow.
    void LinesInserted(LinesAfter lines);
    // These lines went away, and the marks on them; those further down follow.
    void LinesDeleted(LinesAfter lines);
    // The reverse of LinesInserted: every mark after `lines.line` moves back by their number (to 0 at least); those
    // that meet on one line become one.
    void LinesTakenBack(LinesAfter lines);
    void Clear();

private:
    bool IsInOrder() const; // for assertions
    LineMark* FirstAfter(uint32_t line) const;
    // Links `mark` at its place, looked for from `before` (null: at the head) backwards.
    void InsertInOrder(LineMark* mark, LineMark* before);
    void Remove(LineMark* mark);

    List<LineMark> marks;
};
