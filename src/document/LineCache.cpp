#include "document/LineCache.h"

#include "base/Assert.h"

namespace {

uint32_t Distance(uint32_t left, uint32_t right) { return left > right ? left - right : right - left; }

uint32_t FloorSubtract(uint32_t from, uint32_t amount) { return from > amount ? from - amount : 0; }

// The list is walked from its head and only a smaller distance wins, so that a tie goes to the entry
// added more recently.
const LineCacheEntry* Nearest(const LineCacheEntry* head, uint32_t LineStart::*field, uint32_t value) {
    const LineCacheEntry* best = head;
    for (const LineCacheEntry* entry = head; entry; entry = entry->next) {
        if (Distance(entry->*field, value) < Distance(best->*field, value)) best = entry;
    }
    return best;
}

} // namespace

const LineCacheEntry* LineCache::NearestLine(uint32_t line) const {
    return Nearest(entries.head, &LineStart::line, line);
}

const LineCacheEntry* LineCache::NearestOffset(uint32_t offset) const {
    return Nearest(entries.head, &LineStart::offset, offset);
}

void LineCache::Add(LineStart start) {
    LineCacheEntry* entry = TakeEntry();
    entry->line = start.line;
    entry->offset = start.offset;
    entries.Prepend(entry);
    ++count;
}

LineCacheEntry* LineCache::TakeEntry() {
    if (count == Limit) {
        LineCacheEntry* oldest = entries.tail;
        entries.Remove(oldest);
        --count;
        return oldest;
    }
    // Before fresh ones: of those there are only as many as can be in use.
    if (LineCacheEntry* entry = unused.TakeHead()) return entry;
    ORVANE_ASSERT(taken < Limit);
    return &storage[taken++];
}

void LineCache::Inserted(uint32_t position, TextExtent inserted) {
    for (LineCacheEntry* entry = entries.head; entry; entry = entry->next) {
        // What comes in at a line's start belongs to that line, which begins where it did.
        if (entry->offset <= position) continue;
        entry->offset += inserted.characters;
        entry->line += inserted.lineFeeds;
    }
}

void LineCache::Deleted(uint32_t position, TextExtent deleted) {
    const uint64_t end = uint64_t{position} + deleted.characters;
    for (LineCacheEntry *entry = entries.head, *next; entry; entry = next) {
        next = entry->next;
        if (entry->offset < position) continue;
        // Not at the end itself: the line feed that made a line begin there is gone.
        if (entry->offset > end) {
            entry->line = FloorSubtract(entry->line, deleted.lineFeeds);
            entry->offset = FloorSubtract(entry->offset, deleted.characters);
            continue;
        }
        entries.Remove(entry);
        unused.Append(entry);
        --count;
    }
}

void LineCache::Clear() {
    entries = {};
    unused = {};
    count = taken = 0;
}
