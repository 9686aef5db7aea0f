#pragma once

#include "document/TextRange.h"

// What an edit did to the text: at `start`, on line `startLine`, what was removed made way for what was inserted.
// Offsets count the text as the user sees it, with the edit line in its edited form. The lines of a change in many
// places are counted only when a view has to follow it.
struct TextChange {
    uint32_t start = 0;
    uint32_t startLine = 0;
    TextExtent removed;
    TextExtent inserted;
    bool inEditLine = false;           // the store does not have it yet
    bool affectsFollowingLines = true; // they may have other colours now

    bool ChangesLines() const { return removed.lineFeeds != 0 || inserted.lineFeeds != 0; }
    // Where a place of the old text is in the new one. What was at `start` stays there; a place in the
    // replaced text keeps its distance from `start` as far as the new text reaches.
    uint32_t Moved(uint32_t offset) const { return Move(offset, start, removed.characters, inserted.characters); }
    uint32_t MovedLine(uint32_t line) const { return Move(line, startLine, removed.lineFeeds, inserted.lineFeeds); }

private:
    static uint32_t Move(uint32_t place, uint32_t from, uint32_t oldCount, uint32_t newCount) {
        if (place <= from) return place;
        const uint32_t distance = place - from;
        if (distance >= oldCount) return place - oldCount + newCount;
        return from + (distance < newCount ? distance : newCount);
    }
};
