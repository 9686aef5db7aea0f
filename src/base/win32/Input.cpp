#include "base/win32/Input.h"

#include "base/win32/Windows.h"

bool TakeQueuedEscape() {
    MSG message;
    bool escape = false;
    while (PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_NOREMOVE) && message.wParam == VK_ESCAPE) {
        PeekMessageW(&message, nullptr, WM_KEYDOWN, WM_KEYDOWN, PM_REMOVE);
        escape = true;
    }
    return escape;
}
