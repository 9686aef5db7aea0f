#include "document/StepSerial.h"

namespace {

uint32_t latest = 0; // of the process: a step may be made of edits in several documents

} // namespace

uint32_t StepSerial::Next() { return ++latest; }

uint32_t StepSerial::Latest() { return latest; }
