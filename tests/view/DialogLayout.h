#pragma once

#include "base/win32/Windows.h"
#include "view/CallCounter.h"

#include <string>
#include <utility>
#include <vector>

// How a dialog's controls are placed to each other, whatever the resolution of the screen.
namespace dialog {

// Expects every visible control inside of `window`, none upon another (a page counts for its controls, and
// a frame holds those in it), and the text of every label, check box and button shown in full.
void ExpectCleanLayout(HWND window);

// Expects the dialog in the middle of its parent's client area, by client sizes.
void ExpectCentred(HWND window, HWND parent);

constexpr int FontPoints = 9; // of every dialog

// While one lives, the program's dialogs are made as on a screen of `dpi` dots to the inch, with their font in
// `points` of 96 dots to the inch: the size that FontPoints have there is FontPoints * dpi / 96. One at a time.
class Scaled {
public:
    Scaled(int dpi, int points);

private:
    ReplacedImport modal;
    ReplacedImport modeless;
    ReplacedImport density;
};

// The font that a dialog's resource asks for: its name and its points.
std::pair<std::wstring, int> FontOf(WORD resource);

// The name by which screen readers call a control: its own text, or that of the label before it. Empty for none.
std::wstring NameOf(HWND control);

// The controls that the Tab key visits from the first one on, by identifier, until it is back at the first.
std::vector<int> TabOrder(HWND window);

// The letters that, with Alt, lead to the controls shown, pages included; sorted.
std::wstring Mnemonics(HWND window);

} // namespace dialog
