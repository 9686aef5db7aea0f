#include "document/CommandProcess.h"

#include "base/Platform.h"
#include "base/TextFormat.h"
#include "base/win32/Handles.h"
#include "base/win32/Windows.h"
#include "document/OutputRun.h"

namespace {

// GetTempFileName counts the names of a directory in 16 bits. They are tried in an order that soon leaves
// a stretch of taken ones, and not all of them: a directory that refuses every name should not take long.
constexpr uint32_t NameCount = 0xFFFF;
constexpr uint32_t NameStep = 7919;
constexpr uint32_t MaxTries = 500;

HANDLE AsHandle(intptr_t value) { return reinterpret_cast<HANDLE>(value); }

// Returns false and records the system's message for the error.
bool Fail(OutputRun& run, const Char* what, DWORD error) {
    wchar_t words[512] = {};
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, words,
                                  512, nullptr);
    while (length > 0 && words[length - 1] <= L' ') words[--length] = 0;
    // Without memory there is no reason to tell.
    if (length > 0)
        static_cast<void>(Text::AppendFormat(run.failure, u"%s: %s", what, FromWide(words)));
    else
        static_cast<void>(Text::AppendFormat(run.failure, u"%s: error %u.", what, uint32_t{error}));
    return false;
}

// Lets a new file be used by the user of this process and by nobody else, whatever its directory says.
class UserOnly {
public:
    UserOnly() {
        HANDLE opened = nullptr;
        if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened)) return;
        const KernelHandle token(opened);
        DWORD size = 0;
        const bool known = GetTokenInformation(token.Get(), TokenUser, &user, sizeof(user), &size);
        auto* const list = reinterpret_cast<ACL*>(rules);
        ready = known && InitializeAcl(list, sizeof(rules), ACL_REVISION) &&
                AddAccessAllowedAce(list, ACL_REVISION, FILE_ALL_ACCESS, user.head.User.Sid) &&
                InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) &&
                SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE) &&
                SetSecurityDescriptorControl(&descriptor, SE_DACL_PROTECTED, SE_DACL_PROTECTED);
    }
    UserOnly(const UserOnly&) = delete;
    UserOnly& operator=(const UserOnly&) = delete;

    bool IsReady() const { return ready; }
    SECURITY_DESCRIPTOR* Descriptor() { return &descriptor; }

private:
    struct {
        TOKEN_USER head;
        uint8_t identifier[SECURITY_MAX_SID_SIZE];
    } user = {};
    alignas(ACL) uint8_t rules[sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + SECURITY_MAX_SID_SIZE] = {};
    SECURITY_DESCRIPTOR descriptor = {};
    bool ready = false;
};

// Creates the file under a free one of the names that the directory has for it. Neither a file
// nor a link of that name is touched. It goes with its last handle.
HANDLE CreateTemporaryFile(const wchar_t* directory, wchar_t (&name)[MAX_PATH]) {
    UserOnly user;
    if (!user.IsReady()) return INVALID_HANDLE_VALUE;
    SECURITY_ATTRIBUTES security = {sizeof(security), user.Descriptor(), TRUE};
    const uint64_t first = Platform::Now() >> 16; // so that names differ from one run to the next
    HANDLE file = INVALID_HANDLE_VALUE;
    for (uint32_t i = 0; i < MaxTries && file == INVALID_HANDLE_VALUE; ++i) {
        // Given a number, it only puts the name together.
        const UINT number = static_cast<UINT>((first + uint64_t{i} * NameStep) % NameCount + 1);
        if (!GetTempFileNameW(directory, L"Orvane", number, name)) break;
        file =
            CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &security, CREATE_NEW,
                        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    }
    return file;
}

// The command line of the interpreter; false, which fails the start, when there is none or too much of it.
bool BuildCommandLine(OutputRun& run, const Char* command, WString& line) {
    if (!Platform::EnvironmentVariable(u"COMSPEC", line) || line.IsEmpty()) {
        static_cast<void>(run.failure.Assign(u"The environment variable COMSPEC names no command interpreter."));
        return false;
    }
    if (!line.Append(u" /c ") || (command && !line.Append(command))) return false;
    if (line.Length() <= CommandProcess::MaxCharacters) return true;
    static_cast<void>(run.failure.Assign(u"The command line is too long."));
    return false;
}

// Only the two handles of the output are passed on, whatever else of this process is inheritable.
class InheritedHandles {
public:
    explicit InheritedHandles(const OutputRun& run) : handles{AsHandle(run.outputRead), AsHandle(run.outputWrite)} {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        list = static_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(Heap::Allocate(size));
        initialised = list && InitializeProcThreadAttributeList(list, 1, 0, &size);
        ready = initialised && UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles,
                                                         sizeof(handles), nullptr, nullptr);
        if (!ready) error = list ? GetLastError() : ERROR_NOT_ENOUGH_MEMORY;
    }
    ~InheritedHandles() {
        if (initialised) DeleteProcThreadAttributeList(list);
        Heap::Free(list);
    }
    InheritedHandles(const InheritedHandles&) = delete;
    InheritedHandles& operator=(const InheritedHandles&) = delete;

    bool IsReady() const { return ready; }
    DWORD Error() const { return error; } // of one that is not ready
    LPPROC_THREAD_ATTRIBUTE_LIST Get() const { return list; }

private:
    HANDLE handles[2];
    LPPROC_THREAD_ATTRIBUTE_LIST list = nullptr;
    bool initialised = false;
    bool ready = false;
    DWORD error = ERROR_SUCCESS;
};

