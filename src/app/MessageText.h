#pragma once

#include "base/WString.h"

// The text of a message box for a message that may hold names of any length. A box breaks its lines at blanks
// only and grows with its text beyond the screen: words longer than a line are broken, and of more lines than a
// screen holds the middle is left out. Any other message stays as it is. False without memory.
constexpr uint32_t MaxMessageWord = 100;
constexpr uint32_t MaxMessageLines = 30;

[[nodiscard]] bool BuildMessageText(const Char* message, WString& out);
