#pragma once

#include "base/ScanBreaks.h"
#include "base/Types.h"

// Turns CR LF and lone CR of `text` into LF in place, up to the first NUL, and terminates it. Returns
// the new length; `lineCount` is 1 plus the line breaks, `style` the LineEnding found (Dos when none).
uint32_t NormaliseLineBreaks(Char* text, uint32_t& lineCount, uint32_t& style);

// The LineEnding of a text with these breaks; Dos when it has none.
uint32_t LineEndingOf(const Scan::BreakCounts& breaks);
