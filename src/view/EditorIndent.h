#pragma once

#include "base/Types.h"

class TextEditor;

// Indenting blocks of lines in a text view that shows a document.
namespace EditorIndent {

// Adds a unit of indentation to the lines from the selection's start up to, not including, the line of
// its end, or takes it away.
void IndentBlock(TextEditor& editor, bool unindent);

} // namespace EditorIndent
