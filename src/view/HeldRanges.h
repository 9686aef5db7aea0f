#pragma once

#include "base/List.h"
#include "view/AccessibleRange.h"

struct TextChange;

// The ranges of a view's text that screen readers hold. One that outlives the view is detached: its `owner` is null.
class HeldRanges {
public:
    // What is kept of a HeldRange.
    struct Entry {
        AccessibleRange range;
        HeldRanges* owner = nullptr; // null once the text is gone
        Entry* next = nullptr;
        Entry* previous = nullptr;
    };

    HeldRanges() = default;
    ~HeldRanges();
    HeldRanges(const HeldRanges&) = delete;
    HeldRanges& operator=(const HeldRanges&) = delete;

    void Add(Entry& entry);
    void Remove(Entry& entry) { entries.Remove(&entry); }
    // Keeps all of them on their characters.
    void Follow(const TextChange& change);

private:
    List<Entry> entries;
};

// A range that follows the edits of its text while it exists.
class HeldRange : private HeldRanges::Entry {
public:
    HeldRange(HeldRanges& all, const AccessibleRange& covered) {
        range = covered;
        all.Add(*this);
    }
    ~HeldRange() {
        if (owner) owner->Remove(*this);
    }
    HeldRange(const HeldRange&) = delete;
    HeldRange& operator=(const HeldRange&) = delete;

    using Entry::range;
};
