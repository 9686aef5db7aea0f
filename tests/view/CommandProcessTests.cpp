// The system's side of running a command: its file, its handles, its windows and the poll timer.

#include "view/CallCounter.h"
#include "view/CommandProcessTest.h"

#include "base/win32/Handles.h"
#include "document/CommandProcess.h"
#include "support/TestServices.h"

#include <aclapi.h>

namespace {

struct UserToken {
    TOKEN_USER head;
    uint8_t identifier[SECURITY_MAX_SID_SIZE];
};

UserToken& User() {
    static UserToken user = {};
    HANDLE token = nullptr;
    DWORD size = 0;
    EXPECT_TRUE(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token));
    EXPECT_TRUE(GetTokenInformation(token, TokenUser, &user, sizeof(user), &size));
    CloseHandle(token);
    return user;
}

// Those whom a file's rules let in, a word each, without the system itself: some let it in always.
std::string LetIn(const std::wstring& path) {
    ACL* rules = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &rules,
                              nullptr, &descriptor) != ERROR_SUCCESS ||
        !rules)
        return "everyone";
    std::string words;
    for (DWORD i = 0; i < rules->AceCount; ++i) {
        void* entry = nullptr;
        EXPECT_TRUE(GetAce(rules, i, &entry));
        auto* const allowed = static_cast<ACCESS_ALLOWED_ACE*>(entry);
        if (allowed->Header.AceType != ACCESS_ALLOWED_ACE_TYPE || IsWellKnownSid(&allowed->SidStart, WinLocalSystemSid))
            continue;
        words += EqualSid(&allowed->SidStart, User().head.User.Sid) ? "user" : "another";
    }
    LocalFree(descriptor);
    return words;
}

// While it lives, processes are started without a console: the process that owns a hidden one has a window.
class WithoutConsole {
public:
    WithoutConsole() : import("CreateProcessW", reinterpret_cast<void*>(Create)) {
        EXPECT_TRUE(import.IsImported());
        original = reinterpret_cast<decltype(&CreateProcessW)>(import.Original());
    }

private:
    static BOOL WINAPI Create(LPCWSTR program, LPWSTR line, LPSECURITY_ATTRIBUTES ofProcess,
                              LPSECURITY_ATTRIBUTES ofThread, BOOL inherits, DWORD flags, LPVOID environment,
                              LPCWSTR directory, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION started) {
        return original(program, line, ofProcess, ofThread, inherits, flags | DETACHED_PROCESS, environment, directory,
                        startup, started);
    }

    static inline decltype(&CreateProcessW) original;
    ReplacedImport import;
};

bool HasWindow(DWORD processId) {
    struct Search {
        DWORD process;
        bool found;
    } search = {processId, false};
    const auto look = [](HWND window, LPARAM parameter) -> BOOL {
        auto* const wanted = reinterpret_cast<Search*>(parameter);
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        wanted->found = wanted->found || owner == wanted->process;
        return TRUE;
    };
    EnumWindows(look, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace

TEST_F(CommandProcessTest, TheTimerOfTheWindowPollsUntilTheEnd) {
    ASSERT_TRUE(Run("say one\\r\\n\n" + scripts.WaitFor("go") + "say two"));
    EXPECT_TRUE(DispatchUntil([&] { return document.Text() == u"one\n"; }));
    EXPECT_TRUE(IsRunning());
    scripts.Give("go");
    EXPECT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), u"one\ntwo");
}

TEST_F(CommandProcessTest, TwoDocumentsArePolledEachOnItsOwn) {
    TextDocument other;
    ASSERT_TRUE(Run("say one\n" + scripts.WaitFor("go")));
    ASSERT_TRUE(other->RunCommand(scripts.Command("say other\n").c_str(), nullptr));
    bool running = true;
    EXPECT_TRUE(DispatchUntil([&] { return other->GetOutputState(running) && !running; }));
    EXPECT_EQ(other.Text(), u"other");
    EXPECT_TRUE(IsRunning());
    scripts.Give("go");
    EXPECT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), u"one");
}

