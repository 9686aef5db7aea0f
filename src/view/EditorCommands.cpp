#include "view/EditorCommands.h"

#include "view/EditorClipboard.h"
#include "view/EditorFind.h"
#include "view/EditorNavigation.h"
#include "view/TextEditor.h"
#include "viewbase/CommandRows.h"

namespace {

bool WithSelection(const TextEditor& editor) { return editor.Caret().HasSelection(); }
bool Always(const TextEditor&) { return true; }
bool Never(const TextEditor&) { return false; } // the frame decides
bool WhenWritable(const TextEditor& editor) { return !editor.GetTextBuffer()->IsReadOnly(); }

constexpr CommandRows<TextEditor> Commands = {{
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
}};
static_assert(Commands.IsComplete());

} // namespace

bool EditorCommands::IsEnabled(const TextEditor& editor, ViewCommand command) {
    return Commands.IsEnabled(editor, command);
}

void EditorCommands::Execute(TextEditor& editor, ViewCommand command) { Commands.Execute(editor, command); }
