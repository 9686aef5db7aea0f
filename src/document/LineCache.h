#pragma once

#include "base/List.h"
#include "document/TextRange.h"

// A line and the offset at which it starts.
struct LineStart {
    uint32_t line = 0;
    uint32_t offset = 0;
};

struct LineCacheEntry : LineStart {
    LineCacheEntry* next;
    LineCacheEntry* previous;
};

// Remembers where a few lines of a text start, so that a lookup near an earlier one walks a short way. Most recently
// added first. The TextStore that has it tells it of every change.
class LineCache {
public:
    static constexpr uint32_t Limit = 5;

    LineCache() = default;
    LineCache(const LineCache&) = delete;
    LineCache& operator=(const LineCache&) = delete;

    // The entry whose line (offset) is nearest; on a tie the more recently added; null when empty.
    const LineCacheEntry* NearestLine(uint32_t line) const;
    const LineCacheEntry* NearestOffset(uint32_t offset) const;
    // Adds an entry at the head; the oldest makes way when the cache is full.
    void Add(LineStart start);
    // Entries after `position` move by the inserted characters and lines.
    void Inserted(uint32_t position, TextExtent inserted);
    // Entries from `position` to just after the deleted characters go; those further on move back.
    void Deleted(uint32_t position, TextExtent deleted);
    void Clear();

    const LineCacheEntry* Head() const { return entries.head; }
    uint32_t Count() const { return count; }

private:
    LineCacheEntry* TakeEntry();

    // The entries live inside the object: a lookup must not fail without memory.
    LineCacheEntry storage[Limit] = {};
    List<LineCacheEntry> entries;
    List<LineCacheEntry> unused; // given back by Deleted
    uint32_t count = 0;          // of `entries`
    uint32_t taken = 0;          // of `storage`, ever handed out
};
