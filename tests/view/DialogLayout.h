#pragma once

#include "base/win32/Windows.h"

#include <string>
#include <vector>

// How a dialog's controls stand to each other, whatever the resolution of the screen.
namespace dialog {

// Expects every visible control inside of `window`, none upon another (a page stands in for its controls, and
// a frame holds those in it), and the text of every label, check box and button shown in full.
void ExpectCleanLayout(HWND window);

// The controls that the Tab key visits from the first one on, by identifier, until it is back at the first.
std::vector<int> TabOrder(HWND window);

// The letters that, with Alt, lead to the controls shown, pages included; sorted.
std::wstring Mnemonics(HWND window);

} // namespace dialog
