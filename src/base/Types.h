#pragma once

#include <cstddef>
#include <cstdint>

// One UTF-16 code unit. It is the program's only character type; the Win32 half casts it to
// wchar_t at the calls into the system and nowhere else.
using Char = char16_t;

// Red in the low byte, then green, then blue (0x00BBGGRR), everywhere in memory.
using Colour = uint32_t;

constexpr Colour Rgb(uint32_t red, uint32_t green, uint32_t blue) { return red | green << 8 | blue << 16; }

// Of no place in a text, and of no line. Both are counted from 0, in 32 bits.
constexpr uint32_t NoOffset = UINT32_MAX;
constexpr uint32_t NoLine = UINT32_MAX;

// A window of the system, opaque to the portable code.
using NativeWindow = void*;
