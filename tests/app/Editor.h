#pragma once

#include "app/Window.h"

#include <string>
#include <vector>

// A running editor, driven from outside as a user would. Every operation that waits gives up after
// window::WaitFor's deadline and reports that by its result.
class Editor {
public:
    Editor() = default;
    // Ends the process, whatever state it is in.
    ~Editor();
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    // Starts the program (environment variable ORVANE_EXE, else orvane.exe beside the tests) with the
    // text as the rest of its command line and waits for its main window.
    bool Start(const std::wstring& arguments, const std::wstring& directory);

    HWND Main() const { return main; }
    DWORD Process() const { return processId; }
    bool IsRunning() const;
    // Waits for the end of the process.
    bool WaitForEnd(DWORD& exitCode) const;
    // Posts the ordinary close request.
    void Close() const { PostMessageW(main, WM_CLOSE, 0, 0); }

    std::wstring Title() const;
    bool WaitForTitle(const std::wstring& title) const;
    // Status-bar part 0 to 4, counted from the left.
    window::StatusPart Status(int part) const;
    bool WaitForStatus(int part, const std::wstring& text) const;

    // The visible panes in creation order of the system.
    std::vector<HWND> Panes() const;
    // The command window when it is shown, else null.
    HWND CommandWindow() const;
    bool WaitForCommandText(const std::wstring& text) const;
    // Shows the command window, replaces its text, presses Enter and waits until the command is carried out or
    // asks something.
    bool RunCommandLine(const std::wstring& line);

    // The dialog or message box that is shown, else null.
    HWND Dialog() const;
    HWND WaitForDialog() const;
    bool WaitForNoDialog() const;
    // Waits for a message box with exactly this text and presses the button.
    bool Answer(const std::wstring& question, const std::wstring& button);

    // Brings the editor to the front, waits until its dialog, or else its main window, has the keyboard
    // focus, itself or in a child, and strikes the keys (see input::Keys) or types the text.
    bool Keys(const std::wstring& keys);
    bool Type(const std::wstring& text);
    // The window of the editor that has the keyboard focus, else null.
    HWND Focus() const;

    // Waits until the editor has done everything posted before. False as soon as it has ended.
    bool Settle() const;
    // A menu command, as if chosen.
    void Command(UINT command) const { PostMessageW(main, WM_COMMAND, command, 0); }

private:
    bool TakeFocus() const;
    bool WaitForEntered() const;

    HANDLE process = nullptr;
    DWORD processId = 0;
    DWORD threadId = 0;
    HWND main = nullptr;
};
