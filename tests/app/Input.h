#pragma once

#include <string>

// The keyboard, as a user strikes it. The keys go to whatever window has the focus.
namespace input {

// Strikes keys named as in menus, separated by blanks: L"Ctrl+Shift+Home Delete F3". Names: the letters
// and digits, F1 to F12, Enter Escape Tab Space Backspace Insert Delete Home End PageUp PageDown
// Left Right Up Down Break. A name of its own with a leading "+" (L"+Ctrl") presses only, with a
// leading "-" (L"-Ctrl") releases only. False for an unknown name.
bool Keys(const std::wstring& keys);

// Types a text: keys of the keyboard layout where it has them, else as Unicode input. A line feed is
// the Enter key, a tab the Tab key.
void Type(const std::wstring& text);

} // namespace input
