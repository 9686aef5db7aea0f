#pragma once

#include "base/Types.h"

// The pixels an inch that sizes in the settings are for.
constexpr int32_t UnscaledDpi = 96;

// Pixel sizes of a view's font, read once when the font is made. All 0 until there is a font.
struct ViewMetrics {
    int32_t lineHeight = 0;
    int32_t averageWidth = 0;  // unit of horizontal scrolling, of the gutter and of the guides
    int32_t spaceWidth = 0;    // unit of tab stops
    int32_t dpi = UnscaledDpi; // pixels an inch of the screen that the font was made for
};

// Settings as layout uses them: a value that makes no sense is held within bounds, so that it gives
// a sensible picture instead of a division by zero or a walk over four billion columns.
namespace ViewLimits {
constexpr uint32_t MaxTabSize = 1024;
constexpr uint32_t MaxMarginWidth = 16384;
constexpr uint32_t MaxCaretWidth = 1000;
} // namespace ViewLimits

// SpacesPerTab, at least 1.
uint32_t TabSize();
// MarginWidth and CaretWidth in pixels: the settings are for UnscaledDpi and grow as the font does.
int32_t MarginPixels(const ViewMetrics& metrics);
int32_t CaretPixels(const ViewMetrics& metrics);
// Space width times TabSize(), at least 1.
int32_t TabWidth(const ViewMetrics& metrics);
