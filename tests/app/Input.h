#pragma once

#include "base/win32/Windows.h"

#include <string>

// Keyboard and mouse, as a user works them. The keys go to whatever window has the focus.
namespace input {

// Strikes keys named as in menus, separated by blanks: L"Ctrl+Shift+Home Delete F3". Names: the letters
// and digits, F1 to F12, Enter Escape Tab Space Backspace Insert Delete Home End PageUp PageDown
// Left Right Up Down Break ]. A name of its own with a leading "+" (L"+Ctrl") presses only, with a
// leading "-" (L"-Ctrl") releases only. False for an unknown name.
bool Keys(const std::wstring& keys);

// Types a text: keys of the keyboard layout where it has them, else as Unicode input. A line feed is
// the Enter key, a tab the Tab key.
void Type(const std::wstring& text);

// The mouse. Places are those of the screen.
void MoveMouse(POINT place);
void HoldLeftButton(POINT place);
void ReleaseLeftButton(POINT place);
// Presses and releases a button `times` times, too fast for anything but a double click.
void Click(POINT place, int times = 1);
void RightClick(POINT place);

// Keeps every key stroke that was not sent by a program out of the system while it lives: the user's hands,
// and what Wine sends when a window into which the mouse comes takes over the state of the real keyboard (in
// which no modifier is pressed: in the middle of a chord that would release it).
class OnlyOurs {
public:
    OnlyOurs();
    ~OnlyOurs();
    OnlyOurs(const OnlyOurs&) = delete;
    OnlyOurs& operator=(const OnlyOurs&) = delete;

private:
    void* thread = nullptr;
    DWORD threadId = 0;
};

} // namespace input
