#pragma once

#include "base/Types.h"

// The clock of Platform, with the rules of the operations that have the same names; implemented by base/win32 and
// base/posix.
namespace SystemClock {

uint64_t Ticks();
void Wait(uint32_t milliseconds);

} // namespace SystemClock