// Another process that is started later must not keep the temporary file alive.
void KeepFromOthers(const OutputRun& run) {
    SetHandleInformation(AsHandle(run.outputRead), HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(AsHandle(run.outputWrite), HANDLE_FLAG_INHERIT, 0);
}

// A job that holds the command, so that all it starts can be ended with it when the user says so. It never ends
// anything by itself: its last handle may be closed while the command goes on. Nobody but the command is in it: tools
// that are started detached are children of this process, which is not. Programs that are to live on their own may
// leave it.
HANDLE MakeJob() {
    KernelHandle job(CreateJobObjectW(nullptr, nullptr));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_BREAKAWAY_OK;
    if (!SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof(limits))) return nullptr;
    return job.Detach();
}

// Before the process runs, so that nothing it starts is missed. Without a job it runs all the same.
void PutIntoJob(OutputRun& run) {
    KernelHandle job(MakeJob());
    if (job.Get() && AssignProcessToJobObject(job.Get(), run.process)) run.job = job.Detach();
}

BOOL CALLBACK AskWindow(HWND window, LPARAM processId) {
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == static_cast<DWORD>(processId)) PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

} // namespace

bool CommandProcess::OpenOutput(OutputRun& run) {
    wchar_t directory[MAX_PATH];
    wchar_t name[MAX_PATH];
    const DWORD length = GetTempPathW(MAX_PATH, directory);
    if (length == 0 || length >= MAX_PATH || Platform::FileCallShouldFail())
        return Fail(run, Failure::NoFile, GetLastError());
    const HANDLE write = CreateTemporaryFile(directory, name);
    run.outputWrite = reinterpret_cast<intptr_t>(write);
    if (write == INVALID_HANDLE_VALUE || Platform::FileCallShouldFail())
        return Fail(run, Failure::NoFile, GetLastError());
    SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
    const HANDLE read = CreateFileW(name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    &inherited, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    run.outputRead = reinterpret_cast<intptr_t>(read);
    return read != INVALID_HANDLE_VALUE || Fail(run, Failure::NoFile, GetLastError());
}

bool CommandProcess::Start(OutputRun& run, const Char* command) {
    WString line;
    if (!BuildCommandLine(run, command, line)) return false;
    const InheritedHandles inherited(run);
    if (!inherited.IsReady()) return Fail(run, Failure::NoProcess, inherited.Error());
    STARTUPINFOEXW startup = {};
    startup.StartupInfo.cb = sizeof(startup);
    startup.StartupInfo.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
    startup.StartupInfo.wShowWindow = SW_HIDE;
    startup.StartupInfo.hStdInput = startup.StartupInfo.hStdOutput = startup.StartupInfo.hStdError =
        AsHandle(run.outputWrite);
    startup.lpAttributeList = inherited.Get();
    PROCESS_INFORMATION started = {};
    const wchar_t* const directory = run.startDir.IsEmpty() ? nullptr : Wide(run.startDir.Text());
    if (!CreateProcessW(nullptr, Wide(line.Data()), nullptr, nullptr, TRUE,
                        CREATE_NEW_PROCESS_GROUP | CREATE_SUSPENDED | EXTENDED_STARTUPINFO_PRESENT, nullptr, directory,
                        &startup.StartupInfo, &started))
        return Fail(run, Failure::NoProcess, GetLastError());
    const KernelHandle thread(started.hThread);
    KeepFromOthers(run);
    run.process = started.hProcess;
    run.processId = started.dwProcessId;
    PutIntoJob(run);
    ResumeThread(thread.Get());
    return true;
}

bool CommandProcess::HasEnded(const OutputRun& run) { return WaitForSingleObject(run.process, 0) != WAIT_TIMEOUT; }

bool CommandProcess::OutputSize(const OutputRun& run, uint64_t& size) {
    LARGE_INTEGER found = {};
    if (Platform::FileCallShouldFail() || !GetFileSizeEx(AsHandle(run.outputRead), &found)) return false;
    size = static_cast<uint64_t>(found.QuadPart);
    return true;
}

bool CommandProcess::ReadOutput(const OutputRun& run, uint64_t offset, uint8_t* out, uint32_t count, uint32_t& read) {
    if (Platform::FileCallShouldFail()) return false;
    // Not with the offset in an OVERLAPPED: that takes forty times as long under Wine.
    LARGE_INTEGER place = {};
    place.QuadPart = static_cast<LONGLONG>(offset);
    DWORD got = 0;
    const HANDLE file = AsHandle(run.outputRead);
    if (!SetFilePointerEx(file, place, nullptr, FILE_BEGIN) || !ReadFile(file, out, count, &got, nullptr)) return false;
    read = got;
    return true;
}

void CommandProcess::AskToClose(const OutputRun& run) { EnumWindows(AskWindow, static_cast<LPARAM>(run.processId)); }

void CommandProcess::EndAll(const OutputRun& run) {
    constexpr UINT Ended = 1;
    if (run.job)
        TerminateJobObject(run.job, Ended);
    else
        TerminateProcess(run.process, Ended);
}

bool CommandProcess::HasRoom(const OutputRun&) {
    wchar_t directory[MAX_PATH];
    ULARGE_INTEGER left = {};
    const DWORD length = GetTempPathW(MAX_PATH, directory);
    return length == 0 || length >= MAX_PATH || !GetDiskFreeSpaceExW(directory, &left, nullptr, nullptr) ||
           left.QuadPart > 0;
}

void CommandProcess::Close(OutputRun& run) {
    const KernelHandle process(run.process);
    const KernelHandle job(run.job);
    const KernelHandle read(AsHandle(run.outputRead));
    const KernelHandle write(AsHandle(run.outputWrite));
    run.process = run.job = nullptr;
    run.processId = 0;
    run.outputRead = run.outputWrite = -1;
}
