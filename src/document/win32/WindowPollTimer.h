#pragma once

#include "base/Types.h"

// Installs the poll timer that runs on the message loop of a window. To be called once, before any
// command is run; runs have to end before the window goes.
void PollOnWindow(NativeWindow window);
