#pragma once

#include "base/Types.h"

// The characters [start, end) of a text.
struct TextRange {
    uint32_t start = 0;
    uint32_t end = 0;

    uint32_t Length() const { return end - start; }
    bool IsEmpty() const { return start == end; }
    bool operator==(const TextRange&) const = default;
};

// What is selected, by offsets: from the anchor to the caret, whichever comes first.
struct TextSelection {
    uint32_t anchor = 0;
    uint32_t caret = 0;

    TextRange Range() const { return anchor < caret ? TextRange{anchor, caret} : TextRange{caret, anchor}; }
    bool IsEmpty() const { return anchor == caret; }
    bool operator==(const TextSelection&) const = default;
};

// How much text comes or goes: characters, and the line feeds among them.
struct TextExtent {
    uint32_t characters = 0;
    uint32_t lineFeeds = 0;

    bool operator==(const TextExtent&) const = default;
};
