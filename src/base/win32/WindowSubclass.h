#pragma once

#include "base/win32/Handles.h"

// A procedure put before the one of a control. The window must not be destroyed with it still in place: Remove is due
// in its WM_NCDESTROY at the latest.
class WindowSubclass : Guard {
public:
    ~WindowSubclass() { Remove(); }
    // Of a window without it; `object` is what the procedure gets as its data. False when the system refuses.
    [[nodiscard]] bool Set(HWND control, SUBCLASSPROC before, void* object) {
        if (!SetWindowSubclass(control, before, 0, reinterpret_cast<DWORD_PTR>(object))) return false;
        window = control;
        procedure = before;
        return true;
    }
    void Remove() {
        if (window) RemoveWindowSubclass(window, procedure, 0);
        window = nullptr;
    }

private:
    HWND window = nullptr;
    SUBCLASSPROC procedure = nullptr;
};
