#pragma once

#include "base/Platform.h"

// While one of these lives there is no place for copies of what is saved.
class NoRecoveryFolder {
public:
    NoRecoveryFolder() : before(Platform::SetRecoveryFolder(u"")) {}
    ~NoRecoveryFolder() { Platform::SetRecoveryFolder(before); }
    NoRecoveryFolder(const NoRecoveryFolder&) = delete;
    NoRecoveryFolder& operator=(const NoRecoveryFolder&) = delete;

private:
    const Char* before;
};
