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

    // Call it on that thread before anything that needs OLE, which is there from the first success on while this
    // exists. False when the system refuses: without memory, or when the thread is in another kind of apartment.
    bool Use();

private:
    bool isThere = false;
};
