#pragma once

#include "base/Types.h"

class TextEditor;

// Find and replace in a text view; the texts and options are those of `findState`.
namespace EditorFind {

// Takes a selection within one line as the search text. False when there was none.
bool TakeTextFromSelection(TextEditor& editor);
void ShowFind(TextEditor& editor);
void ShowReplace(TextEditor& editor);
// Searches for the selection or the word at the caret.
void QuickSearch(TextEditor& editor, bool backward);

// Selects the next match. False without one.
bool FindNext(TextEditor& editor, bool backward);
// False when nothing was replaced: there is no selection, the document is read-only, or memory ran out.
[[nodiscard]] bool ReplaceSelection(TextEditor& editor, const Char* text, uint32_t length);
// Returns false when it changed nothing although something was to be replaced; the user knows why.
bool ReplaceAll(TextEditor& editor, const Char* replacement, uint32_t length, bool inSelection);

} // namespace EditorFind
