#pragma once

#include "document/TextRange.h"
#include "view/LineLayout.h"

// A line, and how far from its start a place in it may lie, in pixels. `start` is the line's offset in the text as the
// user sees it.
struct LineReach {
    uint32_t start = 0;
    int64_t position = INT64_MAX;
};

// A column of a line, whose offset `start` is as above.
struct LineColumn {
    uint32_t start = 0;
    uint32_t column = 0;
};

// Remembers a place far out in one long line, so that a caret that follows a growing line is not measured from
// the line's start each time. There is only printable ASCII before it. While an edit is pending the owner asks
// nothing.
class MeasuredLine {
public:
    // Lines no longer than this are soon measured.
    static constexpr uint32_t ShortLine = 1u << 14;
    // How many columns before the caret the place lies: more than a window shows, which is painted from there.
    static constexpr uint32_t Lead = 1u << 12;

    // No window is scrolled further to the right, in pixels.
    static constexpr int64_t FarthestScroll = INT32_MAX;

    // A place within reach: the start of the line when no other one is known.
    LinePlace PlaceIn(LineReach line) const {
        if (line.start != start) return {};
        return place.position <= line.position ? place : inReach.position <= line.position ? inReach : LinePlace();
    }
    // Where a column of `line`, a long one, starts; the line is measured from the place on, which moves along.
    int64_t PositionOf(const LineLayout& layout, TextSpan line, LineColumn wanted);
    // The text has changed from `offset` on.
    void ForgetAfter(uint32_t offset);
    // The widths have changed.
    void Forget() { start = NoOffset; }

private:
    void MoveTo(uint32_t column, LinePlace from, const LineLayout& layout, TextSpan line);

    uint32_t start = NoOffset;
    LinePlace place;
    LinePlace inReach; // the last of them that a window can be scrolled to
};
