#pragma once

// Whether the user has pressed Escape since the last call, for operations that hold the thread. Those
// key presses are taken out of the queue; all other input stays in it.
bool TakeQueuedEscape();
