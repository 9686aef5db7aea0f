#include "document/StepSerial.h"

namespace {

uint32_t latest = 0;

} // namespace

uint32_t StepSerial::Next() { return ++latest; }

uint32_t StepSerial::Latest() { return latest; }
