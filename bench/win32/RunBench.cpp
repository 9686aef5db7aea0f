// What a command's output costs until it is all in its document, against the same command printing into a
// file; and how long the window takes to answer meanwhile. These times are what a user waits, not what
// the processor does.
//
// Called with a word it is that command itself:
//     RunBench lines|blocks|endless|silence
// It prints 100 MB line by line, in large blocks or as a single line, or nothing; tells that it has; and waits
// until it may end.
#include "../tests/support/PolledWindow.h"
#include "../tests/support/TestServices.h"
#include "Ratio.h"
#include "base/win32/Handles.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "settings/win32/DrawingObjects.h"
#include "syntax/EngineDefinition.h"
#include "view/win32/TextView.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>

namespace {

constexpr size_t Megabytes = 100;
constexpr char Line[] = "src/module/part.cpp(1234): note: 64 bytes of what a compiler says.\n";
constexpr size_t LineLength = sizeof(Line) - 1;
constexpr size_t Lines = (Megabytes << 20) / LineLength;
constexpr size_t BlockSize = size_t{1} << 16;

// Named, for both processes.
HANDLE Event(const wchar_t* name) { return CreateEventW(nullptr, FALSE, FALSE, name); }
HANDLE Printed() { return Event(L"Orvane bench: printed"); }
HANDLE MayEnd() { return Event(L"Orvane bench: may end"); }

int Print(const std::string& how) {
    if (how == "lines")
        for (size_t i = 0; i < Lines; ++i) std::fputs(Line, stdout);
    std::string block(BlockSize, 'x');
    if (how == "blocks")
        for (size_t at = LineLength; at <= BlockSize; at += LineLength) block[at - 1] = '\n';
    if (how == "blocks" || how == "endless")
        for (size_t i = 0; i < (Megabytes << 20) / BlockSize; ++i) std::fwrite(block.data(), 1, BlockSize, stdout);
    std::fflush(stdout);
    SetEvent(Printed());
    WaitForSingleObject(MayEnd(), 60'000);
    return 0;
}

uint32_t ExpectedLength(const std::wstring& how) {
    if (how == L"silence") return 0;
    return static_cast<uint32_t>(how == L"lines" ? Lines * LineLength : Megabytes << 20);
}

double Now() {
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(time).count();
}

std::wstring Command(const wchar_t* how) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::wstring(L"\"") + path + L"\" " + how;
}

// The time until the command, under the interpreter as in a run, has printed everything.
double PrintIntoFile(const wchar_t* how) {
    const KernelHandle printed(Printed());
    const KernelHandle mayEnd(MayEnd());
    wchar_t folder[MAX_PATH];
    wchar_t name[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"run", 0, name);
    SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
    const KernelHandle file(CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        &inheritable, CREATE_ALWAYS, FILE_FLAG_DELETE_ON_CLOSE, nullptr));
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
    startup.hStdInput = startup.hStdOutput = startup.hStdError = file.Get();
    wchar_t interpreter[MAX_PATH];
    GetEnvironmentVariableW(L"COMSPEC", interpreter, MAX_PATH);
    std::wstring line = interpreter + (L" /c " + Command(how));
    PROCESS_INFORMATION started = {};
    const double start = Now();
    Bench::Check(CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NEW_PROCESS_GROUP, nullptr,
                                nullptr, &startup, &started),
                 "the command starts");
    const KernelHandle thread(started.hThread);
    const KernelHandle process(started.hProcess);
    WaitForSingleObject(printed.Get(), INFINITE);
    const double time = Now() - start;
    SetEvent(mayEnd.Get());
    WaitForSingleObject(process.Get(), INFINITE);
    return time;
}

