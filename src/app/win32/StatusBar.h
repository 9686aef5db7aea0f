#pragma once

#include "base/win32/Windows.h"
#include "viewbase/ViewHost.h"

// The status bar at the bottom of the frame: five parts, part 0 taking what the others leave.
class StatusBar {
public:
    bool Create(HWND parent, HINSTANCE instance);
    // Puts the bar at the bottom of its parent and sets the parts' edges for the client width.
    void Layout(int clientWidth);
    int Height() const;
    // Writes a field of the views; null clears it. That of messages is drawn without borders.
    void SetField(StatusField field, const Char* text);
    HWND Window() const { return window; }

private:
    HWND window = nullptr;
};