TEST_F(CommandProcessTest, ATickThatWasQueuedBeforeTheDocumentWentIsPassedOver) {
    auto gone = std::make_unique<TextDocument>();
    ASSERT_TRUE((*gone)->RunCommand(scripts.Command("say text\n").c_str(), nullptr));
    MSG tick = {};
    ASSERT_TRUE(SpeakerScripts::Eventually([&] { return PeekMessageW(&tick, window, WM_TIMER, WM_TIMER, PM_REMOVE); }));
    EXPECT_EQ(tick.wParam, reinterpret_cast<WPARAM>(&**gone)) << "the timer is known by its document";
    gone.reset();
    DispatchMessageW(&tick);
    EXPECT_FALSE(PeekMessageW(&tick, window, WM_TIMER, WM_TIMER, PM_REMOVE));
}

TEST_F(CommandProcessTest, OnlyTheHandlesOfTheOutputAreInherited) {
    SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
    const KernelHandle ours(CreateEventW(&inheritable, TRUE, FALSE, nullptr));
    const auto number = reinterpret_cast<uintptr_t>(ours.Get());
    ASSERT_TRUE(Run("probe " + std::to_string(number) + "\n"));
    ASSERT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), u"closed\n");
}

TEST_F(CommandProcessTest, LaterProcessesDoNotInheritTheOutput) {
    ASSERT_TRUE(Run(scripts.WaitFor("go")));
    for (const intptr_t handle : {State().outputRead, State().outputWrite}) {
        DWORD flags = HANDLE_FLAG_INHERIT;
        EXPECT_TRUE(GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags));
        EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0u);
    }
}

TEST_F(CommandProcessTest, TheFileIsInTheTemporaryFolderAndGoesWithTheRun) {
    const TemporaryFolder temporary;
    ASSERT_TRUE(Run(scripts.WaitFor("go") + "say text"));
    const std::vector<std::wstring> names = temporary.Names();
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(_wcsnicmp(names[0].c_str(), L"Orv", 3), 0) << "the system takes three letters of a prefix";
    EXPECT_EQ(LetIn(temporary.Path() + L"\\" + names[0]), "user");
    scripts.Give("go");
    ASSERT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), u"text");
    EXPECT_TRUE(SpeakerScripts::Eventually([&] { return temporary.Names().empty(); }));
}

TEST_F(CommandProcessTest, NamesThatAreTakenAreNotTouched) {
    const TemporaryFolder temporary;
    for (UINT number = 1; number <= 300; ++number) {
        wchar_t name[MAX_PATH];
        ASSERT_TRUE(GetTempFileNameW(temporary.Path().c_str(), L"Orvane", number * 200, name));
        const KernelHandle file(CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr));
        ASSERT_TRUE(file.IsValid());
    }
    std::vector<std::unique_ptr<TextDocument>> runs;
    for (int i = 0; i < 20; ++i) {
        runs.push_back(std::make_unique<TextDocument>());
        ASSERT_TRUE((*runs.back())->RunCommand(scripts.Command(scripts.WaitFor("go")).c_str(), nullptr));
        EXPECT_EQ(temporary.Names().size(), 301u + runs.size() - 1);
    }
    runs.clear();
    scripts.Give("go");
    EXPECT_TRUE(SpeakerScripts::Eventually([&] { return temporary.Names().size() == 300; }));
}

TEST_F(CommandProcessTest, WithoutATemporaryFolderTheStartFails) {
    const Environment tmp(L"TMP", L"Z:\\nowhere at all");
    const Environment temp(L"TEMP", L"Z:\\nowhere at all");
    EXPECT_FALSE(Run("say text"));
    EXPECT_FALSE(IsRunning());
    EXPECT_FALSE(document->IsOutput());
    EXPECT_EQ(State().outputWrite, -1);
}

TEST_F(CommandProcessTest, AFolderThatRefusesEveryNameFailsTheStart) {
    const Environment tmp(L"TMP", L"Z:\\proc");
    const Environment temp(L"TEMP", L"Z:\\proc");
    EXPECT_FALSE(Run("say text"));
    EXPECT_FALSE(IsRunning());
    EXPECT_EQ(State().outputWrite, -1);
}

