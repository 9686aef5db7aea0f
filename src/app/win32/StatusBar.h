#pragma once

#include "app/win32/SystemFont.h"
#include "viewbase/ViewHost.h"

// The status bar at the bottom of the frame: five parts, part 0 taking what the others leave.
class StatusBar {
public:
    bool Create(HWND parent, HINSTANCE instance);
    // Makes the font follow the system's status font for the frame's DPI; Layout has to follow.
    void ApplyFont();
    // Puts the bar at the bottom of its parent and sets the parts' edges for the client width.
    void Layout(int clientWidth);
    int Height() const;
    // Writes a field of the views; null clears it. That of messages is drawn without borders.
    void SetField(StatusField field, const Char* text);
    HWND Window() const { return window; }

private:
    HWND window = nullptr;
    SystemFont font; // the control's own is that of the system's first screen
};
