#include "document/UndoRecord.h"

namespace {

uint32_t lastSerial = 0;

} // namespace

UndoRecord::UndoRecord(State initialState) : state(initialState), serial(++lastSerial) {}
