#include "document/StepSerial.h"

namespace {

uint32_t latest = 0; // process-wide: one step may hold edits in several documents

} // namespace

uint32_t StepSerial::Next() { return ++latest; }

uint32_t StepSerial::Latest() { return latest; }
