#pragma once

#include "base/Types.h"
#include "base/WString.h"

class CommandContext;

// Takes the next argument from `position` and moves it past. False when there is none; an argument of
// two quotes with nothing between them counts as none.
bool NextArgument(const Char*& position, WString& token);

// Opens what the process's command line names, or an untitled document when nothing was opened, and
// has the frame laid out. True: the message loop may start.
[[nodiscard]] bool ParseCommandLine(CommandContext& frame, const Char* commandLine);
