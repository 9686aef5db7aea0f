#pragma once

#include "settings/IniSection.h"

// Reads the settings format, up to the terminator, and appends what it holds to `sections`. `text` has line feeds only.
// A line is not a unit: a section name runs to its "]" and a key name to its "=" wherever those are, so that a line
// without "=" joins the ones below it. Null when all was read. Else, at the first malformed item or without memory,
// where that begins; what came before it stays.
const Char* ParseSections(const Char* text, List<IniSection>& sections);
