#pragma once

#include "base/SafeSaver.h"

// What keeps a failure from costing the user anything. Made by the program; outlives all that save.
struct RecoveryServices {
    SafeSaver saver;
};
