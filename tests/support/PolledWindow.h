#pragma once

#include "base/win32/Windows.h"
#include "document/win32/WindowPollTimer.h"

// A window that hands its ticks to a poll timer, as that of the frame does. It is its maker's, who destroys it.
class PolledWindow {
public:
    explicit PolledWindow(HWND made) : window(made) {
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        before =
            reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
        timer.SetWindow(window);
    }
    PolledWindow(const PolledWindow&) = delete;
    PolledWindow& operator=(const PolledWindow&) = delete;

    WindowPollTimer timer;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
        auto& polled = *reinterpret_cast<PolledWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (message != WM_TIMER) return CallWindowProcW(polled.before, window, message, wparam, lparam);
        polled.timer.Tick(wparam);
        return 0;
    }

    HWND window;
    WNDPROC before = nullptr;
};
