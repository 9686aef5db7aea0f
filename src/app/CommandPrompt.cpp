#include "app/CommandPrompt.h"

#include "app/CommandContext.h"
#include "app/CommandLanguage.h"

void CommandPrompt::Enter(CommandContext& frame, const Char* text, bool typed) {
    // The command may put a text of its own into the window, so this one is remembered first.
    const bool keep = typed || completed;
    completed = false;
    WString line;
    if (!line.Assign(text)) return;
    ExecuteCommandLine(frame, line.Text());
    if (keep) static_cast<void>(history.Add(line.Text())); // without memory the line just cannot be recalled
}

const Char* CommandPrompt::Complete(const Char* text, bool forward) {
    const Char* const shown = completion.Step(text, forward);
    if (shown) completed = true;
    return shown;
}

const Char* CommandPrompt::Replaced(const Char* text) {
    if (!text) return nullptr;
    completion.EndRun();
    completed = false;
    return text;
}
