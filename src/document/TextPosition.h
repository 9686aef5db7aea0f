#pragma once

#include "base/Types.h"

// Offsets count either the store or the text as it is shown, with the edit line in its edited form; each header says
// which. Without a pending edit both are the same.

// A place in a text, both 0-based. The column counts characters; a tab counts as one.
struct TextPosition {
    uint32_t line = 0;
    uint32_t column = 0;

    bool operator==(const TextPosition&) const = default;
};

// The columns [start, end) of a line.
struct ColumnRange {
    uint32_t start = 0;
    uint32_t end = 0;

    uint32_t Length() const { return end - start; }
    bool IsEmpty() const { return start == end; }
};

// The lines from one to the other, both included, in either order.
struct LineRange {
    uint32_t first = 0;
    uint32_t last = 0;

    bool Holds(uint32_t line) const {
        return first < last ? line >= first && line <= last : line >= last && line <= first;
    }
    bool operator==(const LineRange&) const = default;
};

// The `count` lines after a line: what an edit in that line brings or takes away.
struct LinesAfter {
    uint32_t line = 0;
    uint32_t count = 0;
};
