#pragma once

#include "base/Types.h"

class CommandContext;

// Opens a path, or every file that its wildcards match, which skip directories. `line` (0-based, NoLine for none)
// applies to each match. With `askToCreate` a path that matches nothing is created after a question, else its directory
// is tried. True when every open succeeded.
bool OpenFileArgument(CommandContext& frame, const Char* path, uint32_t line, bool askToCreate, bool binary);

// The same for bytes, which always are an existing file's: there is nothing to ask, and a path that matches
// nothing fails under its own name.
bool OpenBinaryArgument(CommandContext& frame, const Char* path);
