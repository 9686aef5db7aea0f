#include "document/UndoRecord.h"

namespace {

// Of the process, which is simplest: a serial only has to differ from those of the other records of its document.
uint32_t lastSerial = 0;

} // namespace

UndoRecord::UndoRecord(State initialState) : state(initialState), serial(++lastSerial) {}
