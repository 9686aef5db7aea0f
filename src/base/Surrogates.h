#pragma once

#include "base/Types.h"

// The pairs of code units in which UTF-16 writes characters beyond U+FFFF; see also Text::IsPair.
namespace Surrogates {

constexpr bool IsHalf(Char unit) { return (unit & 0xF800) == 0xD800; }
constexpr uint32_t CodePoint(Char first, Char second) {
    return 0x10000 + ((uint32_t{first} & 0x3FF) << 10) + (second & 0x3FF);
}
constexpr Char FirstOf(uint32_t codePoint) { return static_cast<Char>(0xD800 + ((codePoint - 0x10000) >> 10)); }
constexpr Char SecondOf(uint32_t codePoint) { return static_cast<Char>(0xDC00 + (codePoint & 0x3FF)); }

} // namespace Surrogates
