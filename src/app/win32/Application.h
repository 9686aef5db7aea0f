#pragma once

#include "base/Types.h"
#include "base/win32/Windows.h"

// The process: what lives as long as it does, and the order in which that comes and goes.
namespace Application {

// Runs the editor from start-up to shutdown and returns the exit code. `commandLine` begins with the program's
// own name.
int Run(HINSTANCE instance, const Char* commandLine);

} // namespace Application
