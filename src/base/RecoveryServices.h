#pragma once

#include "base/JournalPolicy.h"
#include "base/RecoveryFolder.h"
#include "base/SafeSaver.h"

// What keeps a failure from costing the user anything. Made by the program; outlives all that save and the
// documents.
struct RecoveryServices {
    RecoveryFolder folder;
    SafeSaver saver{folder};
    JournalPolicy journals;
};
