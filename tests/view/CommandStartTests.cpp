// What the system is asked for when a command is started: its process and its file.

#include "view/CommandProcessTest.h"
#include "view/ProcessRecorder.h"

#include <set>

namespace {

using CommandStartTest = CommandProcessTest;

// Records how the files of a folder are opened.
class FileRecorder {
public:
    struct Call {
        DWORD access;
        DWORD sharing;
        bool inheritable;
        DWORD disposition;
        DWORD flags;
        bool operator==(const Call&) const = default;
    };

    explicit FileRecorder(const std::wstring& path) : import("CreateFileW", reinterpret_cast<void*>(Open)) {
        EXPECT_TRUE(import.IsImported());
        folder = path;
        original = reinterpret_cast<decltype(&CreateFileW)>(import.Original());
        calls.clear();
    }
    static const std::vector<Call>& Calls() { return calls; }

private:
    static HANDLE WINAPI Open(LPCWSTR name, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                              DWORD disposition, DWORD flags, HANDLE pattern) {
        if (_wcsnicmp(name, folder.c_str(), folder.size()) == 0)
            calls.push_back({access, sharing, security && security->bInheritHandle, disposition, flags});
        return original(name, access, sharing, security, disposition, flags, pattern);
    }

    static inline std::wstring folder;
    static inline std::vector<Call> calls;
    static inline decltype(&CreateFileW) original;
    ReplacedImport import;
};

// The names that are tried for a file of a run, one after the other, are the test's.
class NamesToTry {
public:
    explicit NamesToTry(std::vector<std::wstring> tried) : import("GetTempFileNameW", reinterpret_cast<void*>(Next)) {
        EXPECT_TRUE(import.IsImported());
        names = std::move(tried);
        next = 0;
    }

private:
    static UINT WINAPI Next(LPCWSTR folder, LPCWSTR, UINT number, LPWSTR out) {
        if (next == names.size()) return 0;
        wcscpy(out, (std::wstring(folder) + L"\\" + names[next++]).c_str());
        return number;
    }

    static inline std::vector<std::wstring> names;
    static inline size_t next;
    ReplacedImport import;
};

// Links in a folder: link.tmp to the file kept.txt, and dangling.tmp to made.txt. Wine neither makes nor
// deletes links, but starts the programs of its host, which do.
class Links {
public:
    explicit Links(const std::wstring& path) : folder(path + L"\\") {
        MakeOne(L"dangling.tmp", L"made.txt");
        MakeOne(L"link.tmp", L"kept.txt");
        onHost = !AreMade() && RunOnHost(L"ln -s made.txt dangling.tmp; ln -s kept.txt link.tmp");
    }
    ~Links() {
        if (onHost) RunOnHost(L"rm -f dangling.tmp link.tmp");
    }
    Links(const Links&) = delete;
    Links& operator=(const Links&) = delete;

    bool AreMade() const { return IsThere(L"link.tmp"); }

private:
    bool IsThere(const wchar_t* name) const {
        return GetFileAttributesW((folder + name).c_str()) != INVALID_FILE_ATTRIBUTES;
    }
    void MakeOne(const wchar_t* name, const wchar_t* target) const {
        CreateSymbolicLinkW((folder + name).c_str(), target, SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE);
    }
    bool RunOnHost(const std::wstring& commands) const {
        std::wstring line = L"Z:\\bin\\sh -c \"" + commands + L"; touch done\"";
        STARTUPINFOW startup = {};
        startup.cb = sizeof(startup);
        PROCESS_INFORMATION started = {};
        return CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(), &startup,
                              &started) &&
               SpeakerScripts::Eventually([&] { return IsThere(L"done"); }) && DeleteFileW((folder + L"done").c_str());
    }

    std::wstring folder;
    bool onHost = false;
};

} // namespace

