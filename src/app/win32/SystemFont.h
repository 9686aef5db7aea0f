#pragma once

#include "base/win32/Handles.h"

// One of the system's own fonts, in a control that shows text with it.
class SystemFont {
public:
    using Kind = LOGFONTW NONCLIENTMETRICSW::*;

    // Makes the font as the system has it now, for the density of the control's screen, and gives it to the control.
    // When the system refuses, the control keeps what it has.
    void Apply(HWND control, Kind kind);
    // Null before Apply and when the system has refused.
    HFONT Get() const { return font.Get(); }

private:
    GdiObject<HFONT> font;
};
