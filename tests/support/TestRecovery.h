#pragma once

#include "base/RecoveryServices.h"

#include <memory>

// What the tests of a program share.
inline RecoveryServices recoveryServices;

// As at the end of a program: what failed saves have left is for the next start.
inline void LeaveSaveCopies() {
    std::destroy_at(&recoveryServices.saver);
    std::construct_at(&recoveryServices.saver);
}
