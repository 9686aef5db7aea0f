#pragma once

#include "base/Assert.h"
#include "base/Types.h"

// Rows from one to the other, both included.
struct RowRange {
    uint64_t first = 0;
    uint64_t last = 0;

    bool operator==(const RowRange&) const = default;
};

// The rows that a window shows.
struct ShownRows {
    uint64_t top = 0;  // the first one
    int32_t count = 0; // that fit in whole; one more may be seen in part

    // Even a window that is too low for one shows a row.
    uint32_t CountOrOne() const { return static_cast<uint32_t>(count > 0 ? count : 1); }
    // Whether a row is seen in whole.
    bool Holds(uint64_t row) const { return row >= top && row - top < CountOrOne(); }
    // Which row is the top one when no more is scrolled than it takes to see `row`.
    uint64_t TopToShow(uint64_t row) const {
        if (row < top) return row;
        return Holds(row) ? top : row - CountOrOne() + 1;
    }
    // The rows that the client pixels [from, to) touch, all that are seen when that is empty. `height` of a row is
    // above 0.
    RowRange Touched(int32_t from, int32_t to, int32_t height) const {
        ORVANE_ASSERT(height > 0);
        if (to <= from) return {top, top + static_cast<uint32_t>(count)};
        return {RowAt(from, height), RowAt(to - 1, height)};
    }

private:
    // The top one for a pixel above the window.
    uint64_t RowAt(int32_t y, int32_t height) const { return top + static_cast<uint32_t>(y > 0 ? y / height : 0); }
};
