#pragma once

#include "base/Types.h"

class TextEditor;

// Copy, cut and paste of a text view that shows a document.
namespace EditorClipboard {

// Without a selection they take the whole line.
void Copy(TextEditor& editor);
void Cut(TextEditor& editor);
// In the place of the selection; what was taken as a whole line comes before the line of the caret.
void Paste(TextEditor& editor);
// The selection as plain text, rich text and HTML in the colours of the view.
void CopyColoured(TextEditor& editor);

} // namespace EditorClipboard
