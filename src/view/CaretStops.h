#pragma once

#include "view/TextSpan.h"

// Where the caret may stop in a line. By default that is everywhere; with the additional setting WholeCharacters it is
// not inside a pair of surrogates, and a user who moves it does not stop between a letter and its combining marks.
enum class CaretStop {
    OutsidePairs,    // where the program puts it
    WholeCharacters, // where the user moves it
};

namespace CaretStops {

// Whether a place in a line is inside a pair, or before a combining mark of the character before it. `second` is what
// comes after `after`; NUL at the line's end.
bool IsInsideCharacter(Char before, Char after, Char second);
// The last stop at or before `column` (at most the line's length): OutsidePair leaves surrogate pairs whole, AtOrBefore
// combining sequences as well.
uint32_t OutsidePair(TextSpan line, uint32_t column);
uint32_t AtOrBefore(TextSpan line, uint32_t column);
// The first stop of whole characters at or after `column`, at most the line's length.
uint32_t AtOrAfter(TextSpan line, uint32_t column);
// The next stop of whole characters on either side. `column` is not at the end of the line on that side.
inline uint32_t Before(TextSpan line, uint32_t column) { return AtOrBefore(line, column - 1); }
inline uint32_t After(TextSpan line, uint32_t column) { return AtOrAfter(line, column + 1); }

} // namespace CaretStops
