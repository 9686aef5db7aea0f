#pragma once

#include "base/ScanBreaks.h"
#include "base/Types.h"
#include "document/Encoding.h"

// Turns CR LF and lone CR of `text` into LF in place, up to the first NUL, and terminates it. Returns
// the new length; `lineCount` is 1 plus the line breaks, `style` what was found (Dos when none).
uint32_t NormaliseLineBreaks(Char* text, uint32_t& lineCount, LineEnding& style);

// Of a text with these breaks; Dos when it has none.
LineEnding LineEndingOf(const Scan::BreakCounts& breaks);
