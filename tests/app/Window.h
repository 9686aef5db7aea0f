#pragma once

#include "base/win32/Windows.h"

#include <functional>
#include <string>
#include <vector>

// Windows of another process, looked at from outside.
namespace window {

// Asks again and again until `condition` holds; false when it does not within the deadline.
bool WaitFor(const std::function<bool()>& condition, DWORD milliseconds = 15000);

std::wstring ClassOf(HWND window);
// The window's text; of a child window, what it answers to WM_GETTEXT. Empty when it does not answer.
std::wstring TextOf(HWND window);

// Visible top-level windows of a process.
std::vector<HWND> TopLevel(DWORD process);
// All windows below `parent`, of the class when one is given, in the order of the system.
std::vector<HWND> Children(HWND parent, const wchar_t* className = nullptr);

// The first window below `parent` with this control number; null when there is none.
HWND Control(HWND parent, int number);

// Text and drawing type of a part of a status bar of another process.
struct StatusPart {
    std::wstring text;
    WORD drawing = 0; // SBT_ bits
};
StatusPart ReadStatusPart(HWND statusBar, int part);

// The texts of a dialog or message box: its static controls, one after the other, separated by line feeds.
std::wstring DialogText(HWND dialog);
// Presses the button with this text (mnemonic marks left out of both); false when there is none.
bool PressButton(HWND dialog, const std::wstring& text);

} // namespace window
