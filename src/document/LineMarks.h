#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/Types.h"

struct LineMark : HeapObject {
    static constexpr uint32_t Bookmark = 1;

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
    LineMark* Next(uint32_t line, uint32_t mask, bool inclusive) const;
    LineMark* Previous(uint32_t line, uint32_t mask, bool inclusive) const;
    // False only without memory.
    bool ToggleBookmark(uint32_t line);
    void ClearBookmarks();
    // `count` lines came in after `line`: the marks after it follow.
    void LinesInserted(uint32_t line, uint32_t count);
    // The `count` lines after `line` went away, and the marks on them; those further down follow.
    void LinesDeleted(uint32_t line, uint32_t count);
    // The reverse of LinesInserted: every mark after `line` moves back by `count` (to 0 at least); those
    // that meet on one line become one.
    void LinesTakenBack(uint32_t line, uint32_t count);
    void Clear();

private:
    bool IsInOrder() const; // for assertions
    LineMark* FirstAfter(uint32_t line) const;
    // Links `mark` at its place, looked for from `before` (null: at the head) backwards.
    void InsertInOrder(LineMark* mark, LineMark* before);
    void Remove(LineMark* mark);

    List<LineMark> marks;
};
