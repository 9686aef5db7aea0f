#pragma once

// OLE for the thread of the windows, and with it a single-threaded apartment of COM: whatever others call of its
// objects arrives on that thread. Initialised on first use, because it would slow down every start.
namespace Ole {

// To be called by that thread before anything that needs it. From the first success on OLE is there until Leave. False
// when the system does not give it: without memory, or when the thread is in another kind of apartment.
bool Use();
// Gives it back, if it is there. What others still hold of the thread's objects is released.
void Leave();

} // namespace Ole
