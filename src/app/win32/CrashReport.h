#pragma once

#include "base/win32/Windows.h"

// While one of these lives, an exception that nobody handles writes a small dump beside the journals, says in one box
// where the unsaved texts are, and ends the process. Everything that needs memory is done by the constructor.
class CrashReport {
public:
    CrashReport();
    ~CrashReport();
    CrashReport(const CrashReport&) = delete;
    CrashReport& operator=(const CrashReport&) = delete;

private:
    LPTOP_LEVEL_EXCEPTION_FILTER before;
};
