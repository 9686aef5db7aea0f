#pragma once

#include "base/Array.h"
#include "syntax/SyntaxEngine.h"

// The syntax states at some line starts of a document, so that the state at any line is known after a
// short scan instead of one from the top. What it remembers is always valid: the owner reports where
// the text changed.
class LineStates {
public:
    // At least this many characters lie between two remembered line starts.
    static constexpr uint32_t Step = 1u << 17;

    LineStates() = default;
    LineStates(const LineStates&) = delete;
    LineStates& operator=(const LineStates&) = delete;

    // The state at the line that starts at `offset` of `text`. The engine is ready to colour that line.
    uint32_t At(SyntaxEngine& engine, const Char* text, uint32_t offset);
    // The characters from `offset` on have changed.
    void ForgetAfter(uint32_t offset);

private:
    struct Entry {
        uint32_t offset = 0;
        uint32_t state = 0;
        uint32_t carried = 0; // what the engine carries in addition to the state
    };

    Entry NearestBefore(uint32_t offset) const;

    Array<Entry> entries; // ascending
    Entry last;           // the latest answer; the next question is mostly about a line nearby
};
