#pragma once

// Whether the user has pressed Escape since the last call, for operations that hold the thread. That key
// press is taken out of the queue together with the keys struck before it, which were meant for the
// operation's result; all other input stays.
bool TakeQueuedEscape();
