#pragma once

#include "base/Types.h"
#include "base/WString.h"

class CommandContext;

// Splits a line at the first blank outside double quotes. `word` keeps its quotes; `argument` points
// into `line` after the blanks that follow. False without memory.
[[nodiscard]] bool SplitCommand(const Char* line, WString& word, const Char*& argument);

// Carries out one line of the command language. What is no command runs as an external one.
void ExecuteCommandLine(CommandContext& frame, const Char* line);

// Executes a file line by line, empty lines included. The file is UTF-8 with or without a signature;
// a pair of quotes around its name is dropped. An unreadable file does nothing.
void RunScript(CommandContext& frame, const Char* file);

// Scripts may run scripts up to this depth; then the user is told and all of them end.
constexpr uint32_t MaxScriptDepth = 100;
