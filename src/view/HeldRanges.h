#pragma once

#include "base/List.h"
#include "view/AccessibleRange.h"

struct TextChange;
class HeldRange;

// The ranges of a view's text that screen readers hold. They outlive it if they must.
class HeldRanges {
public:
    HeldRanges() = default;
    ~HeldRanges();
    HeldRanges(const HeldRanges&) = delete;
    HeldRanges& operator=(const HeldRanges&) = delete;

    // Keeps all of them on their characters.
    void Follow(const TextChange& change);

private:
    friend class HeldRange;

    List<HeldRange> held;
};

// A range that follows the edits of its text for as long as it is there.
class HeldRange {
public:
    HeldRange(HeldRanges& all, const AccessibleRange& covered) : range(covered), owner(&all) { all.held.Append(this); }
    ~HeldRange() {
        if (owner) owner->held.Remove(this);
    }
    HeldRange(const HeldRange&) = delete;
    HeldRange& operator=(const HeldRange&) = delete;

    AccessibleRange range;

private:
    friend class HeldRanges;
    friend struct List<HeldRange>;

    HeldRanges* owner; // null once the text is gone
    HeldRange* next = nullptr;
    HeldRange* previous = nullptr;
};
