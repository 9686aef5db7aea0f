#pragma once

#include "base/win32/Windows.h"

// Puts the tools of the tool list into the popup of the menu bar that has their place.
void RebuildToolMenu(HMENU bar);
