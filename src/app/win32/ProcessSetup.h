#pragma once

// What the process asks of the system before it does anything else: a damaged heap ends it, libraries come from the
// system's own folders only, an empty drive brings up no system message box, and an exception in a timer procedure ends
// the process instead of being swallowed.
void SetUpProcess();
