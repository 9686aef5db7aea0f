#pragma once

#include "document/TextRange.h"
#include "view/AccessibleUnits.h"

struct TextChange;

// One end of a range. The numbers are the system's.
enum class RangeEnd : uint32_t { Start = 0, End = 1 };

// A piece of a text that a screen reader holds on to, and moves. What lies outside the text is moved to its end, by
// every operation and before anything else: an edit that it was not told of may have shortened the text. Offsets count
// the text as it is shown.
class AccessibleRange {
public:
    AccessibleRange() = default;
    explicit AccessibleRange(TextRange covered) : range(covered) {}

    // Follows an edit. Text inserted at either end stays outside; where characters are replaced, it covers as many of
    // the new ones as of the old, if there are that many.
    void Follow(const TextChange& change);

    // Inside the text, from the first to the last.
    TextRange Within(const ShownText& text) const;
    // -1, 0 or 1: whether an end is before, at or after an end of another range.
    int32_t Compare(const ShownText& text, RangeEnd own, const AccessibleRange& other, RangeEnd otherEnd) const;

    // Becomes the unit at its start.
    void Expand(const ShownText& text, AccessibleUnit unit);
    // Becomes the unit that is `count` units on, below 0 back, as far as there are any; an empty range stays empty.
    // Returns by how many it has moved.
    int32_t Move(const ShownText& text, AccessibleUnit unit, int32_t count);
    // Moves one end, which pushes the other one along. Returns by how many units.
    int32_t MoveEnd(const ShownText& text, RangeEnd end, AccessibleUnit unit, int32_t count);
    void MoveEndTo(const ShownText& text, RangeEnd end, const AccessibleRange& other, RangeEnd otherEnd);

    // What Find looks for.
    struct Wanted {
        const Char* text = nullptr;
        uint32_t count = 0;
        bool backward = false; // from the range's end
        // Without it letters of any script are found in either case; when only ASCII is wanted, only that is folded.
        bool matchCase = false;
    };
    // Finds it inside; `found` is NoOffset when it is not there. False without memory.
    [[nodiscard]] bool Find(const ShownText& text, const Wanted& wanted, uint32_t& found) const;
    // The part to be read when at most `limit` characters are asked for, all of it when that is negative. Surrogate
    // pairs are not split, except with a limit of one: an empty answer would mean an empty range.
    TextRange Readable(const ShownText& text, int32_t limit) const;

private:
    static uint32_t Of(TextRange clamped, RangeEnd end) { return end == RangeEnd::Start ? clamped.start : clamped.end; }
    void Place(TextRange clamped, RangeEnd end, uint32_t offset);

    TextRange range;
};
