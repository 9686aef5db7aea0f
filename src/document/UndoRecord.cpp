#include "document/UndoRecord.h"

namespace {

uint32_t lastSerial = 0;

} // namespace

UndoRecord::UndoRecord(uint32_t initialState) : state(initialState), serial(++lastSerial) {}
