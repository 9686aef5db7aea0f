#pragma once

#include "base/CodePage.h"
#include "base/Types.h"
#include "base/WString.h"

// The state of a command whose output a document collects. Its handles are plain, since only the platform half knows
// what they are; OutputCollector owns them and has CommandProcess close them, at the latest when it goes.
struct OutputRun {
    void* process = nullptr; // null when none runs
    uint32_t processId = 0;
    void* job = nullptr; // holds the process and what it starts; null where the system has no such thing
    bool wasAskedToClose = false;
    intptr_t outputRead = -1;  // all ones when closed
    intptr_t outputWrite = -1; // the handle given to the process; all ones when closed
    uint32_t pollTimer = 0;    // milliseconds between the polls while the timer is set, else 0
    uint64_t consumed = 0;     // bytes of the temporary file already appended
    uint64_t size = 0;         // bytes of it when a poll looked last
    bool hasEnded = false;     // a poll has seen that the process has
    bool sizeIsFinal = false;  // `size` was looked at afterwards
    uint32_t failedEnds = 0;   // polls that could not read although the process had ended
    uint8_t* readBuffer = nullptr;
    WString startDir;
    CodePage page = CodePage::Ansi; // of what is printed
    WString failure;                // why it could not be started; empty without memory or before that is known
};
