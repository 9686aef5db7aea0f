#pragma once

#include "base/Types.h"

// Key codes as the system numbers them; letter keys have the code of their capital letter.
namespace ViewKey {
constexpr uint32_t Backspace = 0x08;
constexpr uint32_t Escape = 0x1B;
constexpr uint32_t PageUp = 0x21;
constexpr uint32_t PageDown = 0x22;
constexpr uint32_t End = 0x23;
constexpr uint32_t Home = 0x24;
constexpr uint32_t Left = 0x25;
constexpr uint32_t Up = 0x26;
constexpr uint32_t Right = 0x27;
constexpr uint32_t Down = 0x28;
constexpr uint32_t Insert = 0x2D;
constexpr uint32_t Delete = 0x2E;
constexpr uint32_t F2 = 0x71;
constexpr uint32_t F3 = 0x72;
constexpr uint32_t CloseBracket = 0xDD; // right of "[" on a US layout
} // namespace ViewKey
