#pragma once

#include "settings/Settings.h"

// Splits and carries out the argument of the setopt command: a key and a value, each a word up to the
// next space or a text in double quotes; a missing value is the empty one. False, with nothing changed, for a
// key that is not closed by its quote or by a space, and without memory. `changes` gets what has changed.
// Repainting is the caller's.
bool ExecuteSetOption(const Char* argument, SettingsChanges& changes);
