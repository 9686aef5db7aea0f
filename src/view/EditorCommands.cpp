#include "view/EditorCommands.h"

#include "view/EditorClipboard.h"
#include "view/EditorFind.h"
#include "view/EditorNavigation.h"
#include "view/TextEditor.h"

namespace {

using Commands = CommandRows<TextEditor>;

bool WhenWritable(const TextEditor& editor) { return !editor.GetTextBuffer()->IsReadOnly(); }

} // namespace

constexpr CommandRows<TextEditor> EditorCommands::Rows = {{
    {Commands::WithSelection, EditorClipboard::Cut},
    {Commands::WithSelection, EditorClipboard::Copy},
    {Commands::Never, EditorClipboard::Paste},
    {Commands::WithSelection, [](TextEditor& editor) { static_cast<void>(editor.DeleteSelection()); }},
    {Commands::Always, EditorNavigation::SelectAll},
    {Commands::Always, EditorFind::ShowFind},
    {WhenWritable, EditorFind::ShowReplace},
    {Commands::Never, [](TextEditor& editor) { editor.Surface().ShowGoToDialog(); }},
    {Commands::Always, [](TextEditor& editor) { editor.ToggleBookmark(NoLine); }},
    {Commands::WithSelection, EditorClipboard::CopyColoured},
}};
static_assert(EditorCommands::Rows.IsWhole());
