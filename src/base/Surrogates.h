#pragma once

#include "base/Types.h"

// The pairs of code units in which UTF-16 writes characters beyond U+FFFF.
namespace Surrogates {

constexpr bool IsHalf(Char unit) { return (unit & 0xF800) == 0xD800; }
constexpr bool IsFirst(Char unit) { return (unit & 0xFC00) == 0xD800; }
constexpr bool IsSecond(Char unit) { return (unit & 0xFC00) == 0xDC00; }
// Whether the two are one character.
constexpr bool IsPair(Char first, Char second) { return IsFirst(first) && IsSecond(second); }
// Whether a cut of text[0, length) at `at` would divide such a character.
constexpr bool SplitsPair(const Char* text, size_t length, size_t at) {
    return at > 0 && at < length && IsPair(text[at - 1], text[at]);
}
constexpr uint32_t CodePoint(Char first, Char second) {
    return 0x10000 + ((uint32_t{first} & 0x3FF) << 10) + (second & 0x3FF);
}
constexpr Char FirstOf(uint32_t codePoint) { return static_cast<Char>(0xD800 + ((codePoint - 0x10000) >> 10)); }
constexpr Char SecondOf(uint32_t codePoint) { return static_cast<Char>(0xDC00 + (codePoint & 0x3FF)); }

} // namespace Surrogates
