#pragma once

#include "base/Array.h"
#include "base/WString.h"

enum class CompletionKind : uint32_t;

// Tab in the command window. The first step of a run collects the candidates for the text, the later
// ones walk them in sorted order, wrapping at both ends.
class CommandCompletion {
public:
    CommandCompletion() = default;
    ~CommandCompletion() { EndRun(); }
    CommandCompletion(const CommandCompletion&) = delete;
    CommandCompletion& operator=(const CommandCompletion&) = delete;

    // The text to show instead of `text`, with the caret after it; null when nothing changes.
    // Valid until the next call. `text` is looked at only by the first step of a run.
    const Char* Step(const Char* text, bool forward);
    // The text was changed by something else.
    void EndRun();

private:
    [[nodiscard]] bool Collect(const Char* text);
    [[nodiscard]] bool CollectKind(CompletionKind kind, const Char* argument);
    [[nodiscard]] bool CollectSettings(const Char* argument);
    // Unless the argument is not how the key begins.
    [[nodiscard]] bool AddSetting(const Char* key, const Char* argument);
    [[nodiscard]] bool CollectFiles(const Char* argument, bool directoriesOnly);
    [[nodiscard]] bool AddCandidate(const Char* directory, const Char* name);

    Array<Char*> candidates; // owned
    WString prefix;          // shown in front of each candidate
    WString shown;
    size_t current = 0;
    bool running = false;
    bool forProgram = false; // the text is no command's: names with blanks are shown in quotes
};
