#pragma once

#include "base/win32/Windows.h"

class TextEditor;
class View;

// The modal dialogs of searching; they work on `findState`.
namespace FindDialogs {

// For any view: searching goes through View::FindNext. `hexPattern` offers "Match Hex Pattern".
void ShowFind(HWND owner, View& view, bool hexPattern = false);
void ShowReplace(HWND owner, TextEditor& editor, bool multiLineSelection);
void ShowGoTo(HWND owner, TextEditor& editor);

} // namespace FindDialogs
