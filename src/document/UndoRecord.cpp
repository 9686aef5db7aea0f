#include "document/UndoRecord.h"

#include "document/StepSerial.h"

UndoRecord::UndoRecord(State initialState) : state(initialState), serial(StepSerial::Next()) {}
