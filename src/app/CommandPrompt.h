#pragma once

#include "app/CommandCompletion.h"
#include "app/CommandHistory.h"

class CommandContext;

// What the keys of the command window do, apart from the window itself. The text that an operation
// returns replaces the window's text; null leaves it.
class CommandPrompt {
public:
    // Enter. `typed`: the text was changed by typing since it was last set (the edit control can undo).
    // The line is kept in the history when it was typed or completed.
    void Enter(CommandContext& frame, const Char* text, bool typed);
    // Tab and Shift+Tab; the caret goes to the end.
    const Char* Complete(const Char* text, bool forward);
    // Up, Down and F8 (`caret` is the start of the selection and stays).
    const Char* Older() { return Replaced(history.Older()); }
    const Char* Newer() { return Replaced(history.Newer()); }
    const Char* FindPrefix(const Char* text, uint32_t caret) { return Replaced(history.FindPrefix(text, caret)); }
    // The text changed otherwise than by the operations above.
    void TextChanged() { completion.EndRun(); }

private:
    const Char* Replaced(const Char* text);

    CommandHistory history;
    CommandCompletion completion;
    bool completed = false; // the current text came from a completion
};
