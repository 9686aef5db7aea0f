#pragma once

#include "app/FrameTest.h"

#include <memory>

// A test of commands and tools. They are scripts of the program tests/program/Speaker.cpp in the test's folder,
// where the editor runs; a command names the program %SPEAK%, which the interpreter knows.
class RunTest : public FrameTest {
protected:
    void SetUp() override;
    void TearDown() override;

    // An environment variable of the editors that are started from now on; null removes it.
    void SetEnvironment(const wchar_t* name, const wchar_t* value);
    void Script(const std::wstring& name, const std::string& text) const;
    // The command that carries out a script of the folder.
    static std::wstring Speak(const std::wstring& script) { return L"%SPEAK% " + script; }
    static std::wstring SpeakerPath();

    // Lets a script go on that waits for this file.
    void Give(const std::wstring& signal) const { files::Write(Path(signal), ""); }
    bool Got(const std::wstring& signal) const {
        return window::WaitFor([&] { return files::Exists(Path(signal)); });
    }
    // The titles of an output document that is active, while its command runs and afterwards.
    bool WaitForRunning(const std::wstring& name) const { return editor.WaitForTitle(name + L" *Running* - Orvane"); }
    bool WaitForFinished(const std::wstring& name) const { return editor.WaitForTitle(name + L" - Orvane"); }
    // Runs the script from the command window and waits for its end.
    bool RunToTheEnd(const std::wstring& script) {
        return editor.RunCommandLine(Speak(script)) && WaitForFinished(Speak(script));
    }
    // Gives a command of the console, which leaves the command window open, and hides that.
    bool RunInConsole(const std::wstring& command) { return editor.RunCommandLine(command) && LeaveTheCommandWindow(); }
    // Shows the first document again, which is a.txt.
    bool ReturnToFile() { return editor.Keys(L"Ctrl+1") && WaitForFile(L"a.txt"); }
    // The whole text of the active document, by way of the clipboard.
    std::wstring Text();
    bool WaitForText(const std::wstring& text) {
        return window::WaitFor([&] { return Text() == text; });
    }
    bool WaitForLine(int line) const { return editor.WaitForStatus(2, L"\tLn " + std::to_wstring(line)); }

    // Where the caret is in the pane that has it; empty without one.
    RECT Caret() const;
    // Waits until the caret is on that row of its pane, the first of which is 0.
    bool WaitForCaretRow(int row) const;

    // Hides the command window, which stays open in the console.
    bool LeaveTheCommandWindow();

private:
    struct Variable {
        std::wstring name;
        std::wstring value;
        bool existed;
    };
    std::vector<Variable> before;
};

// The same with the settings that come with the program.
class ShippedSettingsTest : public RunTest {
protected:
    void SetUp() override;
};
