#pragma once

#include "base/Types.h"

class TextEditor;

// Characters typed into a text view that shows a document, and single deletions. An edit that is refused, by a
// read-only document or because there is nothing to delete, changes nothing on screen either.
namespace EditorTyping {

// Types a character over the selection: TextBuffer::TypeChar takes it for the line of the caret, which is scrolled into
// view and opened before. What is no text, and anything with Ctrl held, is ignored, save a character typed with Ctrl
// and Alt when the additional setting AltGr is on.
void Type(TextEditor& editor, Char character);
// The two halves of a character, in one step: all of it or nothing.
void TypePair(TextEditor& editor, Char first, Char second);
// Deletes the selection; without one (and for `word` in any case) the character at the caret or up to
// the end of the word, which at the end of a line is the line feed.
void DeleteForward(TextEditor& editor, bool word);
// Likewise before the caret: one character, the spaces back to the last tab stop, or back to the start
// of the word.
void DeleteBack(TextEditor& editor, bool word);

} // namespace EditorTyping
