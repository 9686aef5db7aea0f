#include "viewbase/Redraw.h"

#include "base/Assert.h"

#include <algorithm>
#include <utility>

bool Redraw::Resume() {
    if (suspensions == 0 || --suspensions) return false;
    if (std::exchange(invalidateLater, false)) surface.InvalidateAll();
    return std::exchange(placeCaretLater, false);
}

void Redraw::InvalidateAll() {
    if (suspensions) {
        invalidateLater = true;
    } else {
        surface.InvalidateAll();
    }
}

void Redraw::InvalidateRows(uint64_t first, uint64_t second, const ShownRows& shown) {
    if (suspensions) {
        invalidateLater = true;
        return;
    }
    ORVANE_ASSERT(shown.count >= 0);
    const uint64_t lastShown = shown.top + static_cast<uint32_t>(shown.count);
    const uint64_t low = std::max(std::min(first, second), shown.top);
    const uint64_t high = std::min(std::max(first, second), lastShown);
    if (low > high) return;
    const int32_t rowHeight = surface.Metrics().lineHeight;
    // Within the window, so that the pixels of a far row need no 64 bits.
    surface.InvalidateStrip(static_cast<int32_t>(low - shown.top) * rowHeight,
                            static_cast<int32_t>(high - shown.top + 1) * rowHeight);
}

bool Redraw::DefersCaret() {
    if (suspensions) placeCaretLater = true;
    return suspensions != 0;
}
