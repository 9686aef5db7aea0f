#pragma once

#include "base/Array.h"
#include "base/Types.h"

// Pairs of hex digits, of either case, with or without blanks (spaces, tabs) before, between and after
// them.
namespace HexPattern {

enum class Result { Bytes, Invalid, OutOfMemory };

// Replaces `out` by the bytes of text[0, length). An odd digit or any other character makes the pattern
// invalid, and a text without digits has no bytes; `out` is then empty.
[[nodiscard]] Result Parse(const Char* text, uint32_t length, Array<uint8_t>& out);

constexpr uint32_t NoDigit = UINT32_MAX;
// 0 to 15, or NoDigit.
uint32_t DigitValue(Char character);

} // namespace HexPattern
