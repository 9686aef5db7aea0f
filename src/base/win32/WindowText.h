#pragma once

#include "base/WString.h"
#include "base/win32/Windows.h"

// Fills `out` with the text of a window or control. False, and `out` as it was, when memory runs out.
[[nodiscard]] bool TextOfWindow(HWND window, WString& out);
