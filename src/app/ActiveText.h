#pragma once

#include "base/Types.h"

class PaneViews;
class TextBuffer;
class TextEditor;
class WString;

// The text document and its editor in the active pane, for the commands that work on them.
class ActiveText {
public:
    explicit ActiveText(const PaneViews& allPanes) : panes(allPanes) {}
    ActiveText(const ActiveText&) = delete;
    ActiveText& operator=(const ActiveText&) = delete;

    // Both are null without an active view, and when it shows bytes.
    TextBuffer* Document() const;
    TextEditor* Editor() const;

    // Chooses the colouring; a name that no definition has does nothing.
    void SetEngine(const Char* name);
    void MarkAsOutput();
    // Append to `out`; false only without memory. Without a word (or selection) nothing is appended.
    [[nodiscard]] bool AppendWordAtCaret(WString& out) const;
    [[nodiscard]] bool AppendSelection(WString& out) const; // empty selection: the word at the caret
    // Replaces `name` by the file name at the caret. False without a text or memory.
    [[nodiscard]] bool GetFileNameAtCaret(WString& name) const;

private:
    const PaneViews& panes;
};
