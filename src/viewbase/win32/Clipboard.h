#pragma once

#include "base/WString.h"
#include "base/win32/Windows.h"
#include "viewbase/EditorSurface.h"

namespace Clipboard {

// Marks text as a copied whole line: orvane_singleline, which has the same number each time in a session. 0 when the
// system refuses.
UINT WholeLineFormat();

// Reads Unicode text, up to its first NUL or the end of the block that another program put there,
// whichever comes first. False without text, without memory or when the clipboard cannot be opened.
[[nodiscard]] bool Read(HWND owner, WString& text, bool& wholeLine);

// Empties the clipboard and puts the formats on it in one opening. False when the system refused to
// take a block; failing to open or empty the clipboard copies nothing and is no failure.
[[nodiscard]] bool Write(HWND owner, const ClipboardItem* items, uint32_t count);

} // namespace Clipboard
