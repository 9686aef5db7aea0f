#pragma once

#include "settings/SystemColours.h"

// The system's High Contrast, which users switch on when they cannot read other colours.
namespace HighContrast {

bool IsOn();
// Has the settings show the system's colours, or no longer show them: ShowSystemColours.
SettingsChanges Follow();

} // namespace HighContrast
