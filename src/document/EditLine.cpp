#include "document/EditLine.h"

#include "base/Assert.h"

#include <algorithm>

bool EditLine::Open(TextStore& store, uint32_t line) {
    ORVANE_ASSERT(!IsOpen() || !pending); // what was typed would be lost
    const uint32_t lineStart = store.LineToOffset(line);
    bool isLast = false;
    // With its line feed, or the terminator after the last line: engines look at what ends a line.
    const uint32_t count = store.LineLength(lineStart, isLast) + 1;
    if (!text.Assign(store.Text() + lineStart, count)) return false;
    number = line;
    start = lineStart;
    storeLength = count;
    pending = false;
    return true;
}

bool EditLine::WriteBack(TextStore& store) {
    ORVANE_ASSERT(IsOpen());
    if (!store.ReplaceLine({start, start + storeLength}, text.Text(), text.Length())) return false;
    pending = false;
    Close();
    return true;
}

void EditLine::Close() {
    ORVANE_ASSERT(!pending); // what was typed would be lost
    number = NoLine;
}

void EditLine::Release() {
    text.Release();
    pending = false;
    Close();
}

TextRange EditLine::RangeOf(ColumnRange columns) const {
    const uint64_t end = uint64_t{start} + columns.end;
    return {start + columns.start, static_cast<uint32_t>(std::min<uint64_t>(end, UINT32_MAX))};
}

bool EditLine::Insert(uint32_t column, const Char* inserted, uint32_t count) {
    ORVANE_ASSERT(IsOpen() && column <= Length());
    if (!text.Insert(column, inserted, count)) return false;
    pending = true;
    return true;
}

void EditLine::Erase(ColumnRange columns) {
    ORVANE_ASSERT(IsOpen() && columns.start <= columns.end && columns.end <= Length());
    text.Erase(columns.start, columns.Length());
    pending = true;
}

void EditLine::Set(uint32_t column, Char character) {
    ORVANE_ASSERT(IsOpen() && column < Length());
    text.Set(column, character);
    pending = true;
}
