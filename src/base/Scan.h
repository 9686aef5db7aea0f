#pragma once

#include "base/Types.h"

// The fast loops over text and bytes, written with SSE2 (the baseline of the 64-bit target). Every
// one has a plain version in Scan::Reference that the tests compare it with.
namespace Scan {

constexpr size_t NotFound = SIZE_MAX;

size_t CountLineFeeds(const Char* text, size_t count);

// Index of the first line feed in text[0, count); `count` when there is none.
size_t FindLineFeed(const Char* text, size_t count);

// Index of the first character in text[0, count) outside U+0020 to U+007E; `count` without one.
size_t FindUnprintable(const Char* text, size_t count);

// Index just after the last line feed in text[0, count); 0 when there is none. It is the start of
// the line that holds position `count`.
size_t FindLineStart(const Char* text, size_t count);

// Passes over up to `lines` line feeds in text[0, count). Returns the index just after the last one
// passed (0 when none was) and in `passed` how many were.
size_t SkipLines(const Char* text, size_t count, size_t lines, size_t& passed);

// The way back: position `count` of the text starts a line. Goes back by up to `lines` lines, returns where
// the line reached starts and in `passed` how many it went back.
size_t SkipLinesBack(const Char* text, size_t count, size_t lines, size_t& passed);

// Index of the first zero in bytes[0, count); `count` without one.
size_t FindZeroByte(const uint8_t* bytes, size_t count);

// What is searched for: at least one character. Without `matchCase` the ASCII letters are folded on both sides.
struct Pattern {
    const Char* text;
    size_t length;
    bool matchCase;
};

// Where it may start: [start, end). A match may reach past `end`.
struct Positions {
    size_t start;
    size_t end;
};

// Substring search over text[0, count): the first (last) of the positions at which the whole pattern is in the text,
// else NotFound.
size_t FindForward(const Char* text, size_t count, Positions at, const Pattern& pattern);
size_t FindBackward(const Char* text, size_t count, Positions at, const Pattern& pattern);

// The mark `self` is at `from` (below `count`). Returns the position of the `partner` that balances it, with
// nested pairs in between, searched forward or backward from there. NotFound when the text ends first, or at
// a NUL. The marks are two different characters, neither of them NUL.
size_t FindBalanceForward(const Char* text, size_t count, size_t from, Char self, Char partner);
size_t FindBalanceBackward(const Char* text, size_t from, Char self, Char partner);

// Widens the leading bytes that are below 0x80. Returns how many were taken.
size_t WidenAscii(const uint8_t* bytes, size_t count, Char* out);

// Narrows the leading characters that are below 0x80. Returns how many were taken.
size_t NarrowAscii(const Char* text, size_t count, uint8_t* out);

// Copies `count` units with the two bytes of each exchanged; `out` may equal `in`.
void SwapBytes(const Char* in, size_t count, Char* out);

namespace Reference {
size_t CountLineFeeds(const Char* text, size_t count);
size_t FindLineFeed(const Char* text, size_t count);
size_t FindUnprintable(const Char* text, size_t count);
size_t FindLineStart(const Char* text, size_t count);
size_t SkipLines(const Char* text, size_t count, size_t lines, size_t& passed);
size_t SkipLinesBack(const Char* text, size_t count, size_t lines, size_t& passed);
size_t FindZeroByte(const uint8_t* bytes, size_t count);
size_t FindForward(const Char* text, size_t count, Positions at, const Pattern& pattern);
size_t FindBackward(const Char* text, size_t count, Positions at, const Pattern& pattern);
size_t FindBalanceForward(const Char* text, size_t count, size_t from, Char self, Char partner);
size_t FindBalanceBackward(const Char* text, size_t from, Char self, Char partner);
size_t WidenAscii(const uint8_t* bytes, size_t count, Char* out);
size_t NarrowAscii(const Char* text, size_t count, uint8_t* out);
void SwapBytes(const Char* in, size_t count, Char* out);
} // namespace Reference

} // namespace Scan
