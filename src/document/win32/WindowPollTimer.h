#pragma once

#include "base/Types.h"

struct PollTimer;

// The poll timer, from now on on the message loop of that window. There is one for the whole process; runs have to end
// before the window goes.
const PollTimer& PollOnWindow(NativeWindow window);
