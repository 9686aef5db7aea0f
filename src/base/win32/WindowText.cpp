#include "base/win32/WindowText.h"

#include <utility>

bool TextOfWindow(HWND window, WString& out) {
    const int length = GetWindowTextLengthW(window);
    WString text;
    if (!text.Reserve(static_cast<uint32_t>(length))) return false;
    // The length told before may be larger than what comes; it is never smaller.
    const int copied = GetWindowTextW(window, Wide(text.Data()), length + 1);
    if (!text.Assign(text.Data(), copied)) return false;
    out = std::move(text);
    return true;
}
