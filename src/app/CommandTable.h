#pragma once

#include "base/Types.h"

class CommandContext;

// What Tab completes in a command's argument.
enum class CompletionKind : uint32_t { Nothing, SettingKeys, Directories, Files };

namespace CommandFlag {
constexpr uint32_t KeepCommandWindow = 1; // the command window is not hidden afterwards
constexpr uint32_t StripQuotes = 2;       // the handler gets the argument without its outer double quotes
} // namespace CommandFlag

// `argument` is never null and may be empty.
using CommandHandler = void (*)(CommandContext& frame, const Char* argument);

struct CommandRow {
    const Char* longName;
    const Char* shortName; // or null
    CommandHandler handler;
    CompletionKind completion;
    uint32_t flags; // CommandFlag bits
};

constexpr uint32_t CommandCount = 20;
extern const CommandRow commandTable[CommandCount];

// Further command words, in a table of their own.
constexpr uint32_t AdditionalCommandCount = 1;
extern const CommandRow additionalCommands[AdditionalCommandCount];

// The first row of either whose long or short name equals `word` exactly; null when there is none.
const CommandRow* FindCommand(const Char* word);
