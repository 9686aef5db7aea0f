#pragma once

#include "base/Types.h"
#include "base/WString.h"

// The state of a command whose output a document collects.
struct OutputRun {
    void* process = nullptr; // null when none runs
    uint32_t processId = 0;
    intptr_t outputRead = -1;  // all ones when closed
    intptr_t outputWrite = -1; // the handle given to the process; all ones when closed
    uint32_t pollTimer = 0;    // milliseconds between the polls while the timer is set, else 0
    uint64_t consumed = 0;     // bytes of the temporary file already appended
    uint8_t* readBuffer = nullptr;
    WString startDir;
};
