#pragma once

#include "base/Types.h"

class TextEditor;

// Jumps of the caret of a text view that shows a document.
namespace EditorNavigation {

void SelectAll(TextEditor& editor);
void SelectWord(TextEditor& editor, bool evenIfEmpty);
// The next or previous bookmark, around the ends of the document.
void GoToBookmark(TextEditor& editor, bool backward);
// Onto the bracket that balances the one at the caret.
void GoToPartner(TextEditor& editor, bool extend);
// Opens the file that the caret line names.
void OpenNamedFile(TextEditor& editor);

} // namespace EditorNavigation
