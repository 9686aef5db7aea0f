#pragma once

#include "base/Types.h"
#include "base/WString.h"

class CommandContext;
struct ToolRecord;

// Appends `text` to `out` with the variables %PATH%, %FILE%, %DIR%, %EXT%, %WORD% and %SEL% replaced
// by the values of the active pane's document; without a pane they are empty. False without memory;
// `out` is then unchanged.
[[nodiscard]] bool ExpandToolVariables(const CommandContext& frame, const Char* text, WString& out);

// Replaces `out` by the expanded directory, or by the current one when that is empty.
[[nodiscard]] bool ExpandStartDirectory(const CommandContext& frame, const Char* text, WString& out);

// Whether the command interpreter can run in a directory. It takes none without a drive letter, such as a share, and
// would run in the system's folder instead.
[[nodiscard]] bool InterpreterRunsIn(const Char* directory);

// Replaces `out` by the tool's command line as typed: command, space, last arguments.
[[nodiscard]] bool ToolCommandLine(const ToolRecord& tool, WString& out);
