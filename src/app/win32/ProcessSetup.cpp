#include "app/win32/ProcessSetup.h"

#include "base/win32/Windows.h"

// Each of these makes the process safer; none is missed where the system refuses it.
void SetUpProcess() {
    HeapSetInformation(nullptr, HeapEnableTerminationOnCorruption, nullptr, 0);
    // Early, since what follows may load libraries by their names.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    SetDllDirectoryW(L"");
    // The thread's mode and not the process's, which the commands that are run would inherit.
    SetThreadErrorMode(SEM_FAILCRITICALERRORS, nullptr);
    BOOL suppresses = FALSE;
    SetUserObjectInformationW(GetCurrentProcess(), UOI_TIMERPROC_EXCEPTION_SUPPRESSION, &suppresses,
                              sizeof(suppresses));
}
