#include "view/EditorCommands.h"

#include "view/EditorClipboard.h"
#include "view/EditorFind.h"
#include "view/EditorNavigation.h"
#include "view/TextEditor.h"

namespace {

bool WithSelection(const TextEditor& editor) { return editor.Caret().HasSelection(); }
bool Always(const TextEditor&) { return true; }
bool Never(const TextEditor&) { return false; } // the frame decides
bool WhenWritable(const TextEditor& editor) { return !editor.GetTextBuffer()->IsReadOnly(); }

struct Command {
    bool (*isEnabled)(const TextEditor& editor);
    void (*execute)(TextEditor& editor);
};

constexpr Command Commands[] = {
    {WithSelection, EditorClipboard::Cut},
    {WithSelection, EditorClipboard::Copy},
    {Never, EditorClipboard::Paste},
    {WithSelection, [](TextEditor& editor) { editor.DeleteSelection(); }},
    {Always, EditorNavigation::SelectAll},
    {Always, EditorFind::ShowFind},
    {WhenWritable, EditorFind::ShowReplace},
    {Never, [](TextEditor& editor) { editor.Surface().ShowGoToDialog(); }},
    {Always, [](TextEditor& editor) { editor.ToggleBookmark(NoLine); }},
    {WithSelection, EditorClipboard::CopyColoured},
};
static_assert(sizeof(Commands) / sizeof(Commands[0]) == ViewCommandCount);

const Command& RowOf(ViewCommand command) { return Commands[static_cast<uint32_t>(command)]; }

} // namespace

bool EditorCommands::IsKnown(ViewCommand command) { return static_cast<uint32_t>(command) < ViewCommandCount; }

bool EditorCommands::IsEnabled(const TextEditor& editor, ViewCommand command) {
    return IsKnown(command) && RowOf(command).isEnabled(editor);
}

void EditorCommands::Execute(TextEditor& editor, ViewCommand command) {
    if (IsKnown(command)) RowOf(command).execute(editor);
}
