#pragma once

#include "base/JournalPolicy.h"
#include "base/SafeSaver.h"

// What keeps a failure from costing the user anything. Made by the program; outlives all that save and the
// documents.
struct RecoveryServices {
    SafeSaver saver;
    JournalPolicy journals;
};
