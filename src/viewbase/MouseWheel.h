#pragma once

#include "base/Types.h"

class ViewHost;

// Adds up what a mouse wheel reports until it makes whole notches.
class MouseWheel {
public:
    // Notches turned towards the user (below 0: away) with `delta`, in 1/120 of a notch, added.
    int64_t Turn(int32_t delta) {
        constexpr int64_t Notch = 120;
        const int64_t turned = remainder + delta;
        const int64_t notches = turned / -Notch;
        remainder = static_cast<int32_t>(turned + notches * Notch);
        return notches;
    }

private:
    int32_t remainder = 0;
};

// Makes the font of all views one point larger or smaller (at least 1) and shows the size.
void ChangeFontSize(ViewHost* host, bool larger);