TEST_F(CommandStartTest, TheInterpreterIsStartedHiddenInAGroupOfItsOwn) {
    const Environment comspec(L"COMSPEC", L"C:\\an interpreter.exe");
    const ProcessRecorder recorder;
    ASSERT_TRUE(document->RunCommand(u"one && two", u"C:\\some folder"));
    ASSERT_EQ(recorder.Calls().size(), 1u);
    const ProcessRecorder::Call& call = recorder.Calls()[0];
    EXPECT_FALSE(call.namesProgram);
    EXPECT_EQ(call.line, L"C:\\an interpreter.exe /c one && two");
    EXPECT_EQ(call.directory, L"C:\\some folder");
    // It does not run before it is in its job.
    EXPECT_EQ(call.flags, DWORD{CREATE_NEW_PROCESS_GROUP | CREATE_SUSPENDED | EXTENDED_STARTUPINFO_PRESENT});
    EXPECT_FALSE(call.hasSecurity);
    EXPECT_FALSE(call.hasEnvironment);
    EXPECT_EQ(call.startup.dwFlags, DWORD{STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES});
    EXPECT_EQ(call.startup.wShowWindow, SW_HIDE);
}

TEST_F(CommandStartTest, ACommandThatIsTooLongIsNotStartedInPart) {
    const Environment comspec(L"COMSPEC", L"C:\\i.exe");
    const ProcessRecorder recorder;
    const std::u16string longest(32766 - wcslen(L"C:\\i.exe /c "), u'x');
    EXPECT_FALSE(document->RunCommand((longest + u"x").c_str(), nullptr));
    EXPECT_TRUE(recorder.Calls().empty());
    EXPECT_TRUE(document->RunCommand(longest.c_str(), nullptr));
    EXPECT_EQ(recorder.Calls().size(), 1u);
}

TEST_F(CommandStartTest, WhyACommandWasNotStartedIsKnown) {
    const auto reason = [&](const Char* command) {
        EXPECT_FALSE(document->RunCommand(command, nullptr));
        return std::u16string(document->Output().Failure());
    };
    {
        const Environment comspec(L"COMSPEC", nullptr);
        EXPECT_EQ(reason(u"one"), u"The environment variable COMSPEC names no command interpreter.");
    }
    EXPECT_EQ(reason(std::u16string(40000, u'x').c_str()), u"The command line is too long.");
    const auto refuse = [](LPCWSTR, LPWSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID, LPCWSTR,
                           LPSTARTUPINFOW, LPPROCESS_INFORMATION) -> BOOL {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    };
    const ReplacedImport create("CreateProcessW",
                                reinterpret_cast<void*>(static_cast<decltype(&CreateProcessW)>(refuse)));
    wchar_t words[200] = {};
    ASSERT_NE(FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, ERROR_ACCESS_DENIED, 0, words, 200, nullptr), 0u);
    const std::u16string denied = reason(u"one");
    EXPECT_TRUE(denied.starts_with(u"The command interpreter cannot be started: ")) << testing::PrintToString(denied);
    EXPECT_GE(denied.back(), u'!') << "no line break of the system's";
    EXPECT_NE(denied.find(std::u16string(words, words + 6)), std::u16string::npos);
    const NamesToTry none({});
    EXPECT_TRUE(reason(u"one").starts_with(u"The file for its output cannot be made"));
}

TEST_F(CommandStartTest, WithoutTheListOfItsHandlesACommandIsNotStartedAndThatIsSaid) {
    const auto refuse = [](LPPROC_THREAD_ATTRIBUTE_LIST, DWORD, DWORD_PTR, PVOID, SIZE_T, PVOID, PSIZE_T) -> BOOL {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    };
    const ReplacedImport update("UpdateProcThreadAttribute",
                                reinterpret_cast<void*>(static_cast<decltype(&UpdateProcThreadAttribute)>(refuse)));
    ASSERT_TRUE(update.IsImported());
    const ProcessRecorder recorder;
    EXPECT_FALSE(document->RunCommand(u"one", nullptr));
    EXPECT_TRUE(recorder.Calls().empty());
    wchar_t words[200] = {};
    ASSERT_NE(FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, ERROR_ACCESS_DENIED, 0, words, 200, nullptr), 0u);
    const std::u16string reason = document->Output().Failure();
    EXPECT_TRUE(reason.starts_with(u"The command interpreter cannot be started: ")) << testing::PrintToString(reason);
    EXPECT_NE(reason.find(std::u16string(words, words + 6)), std::u16string::npos);
}

