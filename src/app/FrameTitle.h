#pragma once

#include "base/Types.h"
#include "base/WString.h"

class Document;

// Texts of the frame. Each replaces `out`, which is unchanged when memory runs out (false).

// The window title. `active` is the active view's document, null without one.
[[nodiscard]] bool BuildTitle(const Document* active, bool recording, WString& out);

// The message field of the status bar: the current directory and the console mark while the command window is shown.
[[nodiscard]] bool BuildStatusText(bool commandWindowShown, bool console, WString& out);

// The Window menu's item for the document at a 0-based place. An ampersand of the name is doubled, so
// that the menu shows it.
[[nodiscard]] bool BuildWindowItem(uint32_t index, const Document& document, WString& out);

// Shown instead of the list.
inline constexpr Char NoDocumentsItem[] = u"< no open documents >";
