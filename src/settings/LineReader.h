#pragma once

#include "base/WString.h"

// Turns CR LF and lone CR into LF in place, up to the terminator. Returns the new length.
uint32_t NormaliseLineEnds(Char* text);

// The line reader of scripts, for text whose line ends are normalised: fills `line` with the text from
// `position` up to the next line feed or the terminator and moves `position` past the line feed.
// False at the end of the text, so a line feed at the very end starts no further line; also false
// without memory, with `position` as it was.
bool NextLine(const Char* text, uint32_t& position, WString& line);
