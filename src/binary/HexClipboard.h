#pragma once

class HexEditor;

// Copying and pasting in a hex view that shows a document.
namespace HexClipboard {

// The selection as hex digits.
void Copy(HexEditor& editor);
// Overwrites bytes at the caret by the hex digits on the clipboard, as many as fit.
void Paste(HexEditor& editor);
bool CanPaste(const HexEditor& editor); // looks at all of the clipboard

} // namespace HexClipboard
