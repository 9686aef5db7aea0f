#pragma once

#include "base/Types.h"

class HexEditor;

// Digits typed into a hex view that shows a document.
namespace HexTyping {

// Overwrites the caret's nibble and moves on to the next one. Anything but a hex digit is ignored.
void Type(HexEditor& editor, Char character);

} // namespace HexTyping
