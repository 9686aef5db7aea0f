#pragma once

#include "base/RecoveryServices.h"

#include <memory>

// What the tests of a program share.
inline RecoveryServices recoveryServices;

// As at the end of a program: what failed saves have left is for the next start.
inline void LeaveSaveCopies() {
    std::destroy_at(&recoveryServices.saver);
    std::construct_at(&recoveryServices.saver, recoveryServices.folder);
}

// From now on documents keep journals, or not, as those of a program that has just been started.
inline void KeepJournals(bool areKept) {
    recoveryServices.journals = JournalPolicy();
    if (areKept) recoveryServices.journals.Keep();
}
inline void HurryJournals() { recoveryServices.journals.Hurry(); }
inline void LeaveJournals() { recoveryServices.journals.Leave(); }
