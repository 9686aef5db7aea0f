#include "settings/win32/HighContrast.h"

#include "base/win32/Windows.h"

bool HighContrast::IsOn() {
    HIGHCONTRASTW state = {};
    state.cbSize = sizeof(state);
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(state), &state, 0) &&
           (state.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

SettingsChanges HighContrast::Follow() {
    if (!IsOn()) return ShowSystemColours(nullptr);
    const SystemColours colours = {
        GetSysColor(COLOR_WINDOW),        GetSysColor(COLOR_WINDOWTEXT), GetSysColor(COLOR_HIGHLIGHT),
        GetSysColor(COLOR_HIGHLIGHTTEXT), GetSysColor(COLOR_GRAYTEXT),   GetSysColor(COLOR_HOTLIGHT),
    };
    return ShowSystemColours(&colours);
}
