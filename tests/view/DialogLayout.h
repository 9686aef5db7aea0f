#pragma once

#include "base/win32/Windows.h"
#include "view/CallCounter.h"

#include <string>
#include <vector>

// How a dialog's controls are placed to each other, whatever the resolution of the screen.
namespace dialog {

// Expects every visible control inside of `window`, none upon another (a page counts for its controls, and
// a frame holds those in it), and the text of every label, check box and button shown in full.
void ExpectCleanLayout(HWND window);

// Expects the dialog in the middle of its parent's client area, by client sizes.
void ExpectCentred(HWND window, HWND parent);

// While one lives, the program's dialogs are made as on a screen of `dpi` dots to the inch, with their font in
// `points` of 96 dots to the inch: the size that 8 points have there is 8 * dpi / 96. One at a time.
class Scaled {
public:
    Scaled(int dpi, int points);

private:
    ReplacedImport modal;
    ReplacedImport modeless;
    ReplacedImport density;
};

// The controls that the Tab key visits from the first one on, by identifier, until it is back at the first.
std::vector<int> TabOrder(HWND window);

// The letters that, with Alt, lead to the controls shown, pages included; sorted.
std::wstring Mnemonics(HWND window);

} // namespace dialog
