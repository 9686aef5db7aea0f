#include "base/win32/Input.h"

#include "base/win32/Windows.h"

namespace {

bool IsEscape(const MSG& message) { return message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE; }

bool HasForeground() { return GetWindowThreadProcessId(GetForegroundWindow(), nullptr) == GetCurrentThreadId(); }

bool NextKey(MSG& message) { return PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_NOREMOVE); }

} // namespace

bool TakeQueuedEscape() {
    MSG message;
    if (!NextKey(message)) return false;
    // Only the first key of the queue can be peeked at. If Escape is held down, it must be somewhere in the queue.
    if (!IsEscape(message) && (GetAsyncKeyState(VK_ESCAPE) >= 0 || !HasForeground())) return false;
    bool escape = false;
    while (PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
        escape = escape || IsEscape(message);
        // A key held down repeats itself.
        if (escape && !(NextKey(message) && IsEscape(message))) break;
    }
    return escape;
}
