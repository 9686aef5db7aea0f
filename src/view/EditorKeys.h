#pragma once

#include "base/Types.h"

class TextEditor;

// The keys of a text view that shows a document.
namespace EditorKeys {

// Does what a key, a virtual-key code, is bound to, with Ctrl and Shift as they are held now. With AltGr held (Ctrl
// and Alt) it is a key without Ctrl.
void Press(TextEditor& editor, uint32_t key);

} // namespace EditorKeys
