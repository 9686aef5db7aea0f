#pragma once

#include "base/Types.h"

class WString;

// Bytes and file offsets as hexadecimal text, digits in upper case.
namespace HexText {

// The characters of a byte among others: two digits and a blank.
constexpr uint32_t PerByte = 3;
constexpr uint32_t MinOffsetDigits = 10;
constexpr uint32_t MaxOffsetDigits = 16;

// How many digits a number has; none for 0.
uint32_t CountDigits(uint64_t number);
// Writes the last `count` digits of a number, with leading zeros.
void PutDigits(Char* out, uint64_t number, uint32_t count);
// Appends all of an offset, with at least MinOffsetDigits. False without memory.
[[nodiscard]] bool AppendOffset(WString& out, uint64_t offset);
// Reads an offset as a user writes it: digits of either case, "0x" before and blanks around them
// allowed. One that needs more than 64 bits gives the largest. False for any other text.
[[nodiscard]] bool ParseOffset(const Char* text, uint32_t length, uint64_t& offset);
// How a byte looks as a character: itself in 32..126, else a dot.
constexpr Char ShownAs(uint8_t byte) { return byte >= 32 && byte <= 126 ? byte : u'.'; }

} // namespace HexText
