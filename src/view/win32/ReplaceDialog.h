#pragma once

#include "base/win32/Windows.h"

class TextEditor;

// The modal Replace dialog of a text view; it works on `findState`.
namespace ReplaceDialog {

// With a selection of several lines only replacing all in it is offered.
void Show(HWND owner, TextEditor& editor, bool multiLineSelection);

} // namespace ReplaceDialog
