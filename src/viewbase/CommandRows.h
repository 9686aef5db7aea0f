#pragma once

#include "viewbase/ViewCommand.h"

// What each numbered command does to an editor. An empty row is of a command that this editor does not have: like what
// is not known, it is never enabled and does nothing.
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
        return Has(command) && RowOf(command).isEnabled(editor);
    }
    void Execute(Editor& editor, ViewCommand command) const {
        if (Has(command)) RowOf(command).execute(editor);
    }
    // Whether every row has both or is empty.
    constexpr bool IsWhole() const {
        for (const Row& row : rows) {
            if (!row.isEnabled != !row.execute) return false;
        }
        return true;
    }

private:
    bool Has(ViewCommand command) const { return IsKnown(command) && RowOf(command).execute; }
    const Row& RowOf(ViewCommand command) const { return rows[static_cast<uint32_t>(command)]; }
};
