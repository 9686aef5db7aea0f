#pragma once

#include "base/win32/Windows.h"

// The status bar at the bottom of the frame: five parts, part 0 taking what the others leave.
class StatusBar {
public:
    bool Create(HWND parent, HINSTANCE instance);
    // Puts the bar at the bottom of its parent and sets the parts' edges for the client width.
    void Layout(int clientWidth);
    int Height() const;
    // Writes a field of the views (StatusField numbers); null clears it. Field 0 is drawn without borders.
    void SetField(uint32_t field, const Char* text);
    HWND Window() const { return window; }

private:
    HWND window = nullptr;
};
