// The flat array of a TextBuffer: growth, changes, and where its lines start.

#include "base/Scan.h"
#include "document/TextBuffer.h"

#include <algorithm>
#include <cstring>

bool TextBuffer::EnsureCapacity(uint64_t characters) {
    if (capacity > characters) return true;
    if (characters >= None32) return false;
    // No spare room: the array stays as small as its text. Resize moves it only when it must.
    const size_t needed = static_cast<size_t>(characters) + 1;
    void* grown = Heap::Resize(text, capacity * sizeof(Char), needed * sizeof(Char));
    if (!grown) return false;
    text = static_cast<Char*>(grown);
    capacity = static_cast<uint32_t>(needed);
    return true;
}

bool TextBuffer::InsertIntoStore(uint32_t offset, const Char* inserted, uint32_t count, uint32_t newLines) {
    if (!EnsureCapacity(uint64_t{length} + count)) return false;
    std::memmove(text + offset + count, text + offset, (size_t{length} - offset) * sizeof(Char));
    std::memcpy(text + offset, inserted, count * sizeof(Char));
    length += count;
    text[length] = 0;
    lineCache.Inserted(offset, count, newLines);
    lastLineStart = None32;
    lineCount += newLines;
    return true;
}

void TextBuffer::DeleteFromStore(uint32_t offset, uint32_t count, uint32_t newLines) {
    const size_t behind = size_t{offset} + count;
    std::memmove(text + offset, text + behind, (length - behind) * sizeof(Char));
    length -= count;
    text[length] = 0;
    lineCache.Deleted(offset, count, newLines);
    lastLineStart = None32;
    lineCount -= newLines;
}

uint32_t TextBuffer::LineToOffset(uint32_t line) {
    if (!text) return 0;
    const LineCacheEntry* near = lineCache.NearestLine(line);
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
    if (!near || reached != fromLine) lineCache.Add(reached, static_cast<uint32_t>(start));
    return static_cast<uint32_t>(start);
}

uint32_t TextBuffer::OffsetToLine(uint32_t offset, uint32_t& lineStart) {
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
    if (!near) lineCache.Add(line, lineStart);
    return line;
}

void TextBuffer::OffsetToLineColumn(uint32_t offset, uint32_t& line, uint32_t& column) {
    uint32_t lineStart = 0;
    line = OffsetToLine(offset, lineStart);
    column = offset - lineStart;
}

uint32_t TextBuffer::LineLength(uint32_t start, bool& isLast) const {
    isLast = true;
    if (start >= length) return 0;
    if (start == lastLineStart) return length - start;
    const size_t rest = length - start;
    const size_t upToBreak = Scan::FindLineFeed(text + start, rest);
    isLast = upToBreak == rest;
    return static_cast<uint32_t>(upToBreak);
}
