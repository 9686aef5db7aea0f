#pragma once

#include "base/Types.h"

// Conversions between bytes and UTF-16. Counts never include a terminator, and none is written.
//
// A page by the number that Windows has for it. FindCodePage makes one of other numbers.
enum class CodePage : uint32_t {
    Ansi = 0, // the system's; Windows-1252 where there is none
    Oem = 1,  // that of the console; like Ansi where there is none
    Windows1252 = 1252,
    Utf8 = 65001,
};

// The page of a number; Ansi when the system does not have it, or when its characters are not ASCII and others of a few
// bytes each.
CodePage FindCodePage(uint32_t number);

// The most characters that `count` bytes can turn into, and the most bytes for `count` characters.
size_t MaxCharacters(CodePage page, size_t count);
size_t MaxBytes(CodePage page, size_t count);

// Converts `count` bytes into `out`, which has room for `capacity` characters; with `out` null only
// counts. Returns the characters written or needed; 0 for an empty input or when `capacity` is too
// small. Invalid UTF-8 becomes U+FFFD, one for each maximal part of a sequence.
size_t ToUtf16(CodePage page, const uint8_t* bytes, size_t count, Char* out, size_t capacity);

// The way back, with the same rules. What the page cannot express becomes its best fit or "?", a lone
// surrogate in UTF-8 the three bytes of U+FFFD.
size_t FromUtf16(CodePage page, const Char* text, size_t count, uint8_t* out, size_t capacity);

// Whether every character has bytes of its own or a best fit in the page, so that none becomes "?" by default.
bool CanExpress(CodePage page, const Char* text, size_t count);

// The most bytes that one character takes in any page.
constexpr size_t MaxCharacterBytes = 4;

// How many of `count` bytes make up whole characters: a character that the end cuts off is not counted.
size_t WholeCharacters(CodePage page, const uint8_t* bytes, size_t count);
