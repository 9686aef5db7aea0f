#pragma once

#include "base/Types.h"

// Text is shown as it is stored, from left to right, whatever the direction of its letters: source that is reordered
// on the screen can look like other source. The system reorders what it draws in one call, so this says what must not
// be drawn together.
namespace TextDirection {

enum class Kind : uint8_t {
    Plain,     // may be drawn together with its neighbours
    Letter,    // of a script that runs from right to left, or a digit or mark that is ordered with these
    Combining, // drawn over the character before it; also the second half of a surrogate pair
    Control,   // reorders the text after it; never drawn itself
};

// All characters before it are Plain.
constexpr Char FirstToAsk = 0x300;
Kind Find(Char character);
inline Kind KindOf(Char character) { return character < FirstToAsk ? Kind::Plain : Find(character); }

// What is shown instead of a Control: which way it points, or that it ends one.
Char MarkOf(Char control);

} // namespace TextDirection
