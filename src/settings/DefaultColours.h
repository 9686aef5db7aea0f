#pragma once

#include "base/Types.h"

class IniFile;

// Colours that a settings file gives as the defaults, in a section DefaultColours with the keys of General. They are
// what General takes for a key that it does not have, and no colours of the user: High Contrast replaces them
// (SystemColours.h). A file without the section has the defaults of the table.

// Replaces what was read before. Without memory some are left out.
void ReadDefaultColours(const IniFile& file);
// What the section says of a key, valid until it is read again; null when it says nothing.
const Char* FindDefaultColour(const Char* key);
void ReleaseDefaultColours();
