#pragma once

#include "base/win32/Handles.h"

// OLE for the thread of the windows, and with it a single-threaded apartment of COM: whatever others call of its
// objects arrives on that thread. The frame owns one, which all share that need it: OLE begins with the first use,
// since it would slow down every start, and ends only with the frame, since its end discards messages.
class Ole : Guard {
public:
    Ole() = default;
    // What others still hold of the thread's objects is released.
    ~Ole();

    // To be called by that thread before anything that needs it. From the first success on OLE is there as long as this
    // is. False when the system does not give it: without memory, or when the thread is in another kind of apartment.
    bool Use();

private:
    bool isThere = false;
};
