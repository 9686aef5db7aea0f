#pragma once

#include "base/win32/Windows.h"

class TextEditor;

// The modal Go To dialog of a text view.
namespace GoToLineDialog {

// Asks for a 1-based line number and selects that line; 0 moves nothing.
void Show(HWND owner, TextEditor& editor);

} // namespace GoToLineDialog
