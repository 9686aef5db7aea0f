#include "document/TextStore.h"

#include "base/Assert.h"
#include "base/Heap.h"
#include "base/Scan.h"

#include <algorithm>
#include <cstring>

void TextStore::Release() {
    Heap::Free(text);
    text = nullptr;
    capacity = 0;
    Rewritten({});
}

void TextStore::Empty() {
    if (text) {
        // Should giving back the room not work, the empty text just keeps it.
        if (void* smaller = Heap::Resize(text, capacity * sizeof(Char), sizeof(Char))) {
            text = static_cast<Char*>(smaller);
            capacity = 1;
        }
    }
    Rewritten({});
}

void TextStore::Take(Char* newText, uint32_t newCapacity, TextExtent whole) {
    Heap::Free(text);
    text = newText;
    capacity = newCapacity;
    Rewritten(whole);
}

bool TextStore::EnsureCapacity(uint64_t characters) {
    if (capacity > characters) return true;
    if (characters >= LengthLimit) return false;
    // No spare room (docs/oddities.md): the array stays as small as its text. Resize moves it only when it must.
    const size_t needed = static_cast<size_t>(characters) + 1;
    void* grown = Heap::Resize(text, capacity * sizeof(Char), needed * sizeof(Char));
    if (!grown) return false;
    text = static_cast<Char*>(grown);
    capacity = static_cast<uint32_t>(needed);
    return true;
}

bool TextStore::Insert(uint32_t offset, const Char* inserted, TextExtent extent) {
    ORVANE_ASSERT(offset <= length);
    ORVANE_ASSERT(Scan::CountLineFeeds(inserted, extent.characters) == extent.lineFeeds);
    const uint32_t count = extent.characters;
    // May move the array: `inserted` is never a part of it.
    if (!EnsureCapacity(uint64_t{length} + count)) return false;
    std::memmove(text + offset + count, text + offset, (size_t{length} - offset) * sizeof(Char));
    std::memcpy(text + offset, inserted, count * sizeof(Char));
    length += count;
    text[length] = 0;
    lineCount += extent.lineFeeds;
    lineCache.Inserted(offset, extent);
    lastLineStart = NoOffset;
    return true;
}

void TextStore::Delete(uint32_t offset, TextExtent extent) {
    const size_t end = size_t{offset} + extent.characters;
    ORVANE_ASSERT(end <= length);
    ORVANE_ASSERT(Scan::CountLineFeeds(text + offset, extent.characters) == extent.lineFeeds);
    std::memmove(text + offset, text + end, (length - end) * sizeof(Char));
    length -= extent.characters;
    text[length] = 0;
    lineCount -= extent.lineFeeds;
    lineCache.Deleted(offset, extent);
    lastLineStart = NoOffset;
}

bool TextStore::ReplaceLine(TextRange old, const Char* newText, uint32_t newCount) {
    const uint32_t offset = old.start;
    const uint32_t oldCount = old.Length();
    ORVANE_ASSERT(old.start <= length && old.end <= uint64_t{length} + 1);
    const uint64_t newLength = uint64_t{length} - oldCount + newCount;
    if (!EnsureCapacity(newLength)) return false;
    // In the last line the old characters end with the terminator, which `length` does not count: nothing
    // follows then.
    const size_t tail = length > old.end ? length - old.end : 0;
    std::memmove(text + offset + newCount, text + old.end, tail * sizeof(Char));
    // An entry for the start of this line, which may be `offset`, stays: what comes in counts as after it, and what
    // goes as after the new text.
    if (newCount > oldCount) lineCache.Inserted(offset, {newCount - oldCount, 0});
    if (newCount < oldCount) lineCache.Deleted(offset + newCount, {oldCount - newCount, 0});
    std::memcpy(text + offset, newText, newCount * sizeof(Char));
    length = static_cast<uint32_t>(newLength);
    text[length] = 0;
    lastLineStart = NoOffset;
    return true;
}

void TextStore::Rewritten(TextExtent whole) {
    ORVANE_ASSERT(text ? whole.characters < capacity : whole.characters == 0);
    length = whole.characters;
    lineCount = whole.lineFeeds + 1;
    if (text) text[length] = 0;
    lineCache.Clear();
    lastLineStart = NoOffset;
}

void TextStore::Appended(TextExtent added) {
    ORVANE_ASSERT(added.characters < capacity - length);
    ORVANE_ASSERT(Scan::CountLineFeeds(text + length, added.characters) == added.lineFeeds);
    // While `length` is the old one still: the last line begins where it did, or after one of the new line feeds.
    lastLineStart = added.lineFeeds
                        ? length + static_cast<uint32_t>(Scan::FindLineStart(text + length, added.characters))
                        : LastLineStart();
    // The cache stays: the lines that it knows begin before.
    length += added.characters;
    text[length] = 0;
    lineCount += added.lineFeeds;
}

uint32_t TextStore::LastLineStart() {
    if (lastLineStart == NoOffset) lastLineStart = static_cast<uint32_t>(Scan::FindLineStart(text, length));
    return lastLineStart;
}

uint32_t TextStore::LineToOffset(uint32_t line) {
    if (!text) return 0;
    // From the nearest line that is known, or the text's start, back or forth to the one wanted.
    const LineCacheEntry* near = lineCache.NearestLine(line);
    ORVANE_ASSERT(!near || near->offset == 0 || text[near->offset - 1] == u'\n');
    if (near && near->line == line) return near->offset;

    const uint32_t from = near ? near->offset : 0;
    const uint32_t fromLine = near ? near->line : 0;
    uint32_t reached = fromLine;
    size_t start = from;
    size_t passed = 0;
    if (line >= fromLine) {
        start += Scan::SkipLines(text + from, length - from, line - fromLine, passed);
        reached += static_cast<uint32_t>(passed);
    } else {
        start = Scan::SkipLinesBack(text, from, fromLine - line, passed);
        reached -= static_cast<uint32_t>(passed);
    }
    // A line past the end leads to one that is known already; adding that again would push out another.
    if (!near || reached != fromLine) lineCache.Add({reached, static_cast<uint32_t>(start)});
    return static_cast<uint32_t>(start);
}

uint32_t TextStore::OffsetToLine(uint32_t offset, uint32_t& lineStart) {
    lineStart = 0;
    if (!text) return 0;
    offset = std::min(offset, length);
    const LineCacheEntry* near = lineCache.NearestOffset(offset);
    const uint32_t from = near ? near->offset : 0;
    uint32_t line = near ? near->line : 0;
    if (offset >= from) {
        line += static_cast<uint32_t>(Scan::CountLineFeeds(text + from, offset - from));
        lineStart = from + static_cast<uint32_t>(Scan::FindLineStart(text + from, offset - from));
    } else {
        line -= static_cast<uint32_t>(Scan::CountLineFeeds(text + offset, from - offset));
        lineStart = static_cast<uint32_t>(Scan::FindLineStart(text, offset));
    }
    if (!near) lineCache.Add({line, lineStart});
    return line;
}

uint32_t TextStore::LineLength(uint32_t start, bool& isLast) const {
    isLast = true;
    if (start >= length) return 0;
    // The last line of output that is appended to may be long: its end is known, and need not be looked for each time.
    if (start == lastLineStart) return length - start;
    const size_t rest = length - start;
    const size_t upToBreak = Scan::FindLineFeed(text + start, rest);
    isLast = upToBreak == rest;
    return static_cast<uint32_t>(upToBreak);
}
