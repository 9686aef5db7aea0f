#pragma once

#include "base/RecoveryFolder.h"
#include "base/WString.h"
#include "base/win32/Windows.h"

// While one of these lives, an exception that nobody handles writes a small dump beside the journals, says in one box
// where the unsaved texts are, and ends the process. Everything that needs memory is done by the constructor, since
// after a crash there may be none to be had. One at a time.
class CrashReport {
public:
    // `recovery` is needed by the constructor only.
    explicit CrashReport(RecoveryFolder& recovery);
    ~CrashReport();
    CrashReport(const CrashReport&) = delete;
    CrashReport& operator=(const CrashReport&) = delete;

private:
    struct Crash;

    static LONG WINAPI OnException(EXCEPTION_POINTERS* pointers);
    static DWORD WINAPI Report(void* parameter);
    bool Prepare(RecoveryFolder& recovery);
    bool WriteDump(const Crash& crash) const;

    // Process-wide: the system passes the filter only the exception.
    static CrashReport* installed;

    LPTOP_LEVEL_EXCEPTION_FILTER before = nullptr;
    LONG crashes = 0; // the first one is reported
    WString library;  // of the system, by its full name
    WString folder;   // of the journals
    WString dump;     // one for all crashes: the last one counts
    WString told;     // what the user is told
    WString toldWithDump;
};
