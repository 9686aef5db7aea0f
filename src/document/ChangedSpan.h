#pragma once

#include "document/TextChange.h"

// Which part of a text has changed since some moment: what lies before and after it is as it was then.
class ChangedSpan {
public:
    bool IsEmpty() const { return isEmpty; }
    // Compares with the state as of now.
    void Clear() { isEmpty = true; }

    // Takes in the change that has just made the text `length` characters long.
    void Add(const TextChange& change, uint32_t length) {
        const uint32_t end = change.start + change.inserted.characters;
        if (isEmpty) {
            oldLength = length - change.inserted.characters + change.removed.characters;
            before = change.start;
            after = length - end;
        }
        isEmpty = false;
        newLength = length;
        if (change.start < before) before = change.start;
        if (length - end < after) after = length - end;
    }

    // At `Start`, so many characters of the old text made way for so many of the new one.
    uint32_t Start() const { return before; }
    uint32_t Removed() const { return oldLength - before - after; }
    uint32_t Inserted() const { return newLength - before - after; }

    // Whether at most `gap` characters lie between the span and a change that is not in it yet.
    bool IsNear(const TextChange& change, uint32_t gap) const {
        const uint64_t changeEnd = uint64_t{change.start} + change.removed.characters;
        return before <= changeEnd + gap && change.start <= uint64_t{newLength - after} + gap;
    }

private:
    bool isEmpty = true;
    uint32_t before = 0; // characters before the span, and after it
    uint32_t after = 0;
    uint32_t oldLength = 0;
    uint32_t newLength = 0;
};
