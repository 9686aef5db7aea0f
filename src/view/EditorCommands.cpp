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

} // namespace

constexpr CommandRows<TextEditor> EditorCommands::Rows = {{
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
static_assert(EditorCommands::Rows.IsComplete());