// A document in a window of its own, as a command finds it.
class Stage {
public:
    Stage() {
        const HINSTANCE instance = GetModuleHandleW(nullptr);
        frame = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 900, 700, nullptr, nullptr,
                                instance, nullptr);
        polled = std::make_unique<PolledWindow>(frame);
        textServices.timer = &polled->timer;
        document = new TextBuffer(textServices);
        document->AddRef();
        static_cast<void>(document->MakeEmpty());
        document->ResetSyntaxEngine();
        view = static_cast<TextDocumentView*>(document->CreateView(frame));
        Bench::Check(view != nullptr, "the view");
        SetForegroundWindow(frame);
        SetFocus(view->AsView()->GetWindow());
    }
    ~Stage() {
        if (IsRunning()) document->EndRun();
        document->Release();
        DestroyWindow(frame);
    }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    bool IsRunning() const {
        bool running = false;
        return document->GetOutputState(running) && running;
    }
    void Start(const wchar_t* how) {
        const std::wstring command = Command(how);
        Bench::Check(document->RunCommand(reinterpret_cast<const Char*>(command.c_str()), nullptr), "the run starts");
    }
    // The time until everything is in the document.
    double Show(const wchar_t* how) {
        const double start = Now();
        Start(how);
        DispatchWhile([&] { return document->Length() < ExpectedLength(how); });
        const double time = Now() - start;
        Bench::Check(view->CaretLine() == document->GetLineCount() - 1, "the caret followed");
        return time;
    }
    void End() {
        WaitForSingleObject(printed.Get(), INFINITE);
        SetEvent(mayEnd.Get());
        DispatchWhile([&] { return IsRunning(); });
    }
    template <class Condition> static void DispatchWhile(Condition condition) {
        MSG message;
        while (condition() && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    }

    const KernelHandle printed{Printed()};
    const KernelHandle mayEnd{MayEnd()};
    HWND frame;
    std::unique_ptr<PolledWindow> polled;
    TextBuffer* document;
    TextDocumentView* view;
};

// Asks a window of this thread again and again for an answer, as the system does, and keeps the longest wait.
class Ping {
public:
    explicit Ping(HWND asked) : window(asked), thread([this] { Ask(); }) {}
    // Only here: while it asks, this thread has to answer.
    ~Ping() {
        stopped = true;
        MSG message;
        while (!ended) PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
        thread.join();
    }
    Ping(const Ping&) = delete;
    Ping& operator=(const Ping&) = delete;

    double LongestWait() const { return longest; }

private:
    void Ask() {
        while (!stopped) {
            const double start = Now();
            DWORD_PTR answer = 0;
            SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 60'000, &answer);
            longest = std::max(longest.load(), Now() - start);
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        ended = true;
    }

    HWND window;
    std::atomic<double> longest = 0;
    std::atomic<bool> stopped = false;
    std::atomic<bool> ended = false;
    std::thread thread;
};

void CompareWithFile(const wchar_t* how, const std::string& name) {
    double printed = 1e9;
    double shown = 1e9;
    double longest = 0;
    for (int round = 0; round < 3; ++round) {
        printed = std::min(printed, PrintIntoFile(how));
        Stage stage;
        const Ping ping(stage.frame);
        shown = std::min(shown, stage.Show(how));
        stage.End();
        Bench::Check(stage.document->Length() == ExpectedLength(how), "nothing is shown twice");
        longest = std::max(longest, ping.LongestWait());
    }
    std::printf("%s: into a file %.0f ms, into a document %.0f ms, longest wait for an answer %.1f ms\n", name.c_str(),
                printed, shown, longest);
    Bench::Report((name + ": document / file").c_str(), shown / printed, 2.0);
    Bench::Report((name + ": longest wait / 100 ms").c_str(), longest / 100, 1.0);
}

// What has nothing to show must not look at what is there.
void ComparePolls() {
    Stage small;
    Stage large;
    large.Show(L"lines");
    small.Start(L"silence");
    const auto polls = [](const Stage& stage) {
        return [&stage] {
            for (int i = 0; i < 10'000; ++i) stage.document->PollOutput();
        };
    };
    Bench::Compare("poll without news, 100 MB / empty document", polls(large), polls(small), 1.2, 9);
    Bench::Check(small.IsRunning() && large.IsRunning(), "both still ran");
    Stage::DispatchWhile([&] {
        SetEvent(small.mayEnd.Get()); // it lets one of the two go on
        return small.IsRunning() || large.IsRunning();
    });
}

} // namespace

int main(int count, char** words) {
    if (count > 1) return Print(words[1]);
    ViewClass views;
    Bench::Check(views.Register(GetModuleHandleW(nullptr)), "the window class");
    const IniFile file;
    LoadSettings(file);
    LoadEngineDefinitions(file);
    textServices.makeView = TextView::Create;
    CompareWithFile(L"lines", "100 MB in lines");
    CompareWithFile(L"blocks", "100 MB in blocks");
    CompareWithFile(L"endless", "100 MB in one line");
    ComparePolls();
    return Bench::ExitStatus();
}
