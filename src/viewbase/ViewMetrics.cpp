#include "viewbase/ViewMetrics.h"

#include "settings/Settings.h"

namespace {

// Rounded to the nearest pixel, halves up.
int32_t Scaled(uint32_t width, uint32_t most, const ViewMetrics& metrics) {
    const int64_t unscaled = width < most ? width : most;
    return static_cast<int32_t>((unscaled * metrics.dpi + UnscaledDpi / 2) / UnscaledDpi);
}

} // namespace

uint32_t TabSize() {
    if (settings.SpacesPerTab == 0) return 1;
    return settings.SpacesPerTab < ViewLimits::MaxTabSize ? settings.SpacesPerTab : ViewLimits::MaxTabSize;
}

int32_t MarginPixels(const ViewMetrics& metrics) {
    return Scaled(settings.MarginWidth, ViewLimits::MaxMarginWidth, metrics);
}

int32_t CaretPixels(const ViewMetrics& metrics) {
    return Scaled(settings.CaretWidth, ViewLimits::MaxCaretWidth, metrics);
}

int32_t TabWidth(const ViewMetrics& metrics) {
    const int32_t width = metrics.spaceWidth * static_cast<int32_t>(TabSize());
    return width > 0 ? width : 1;
}
