#include "app/win32/SystemFont.h"

void SystemFont::Apply(HWND control, Kind kind) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    const UINT own = GetDpiForWindow(control);
    const UINT dpi = own ? own : USER_DEFAULT_SCREEN_DPI;
    if (!SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0, dpi)) return;
    const HFONT made = CreateFontIndirectW(&(metrics.*kind));
    if (!made) return;
    // The control uses the old one until it has the new one.
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(made), TRUE);
    font.Reset(made);
}
