#pragma once

#include "base/win32/Windows.h"

// While it lives the wheel scrolls by screens, as the user may have chosen.
class WheelScreen {
public:
    WheelScreen() {
        SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &before, 0);
        set = SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, WHEEL_PAGESCROLL, nullptr, 0) != 0;
    }
    ~WheelScreen() { SystemParametersInfoW(SPI_SETWHEELSCROLLLINES, before, nullptr, 0); }
    WheelScreen(const WheelScreen&) = delete;
    WheelScreen& operator=(const WheelScreen&) = delete;

    bool IsSet() const { return set; }

private:
    UINT before = 3;
    bool set = false;
};
