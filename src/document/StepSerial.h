#pragma once

#include "base/Types.h"

// Numbers for the records of undo lists, which tell them apart and the later from the earlier. All documents share one
// count, so that a moment is the same number for each of them.
namespace StepSerial {

// At least 1, and never the same again.
uint32_t Next();
// The last one given out; 0 before the first.
uint32_t Latest();

} // namespace StepSerial