TEST_F(CommandStartTest, WithoutMemoryThatIsWhyACommandWasNotStarted) {
    const ProcessRecorder recorder;
    Heap::SetFailureHook([] { return true; });
    EXPECT_FALSE(document->RunCommand(u"one", nullptr));
    Heap::SetFailureHook(nullptr);
    EXPECT_EQ(std::u16string(document->Output().Failure()), u"There is not enough memory.");
}

TEST_F(CommandStartTest, TheProcessHasTheFileAsItsThreeStandardHandles) {
    const ProcessRecorder recorder;
    ASSERT_TRUE(document->RunCommand(u"one", nullptr));
    const ProcessRecorder::Call& call = recorder.Calls().at(0);
    EXPECT_TRUE(call.inherits);
    const auto write = reinterpret_cast<HANDLE>(State().outputWrite);
    EXPECT_EQ(call.startup.hStdInput, write);
    EXPECT_EQ(call.startup.hStdOutput, write);
    EXPECT_EQ(call.startup.hStdError, write);
}

TEST_F(CommandStartTest, OnlyTheHandleOfTheProcessIsKeptUntilTheEnd) {
    const ProcessRecorder recorder;
    ASSERT_TRUE(document->RunCommand(u"one", nullptr));
    const ProcessRecorder::Call& call = recorder.Calls().at(0);
    EXPECT_TRUE(recorder.IsClosed(call.thread));
    EXPECT_FALSE(recorder.IsClosed(call.process));
    document->EndRun();
    EXPECT_TRUE(recorder.IsClosed(call.process));
}

TEST_F(CommandStartTest, BothSidesOfTheFileAreOpenedForEachOther) {
    const TemporaryFolder temporary;
    const FileRecorder recorder(temporary.Path());
    const ProcessRecorder processes;
    ASSERT_TRUE(document->RunCommand(u"one", nullptr));
    ASSERT_EQ(recorder.Calls().size(), 2u);
    const FileRecorder::Call write = {
        GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, true, CREATE_NEW,
        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT};
    const FileRecorder::Call read = {GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, true,
                                     OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT};
    EXPECT_EQ(recorder.Calls()[0], write);
    EXPECT_EQ(recorder.Calls()[1], read);
}

TEST_F(CommandStartTest, LinksUnderNamesOfTheFileAreNeitherFollowedNorReplaced) {
    const TemporaryFolder temporary;
    temporary.Folder().Write("kept.txt", "kept");
    const Links links(temporary.Path());
    if (!links.AreMade()) GTEST_SKIP() << "no links can be made here";
    const NamesToTry names({L"link.tmp", L"dangling.tmp", L"free.tmp"});
    ASSERT_TRUE(Run("say text\n" + scripts.WaitFor("go")));
    const auto isThere = [&](const char* name) { return std::filesystem::exists(temporary.Folder().File(name)); };
    EXPECT_TRUE(isThere("free.tmp"));
    EXPECT_FALSE(isThere("made.txt"));
    scripts.Give("go");
    ASSERT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), u"text");
    EXPECT_TRUE(SpeakerScripts::Eventually([&] { return !isThere("free.tmp"); }));
    temporary.Folder().Write("made.txt", "made");
    EXPECT_EQ(temporary.Folder().Read("link.tmp"), "kept");
    EXPECT_EQ(temporary.Folder().Read("dangling.tmp"), "made");
}

TEST_F(CommandStartTest, StoppingAsksEveryTopLevelWindowOfTheProcess) {
    const ProcessRecorder recorder; // the process is this one
    const HWND other = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    const HWND child = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 9, 9, other, nullptr, nullptr, nullptr);
    ASSERT_TRUE(document->RunCommand(u"one", nullptr));
    document->StopProcess();
    std::set<HWND> asked;
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_CLOSE, WM_CLOSE, PM_REMOVE)) {
        EXPECT_TRUE(asked.insert(message.hwnd).second) << "once";
        EXPECT_EQ(message.wParam, 0u);
        EXPECT_EQ(message.lParam, 0);
    }
    EXPECT_TRUE(asked.count(window));
    EXPECT_TRUE(asked.count(other));
    EXPECT_FALSE(asked.count(child));
    DestroyWindow(other);
}
