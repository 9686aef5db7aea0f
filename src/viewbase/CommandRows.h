#pragma once

#include "viewbase/ViewCommand.h"

// What each numbered command does to an editor. What is not known is not enabled, and does nothing.
template <class Editor> struct CommandRows {
    struct Row {
        bool (*isEnabled)(const Editor& editor) = nullptr;
        void (*execute)(Editor& editor) = nullptr;
    };

    Row rows[ViewCommandCount];

    // When commands are enabled.
    static bool Always(const Editor&) { return true; }
    static bool Never(const Editor&) { return false; } // not by the view: some the frame decides about
    static bool WithSelection(const Editor& editor) { return editor.HasSelection(); }

    bool IsEnabled(const Editor& editor, ViewCommand command) const {
        return IsKnown(command) && RowOf(command).isEnabled(editor);
    }
    void Execute(Editor& editor, ViewCommand command) const {
        if (IsKnown(command)) RowOf(command).execute(editor);
    }
    // Whether every command has its row.
    constexpr bool IsComplete() const {
        for (const Row& row : rows) {
            if (!row.isEnabled || !row.execute) return false;
        }
        return true;
    }

private:
    const Row& RowOf(ViewCommand command) const { return rows[static_cast<uint32_t>(command)]; }
};
