#pragma once

#include "base/win32/Windows.h"

// Sends a message on to every child of a window. The system tells windows of the top level only what has changed
// for all.
inline void SendToChildren(HWND parent, UINT message, WPARAM wparam, LPARAM lparam) {
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        SendMessageW(child, message, wparam, lparam);
}
