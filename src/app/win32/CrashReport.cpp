#include "app/win32/CrashReport.h"

#include "base/Journal.h"
#include "base/Path.h"
#include "base/Platform.h"
#include "base/TextFormat.h"
#include "base/win32/Handles.h"
#include "base/win32/SystemLibrary.h"
#include "base/win32/SystemText.h"

#include <dbghelp.h>

namespace {

// How long the thread that reports may take to begin, and then until it has written its dump, in milliseconds: in a
// process that is damaged enough, or that crashed with a lock held, it never does.
constexpr DWORD MaxWaits[] = {5000, 30000};
// Bytes of stack kept for the filter after a stack overflow.
constexpr ULONG StackLeft = 0x8000;

// Waits until the user has read the report, as long as it makes progress.
void AwaitReport(HANDLE thread, HANDLE progress) {
    for (const DWORD wait : MaxWaits)
        if (WaitForSingleObject(progress, wait) != WAIT_OBJECT_0) return;
    WaitForSingleObject(thread, INFINITE);
}

} // namespace

CrashReport* CrashReport::installed = nullptr;

// The thread that has crashed, and what happened to it.
struct CrashReport::Crash {
    EXCEPTION_POINTERS* pointers;
    DWORD thread;
    HANDLE progress; // a semaphore: counted up when the report has begun, and again before its box comes up
};

bool CrashReport::Prepare(RecoveryFolder& recovery) {
    const auto systemFolder = [](wchar_t* out, DWORD size) { return GetSystemDirectoryW(out, size); };
    return FillFromSystem(library, systemFolder) && Path::Join(library, u"dbghelp.dll") &&
           recovery.GetPath(JournalFolder, folder) && dump.Assign(folder) && Path::Join(dump, u"Orvane.dmp") &&
           Text::AppendFormat(told,
                              u"Orvane has encountered an error and must close.\n"
                              u"What was not saved is in %s. The next start offers it.",
                              folder.Text()) &&
           Text::AppendFormat(toldWithDump, u"%s\nWhat happened is described in %s.", told.Text(), dump.Text());
}

bool CrashReport::WriteDump(const Crash& crash) const {
    // Never freed: the process ends here.
    const HMODULE helper = LoadLibraryW(Wide(library.Text()));
    decltype(&MiniDumpWriteDump) write = nullptr;
    if (!helper || !SystemLibrary::Find(helper, write, "MiniDumpWriteDump")) return false;
    SHCreateDirectoryExW(nullptr, Wide(folder.Text()), nullptr);
    const KernelHandle file(CreateFileW(Wide(dump.Text()), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    MINIDUMP_EXCEPTION_INFORMATION exception = {crash.thread, crash.pointers, FALSE};
    return file.IsValid() &&
           write(GetCurrentProcess(), GetCurrentProcessId(), file.Get(), MiniDumpNormal, &exception, nullptr, nullptr);
}

// On a thread of its own: the messages that a box handles would lead into what has crashed.
DWORD WINAPI CrashReport::Report(void* parameter) {
    const Crash& crash = *static_cast<const Crash*>(parameter);
    ReleaseSemaphore(crash.progress, 1, nullptr);
    SetThreadErrorMode(SEM_FAILCRITICALERRORS, nullptr); // its own: other threads' do not count
    const WString& text = installed->WriteDump(crash) ? installed->toldWithDump : installed->told;
    ReleaseSemaphore(crash.progress, 1, nullptr);
    MessageBoxW(nullptr, Wide(text.Text()), L"Orvane", MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
    return 0;
}

LONG WINAPI CrashReport::OnException(EXCEPTION_POINTERS* pointers) {
    // Another thread that crashes meanwhile, or the report itself, waits for the end of the process.
    if (InterlockedIncrement(&installed->crashes) > 1) {
        Sleep(INFINITE);
        return EXCEPTION_EXECUTE_HANDLER;
    }
    const KernelHandle progress(CreateSemaphoreW(nullptr, 0, ARRAYSIZE(MaxWaits), nullptr));
    Crash crash = {pointers, GetCurrentThreadId(), progress.Get()};
    const KernelHandle thread(CreateThread(nullptr, 0, Report, &crash, 0, nullptr));
    if (thread.IsValid()) AwaitReport(thread.Get(), progress.Get());
    // Not by way of the libraries, whose ends might touch what is damaged; and not one journal is removed.
    TerminateProcess(GetCurrentProcess(), pointers->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

CrashReport::CrashReport(RecoveryFolder& recovery) {
    ULONG left = StackLeft;
    SetThreadStackGuarantee(&left);
    if (!Prepare(recovery)) return;
    installed = this;
    before = SetUnhandledExceptionFilter(OnException);
}

CrashReport::~CrashReport() {
    SetUnhandledExceptionFilter(before);
    installed = nullptr;
}
