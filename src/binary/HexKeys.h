#pragma once

#include "base/Types.h"

class HexEditor;

// The keys of a hex view that shows a document.
namespace HexKeys {

// Does what a key, a virtual-key code, is bound to, with Ctrl and Shift as they are held now. Digits come as
// characters.
void Press(HexEditor& editor, uint32_t key);

} // namespace HexKeys
