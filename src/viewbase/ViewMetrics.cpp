#include "viewbase/ViewMetrics.h"

#include "settings/Settings.h"

uint32_t TabSize() {
    if (settings.SpacesPerTab == 0) return 1;
    return settings.SpacesPerTab < ViewLimits::MaxTabSize ? settings.SpacesPerTab : ViewLimits::MaxTabSize;
}

int32_t MarginPixels() {
    constexpr auto Most = static_cast<uint32_t>(ViewLimits::MaxMarginWidth);
    return static_cast<int32_t>(settings.MarginWidth < Most ? settings.MarginWidth : Most);
}

int32_t TabWidth(const ViewMetrics& metrics) {
    const int32_t width = metrics.spaceWidth * static_cast<int32_t>(TabSize());
    return width > 0 ? width : 1;
}
