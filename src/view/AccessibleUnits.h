#pragma once

#include "base/Types.h"

class ShownText;

// The pieces of a text that screen readers move by, from the smallest to the largest. The numbers are the system's.
enum class AccessibleUnit : uint32_t { Character, Format, Word, Line, Paragraph, Page, Document };

// Where these units begin. Units that plain text does not have are mapped: Format to Word, Paragraph to Line, Page to
// Document.
//
// Every unit reaches up to the next one; a line has its line feed. A character has its combining marks and is never
// half of a surrogate pair, and no other unit begins inside one. A word is a run of letters and digits of any script,
// or of punctuation, with the blanks before it: what comes after the caret, wherever the word keys leave it. A line
// feed is a word of its own.
//
// The last unit ends at the text's end. Only a line can be there without a character.
namespace AccessibleUnits {

// The start of the unit that holds `offset`. One at or past the end is the text's end, but for the last line and the
// document.
uint32_t StartOf(const ShownText& text, AccessibleUnit unit, uint32_t offset);
// Goes from `offset` (at most the end) over up to |count| starts of units, forward or, below 0, backward; the text's
// end counts as one. Returns where that leads and in `moved` how many there were, with the sign of `count`.
uint32_t Move(const ShownText& text, AccessibleUnit unit, uint32_t offset, int32_t count, int32_t& moved);
// The start of the last unit of the text.
uint32_t LastStart(const ShownText& text, AccessibleUnit unit);

} // namespace AccessibleUnits
