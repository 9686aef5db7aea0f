#pragma once

#include "base/Types.h"

class TextEditor;

// Copy, cut and paste of a text view that shows a document. Without a selection they take the whole line.
namespace EditorClipboard {

void Copy(TextEditor& editor);
void Cut(TextEditor& editor);
void Paste(TextEditor& editor);
// The selection as plain text, rich text and HTML in the colours of the view.
void CopyColoured(TextEditor& editor);

} // namespace EditorClipboard
