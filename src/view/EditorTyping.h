#pragma once

#include "base/Types.h"

class TextEditor;

// Where a typed character comes from.
enum class TypedBy : uint32_t { Keys, InputMethod };

// Characters typed into a text view that shows a document, and single deletions. An edit that is refused, by a
// read-only document or because there is nothing to delete, changes nothing on screen either.
namespace EditorTyping {

// Types a character: the selection is deleted, as a step of undo of its own; then the line of the caret is scrolled
// into view and opened, and TextBuffer::TypeChar takes the character. A tab over a selection of several lines indents
// these instead, and Enter in output opens the file that the line names. What is no text is ignored; so is what keys
// make with Ctrl held, save a character typed with Ctrl and Alt when the additional setting AltGr is on.
void Type(TextEditor& editor, Char character, TypedBy source);
// The two halves of a character, in one step: both or none. The selection is deleted before, as by Type.
void TypePair(TextEditor& editor, Char first, Char second, TypedBy source);
// Deletes the selection; without one (and for `word` in any case) the character at the caret or up to
// the end of the word, which at the end of a line is the line feed.
void DeleteForward(TextEditor& editor, bool word);
// Likewise before the caret: one character, the spaces back to the last tab stop, or back to the start
// of the word.
void DeleteBack(TextEditor& editor, bool word);

} // namespace EditorTyping
