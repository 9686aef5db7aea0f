#include "app/Editor.h"

#include "app/Files.h"
#include "app/Input.h"
#include "app/RemoteCall.h"

#include <cstdio>

Editor::~Editor() {
    if (!process) return;
    if (IsRunning()) {
        TerminateProcess(process, 99);
        WaitForSingleObject(process, 10000);
    }
    CloseHandle(process);
}

bool Editor::Start(const std::wstring& arguments, const std::wstring& directory) {
    std::wstring commandLine = L"\"" + files::ProgramPath() + L"\" " + arguments;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr,
                        directory.c_str(), &startup, &started)) {
        fwprintf(stderr, L"not started, error %lu: %ls\n", GetLastError(), commandLine.c_str());
        return false;
    }
    process = started.hProcess;
    processId = started.dwProcessId;
    threadId = started.dwThreadId;
    if (!AddWaitingThread(process)) fwprintf(stderr, L"no waiting thread: %ls\n", commandLine.c_str());
    ResumeThread(started.hThread);
    CloseHandle(started.hThread);
    window::WaitFor([this] {
        for (const HWND found : window::TopLevel(processId))
            if (window::ClassOf(found) == L"OrvaneMain") main = found;
        return main || !IsRunning();
    });
    DWORD code = 0;
    if (!main && GetExitCodeProcess(process, &code))
        fwprintf(stderr, L"no main window, exit code 0x%lX: %ls\n", code, commandLine.c_str());
    return main != nullptr;
}

bool Editor::IsRunning() const { return WaitForSingleObject(process, 0) == WAIT_TIMEOUT; }

bool Editor::WaitForEnd(DWORD& exitCode) const {
    return WaitForSingleObject(process, 15000) == WAIT_OBJECT_0 && GetExitCodeProcess(process, &exitCode);
}

std::wstring Editor::Title() const { return window::TextOf(main); }

bool Editor::WaitForTitle(const std::wstring& title) const {
    return window::WaitFor([&] { return Title() == title; });
}

window::StatusPart Editor::Status(int part) const {
    const std::vector<HWND> bars = window::Children(main, STATUSCLASSNAMEW);
    return bars.empty() ? window::StatusPart() : window::ReadStatusPart(bars[0], part);
}

bool Editor::WaitForStatus(int part, const std::wstring& text) const {
    return window::WaitFor([&] { return Status(part).text == text; });
}

std::vector<HWND> Editor::Panes() const { return window::Children(main, L"OrvaneVWnd"); }

HWND Editor::CommandWindow() const {
    for (const HWND child : window::Children(main, L"Edit"))
        if (IsWindowVisible(child)) return child;
    return nullptr;
}

bool Editor::WaitForCommandText(const std::wstring& text) const {
    return window::WaitFor([&] { return CommandWindow() && window::TextOf(CommandWindow()) == text; });
}

// A message that is sent overtakes those that are posted. So one is posted of which something can be seen, and of
// which the editor knows nothing: a flag of its command window.
bool Editor::Settle() const {
    const std::vector<HWND> edits = window::Children(main, L"Edit");
    if (edits.empty()) return false;
    const auto flag = [&] {
        DWORD_PTR answer = 2;
        SendMessageTimeoutW(edits[0], EM_GETMODIFY, 0, 0, SMTO_ABORTIFHUNG, 15000, &answer);
        return answer;
    };
    const DWORD_PTR after = flag() == 0;
    PostMessageW(edits[0], EM_SETMODIFY, after, 0);
    return window::WaitFor([&] { return !IsRunning() || flag() == after; }) && IsRunning();
}

bool Editor::RunCommandLine(const std::wstring& line) {
    // The command before this one may have ended with a message, and is only about to hide the window.
    if (CommandWindow() && !Settle()) return false;
    if (!CommandWindow() && !Keys(L"Alt+C")) return false;
    if (!window::WaitFor([this] { return CommandWindow() && Focus() == CommandWindow(); })) return false;
    // The text is typed, not set, since only typed text enters the history.
    if (!Keys(L"Home Shift+End Delete") || !Type(line)) return false;
    return WaitForCommandText(line) && Keys(L"Enter") && WaitForEntered();
}

// The window is hidden, or its whole text selected, when the command has been carried out; a command that asks
// something waits for the answer. What is typed has the caret after it.
bool Editor::WaitForEntered() const {
    return window::WaitFor([this] {
        const HWND edit = CommandWindow();
        if (!edit || Dialog()) return true;
        DWORD_PTR selection = 0;
        SendMessageTimeoutW(edit, EM_GETSEL, 0, 0, SMTO_ABORTIFHUNG, 5000, &selection);
        return LOWORD(selection) == 0 && HIWORD(selection) == window::TextOf(edit).size();
    });
}

HWND Editor::Dialog() const {
    for (const HWND found : window::TopLevel(processId))
        if (window::ClassOf(found) == L"#32770" && IsWindowEnabled(found)) return found;
    return nullptr;
}

HWND Editor::WaitForDialog() const {
    window::WaitFor([this] { return Dialog() != nullptr; });
    return Dialog();
}

bool Editor::WaitForNoDialog() const {
    return window::WaitFor([this] { return Dialog() == nullptr; });
}

bool Editor::Answer(const std::wstring& question, const std::wstring& button) {
    HWND box = nullptr;
    const bool asked = window::WaitFor([&] {
        box = Dialog();
        return box && window::DialogText(box) == question;
    });
    return asked && window::PressButton(box, button) && window::WaitFor([&] { return !IsWindow(box); });
}

HWND Editor::Focus() const {
    DWORD owner = 0;
    GetWindowThreadProcessId(GetForegroundWindow(), &owner);
    if (owner != processId) return nullptr;
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(threadId, &info) ? info.hwndFocus : nullptr;
}

// A dialog is seen a moment before it gets the focus, and gone a moment before it gives it back.
bool Editor::TakeFocus() const {
    return window::WaitFor([this] {
        const HWND dialog = Dialog();
        const HWND front = dialog ? dialog : main;
        const HWND focus = Focus();
        if (focus == front || IsChild(front, focus)) return true;
        DWORD owner = 0;
        GetWindowThreadProcessId(GetForegroundWindow(), &owner);
        if (owner != processId) SetForegroundWindow(front);
        return false;
    });
}

bool Editor::Keys(const std::wstring& keys) { return TakeFocus() && input::Keys(keys); }

bool Editor::Type(const std::wstring& text) {
    if (!TakeFocus()) return false;
    input::Type(text);
    return true;
}
