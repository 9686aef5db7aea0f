#pragma once

#include "base/win32/Windows.h"

// What the process asks of the system before it does anything else: a damaged heap ends it, libraries come from the
// system's own folders only, a drive without its disk raises no box of the system, and an exception in a timer
// procedure ends the process instead of being swallowed.
class ProcessSetup {
public:
    ProcessSetup();
    ~ProcessSetup();
    ProcessSetup(const ProcessSetup&) = delete;
    ProcessSetup& operator=(const ProcessSetup&) = delete;

    // To be called before a call of the shell that may need OLE, by the thread of the windows. From the first time on
    // OLE is there until the object goes: to have it from the start would make each start longer.
    static void UseOle();

private:
    static bool hasOle;
};
