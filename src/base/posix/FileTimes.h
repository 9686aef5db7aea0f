#pragma once

#include "base/Platform.h"

#include <time.h>

inline Platform::FileTime ToFileTime(const timespec& moment) {
    constexpr int64_t SecondsFrom1601To1970 = 11644473600;
    constexpr int64_t UnitsPerSecond = 10'000'000;
    return static_cast<Platform::FileTime>((moment.tv_sec + SecondsFrom1601To1970) * UnitsPerSecond +
                                           moment.tv_nsec / 100);
}
