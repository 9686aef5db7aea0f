// The numbered commands of a TextEditor.

#include "view/EditorActions.h"
#include "view/TextEditor.h"

namespace {

bool WithSelection(const TextEditor& editor) { return editor.HasSelection(); }
bool Always(const TextEditor&) { return true; }
bool Never(const TextEditor&) { return false; } // the frame decides
bool WhenWritable(const TextEditor& editor) { return !editor.GetTextBuffer()->IsReadOnly(); }

struct Command {
    bool (*isEnabled)(const TextEditor& editor);
    void (*execute)(TextEditor& editor);
};

constexpr Command Commands[] = {
    {WithSelection, EditorActions::Cut},
    {WithSelection, EditorActions::Copy},
    {Never, EditorActions::Paste},
    {WithSelection, [](TextEditor& editor) { editor.DeleteSelection(); }},
    {Always, EditorActions::SelectAll},
    {Always, EditorActions::ShowFind},
    {WhenWritable, EditorActions::ShowReplace},
    {Never, [](TextEditor& editor) { editor.Surface().ShowGoToDialog(); }},
    {Always, [](TextEditor& editor) { editor.ToggleBookmark(None32); }},
    {WithSelection, EditorActions::CopyColoured},
};
static_assert(sizeof(Commands) / sizeof(Commands[0]) == ViewCommandCount);

// Null for a number that is no command.
const Command* Find(ViewCommand command) {
    const auto number = static_cast<uint32_t>(command);
    return number < ViewCommandCount ? &Commands[number] : nullptr;
}

} // namespace

bool TextEditor::IsCommandEnabled(ViewCommand command) const {
    const Command* found = Find(command);
    return document && found && found->isEnabled(*this);
}

bool TextEditor::ExecuteCommand(ViewCommand command) {
    const Command* found = Find(command);
    if (found && document) found->execute(*this);
    return found != nullptr;
}
