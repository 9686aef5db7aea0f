#pragma once

#include "base/Types.h"

class TextEditor;

// What keys, the mouse and commands do in a TextEditor with a document, built on its operations.
namespace EditorActions {

// Deletes the selection; without one (and for `word` in any case) the character at the caret or up to
// the end of the word, which at the end of a line is the line feed.
void DeleteForward(TextEditor& editor, bool word);
// Likewise before the caret: one character, the spaces back to the last tab stop, or back to the start
// of the word.
void DeleteBack(TextEditor& editor, bool word);
// Adds a unit of indentation to the lines from the selection's start up to, not including, the line of
// its end, or takes it away.
void IndentBlock(TextEditor& editor, bool unindent);

void Copy(TextEditor& editor);
void Cut(TextEditor& editor);
void Paste(TextEditor& editor);
// As plain text, rich text and HTML in the colours of the view.
void CopyColoured(TextEditor& editor);
void SelectAll(TextEditor& editor);
void SelectWord(TextEditor& editor, bool evenIfEmpty);

void ShowFind(TextEditor& editor);
void ShowReplace(TextEditor& editor);
// Searches for the selection or the word at the caret.
void QuickSearch(TextEditor& editor, bool backward);

// The next or previous bookmark, around the ends of the document.
void GoToBookmark(TextEditor& editor, bool backward);
// Onto the bracket that balances the one at the caret.
void GoToPartner(TextEditor& editor, bool extend);
// Opens the file that the caret line names.
void OpenNamedFile(TextEditor& editor);

} // namespace EditorActions
