#pragma once

#include "base/win32/Windows.h"

// The frame's title bar, which is dark when the background of the text is, where the system has dark ones. In High
// Contrast it is the system's.
class TitleBar {
public:
    // Call it when the window was made and whenever the colours have changed.
    void Follow(HWND window);

private:
    bool dark = false;
};
