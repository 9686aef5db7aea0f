#pragma once

#include "base/Types.h"

class ViewHost;

// What a turned mouse wheel reports.
struct WheelTurn {
    int32_t delta = 0;         // 120 for a notch, above 0 away from the user
    int32_t linesPerNotch = 0; // how far the user wants it to scroll
    bool ctrl = false;
};

// Adds up what a mouse wheel reports until it makes whole notches.
class MouseWheel {
public:
    // How many rows to scroll down (below 0: up). With Ctrl the wheel changes the font size instead, by one point
    // whatever the number of notches, and there is nothing to scroll. `host` may be null.
    [[nodiscard]] int64_t Turn(const WheelTurn& turn, ViewHost* host);
    // The whole notches that `delta` makes with what was left before it, in its direction. The rest is kept.
    [[nodiscard]] int64_t TakeNotches(int32_t delta);

private:
    int32_t remainder = 0; // in 1/120 of a notch
};
