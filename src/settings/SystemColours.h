#pragma once

#include "settings/Settings.h"

// What the system draws windows in, for users of High Contrast.
struct SystemColours {
    Colour background = 0;
    Colour text = 0;
    Colour selectionBackground = 0;
    Colour selectionText = 0;
    Colour faint = 0; // of text that is not available
    Colour link = 0;
};

// The live record holds these instead of the user's colours as long as all of those are the defaults: somebody who
// has set a colour wants to see it. The record alone changes; what is stored is the user's (OwnColours), as is all that
// is read from a file.

// Shows them, or, when `colours` is null, the user's own again. Call it whenever the system's or the user's
// colours have changed. Runs the handlers of what has changed, and returns it.
SettingsChanges ShowSystemColours(const SystemColours* colours);

// While one lives, the live record holds the user's colours. No handler runs.
class OwnColours {
public:
    OwnColours();
    ~OwnColours();
    OwnColours(const OwnColours&) = delete;
    OwnColours& operator=(const OwnColours&) = delete;

private:
    const SettingsRecord shown;
};

// Whether light text is easier to read on it than dark text.
bool IsDark(Colour background);