TEST_F(CommandProcessTest, WithoutATimerTheStartFails) {
    const HWND gone = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    DestroyWindow(gone);
    polled.timer.SetWindow(gone);
    EXPECT_FALSE(Run("say text"));
    EXPECT_FALSE(IsRunning());
    EXPECT_EQ(State().outputWrite, -1);
    polled.timer.SetWindow(window);
    ASSERT_TRUE(Run("say text"));
    EXPECT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), u"text");
}

TEST_F(CommandProcessTest, ACommandStartsHidden) {
    // The command is the interpreter itself: what it starts is started its own way.
    const Environment comspec(L"COMSPEC", reinterpret_cast<const wchar_t*>(SpeakerScripts::Program().c_str()));
    scripts.Folder().Write("script", "startup " + scripts.File("told") + "\n");
    const Environment script(L"SPEAKER_SCRIPT", scripts.Folder().File("script").wstring().c_str());
    ASSERT_TRUE(document->RunCommand(u"anything", nullptr));
    ASSERT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(scripts.Folder().Read("told"), "hidden");
}

TEST_F(CommandProcessTest, WithoutAnInterpreterTheStartFails) {
    for (const wchar_t* interpreter :
         {static_cast<const wchar_t*>(nullptr), L"", L"Z:\\nowhere\\at all.exe", L"\x01"}) {
        const Environment comspec(L"COMSPEC", interpreter);
        EXPECT_FALSE(Run("say text"));
        EXPECT_FALSE(IsRunning());
        EXPECT_EQ(State().outputWrite, -1);
    }
    EXPECT_TRUE(Run("say text"));
    EXPECT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), u"text");
}

TEST_F(CommandProcessTest, StoppingAsksTheWindowsOfTheProcessToClose) {
    // The command is the interpreter itself, since windows of its children are not asked.
    const Environment comspec(L"COMSPEC", reinterpret_cast<const wchar_t*>(SpeakerScripts::Program().c_str()));
    scripts.Folder().Write("window", "say open\nwindow Speaker Of The Test\nsay closed\n");
    const Environment script(L"SPEAKER_SCRIPT", scripts.Folder().File("window").wstring().c_str());
    ASSERT_TRUE(document->RunCommand(u"anything", nullptr));
    ASSERT_TRUE(DispatchUntil([] { return FindWindowW(nullptr, L"Speaker Of The Test") != nullptr; }));
    EXPECT_TRUE(IsRunning());
    document->StopProcess();
    EXPECT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), u"openclosed");
}

TEST_F(CommandProcessTest, StoppingLeavesACommandWithoutWindowsAlone) {
    const WithoutConsole processes;
    // The command is the interpreter itself: a child would get a console of its own.
    const Environment comspec(L"COMSPEC", reinterpret_cast<const wchar_t*>(SpeakerScripts::Program().c_str()));
    scripts.Folder().Write("quiet", scripts.Tell("started") + scripts.WaitFor("go") + "say text");
    const Environment script(L"SPEAKER_SCRIPT", scripts.Folder().File("quiet").wstring().c_str());
    ASSERT_TRUE(document->RunCommand(u"anything", nullptr));
    ASSERT_TRUE(scripts.Got("started"));
    ASSERT_FALSE(HasWindow(State().processId));
    document->StopProcess();
    MSG message;
    EXPECT_FALSE(PeekMessageW(&message, nullptr, WM_CLOSE, WM_CLOSE, PM_REMOVE)) << "windows of another process";
    EXPECT_FALSE(CommandProcess::HasEnded(State()));
    scripts.Give("go");
    EXPECT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), u"text");
}

TEST_F(CommandProcessTest, AHiddenConsoleOfTheCommandIsAskedToCloseWhereItIsAWindow) {
    ASSERT_TRUE(Run(scripts.Tell("started") + scripts.WaitFor("go") + "say text"));
    ASSERT_TRUE(scripts.Got("started"));
    const bool hasConsole = HasWindow(State().processId); // as on Windows, but not under Wine
    document->StopProcess();
    if (!hasConsole) {
        EXPECT_FALSE(CommandProcess::HasEnded(State()));
        scripts.Give("go");
    }
    EXPECT_TRUE(DispatchToTheEnd());
    EXPECT_EQ(document.Text(), hasConsole ? u"" : u"text");
}
