#pragma once

#include "base/Platform.h"
#include "base/win32/Windows.h"

// Repeats a call of the system while others use the file: virus scanners, indexers and the like open a file right after
// it was written, for a moment. False, with the system's error, when it fails for good or for about a second.
template <class Call> bool CallWhileInUse(Call call) {
    constexpr uint32_t MaxWaiting = 1000; // milliseconds
    constexpr uint32_t OneWait = 50;
    for (uint32_t waited = 0; !call(); waited += OneWait) {
        const DWORD error = GetLastError();
        const bool isInUse =
            error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE;
        if (!isInUse || waited >= MaxWaiting) return false;
        Platform::Wait(OneWait);
    }
    return true;
}
