#include "binary/HexCommands.h"

#include "binary/HexClipboard.h"
#include "binary/HexEditor.h"

namespace {

bool WithSelection(const HexEditor& editor) { return editor.HasSelection(); }
bool Always(const HexEditor&) { return true; }
bool Never(const HexEditor&) { return false; }
void Nothing(HexEditor&) {}

struct Command {
    bool (*isEnabled)(const HexEditor& editor);
    void (*execute)(HexEditor& editor);
};

// The frame decides about going to an offset itself.
constexpr Command Commands[] = {
    {Never, Nothing}, // bytes are not taken out of a file
    {WithSelection, HexClipboard::Copy},
    {HexClipboard::CanPaste, HexClipboard::Paste},
    {Never, Nothing},
    {Always, [](HexEditor& editor) { editor.SelectAll(); }},
    {Always, [](HexEditor& editor) { editor.Surface().ShowFindDialog(); }},
    {Never, Nothing},
    {Never, [](HexEditor& editor) { editor.Surface().ShowGoToDialog(); }},
    {Never, Nothing}, // there are no bookmarks
    {Never, Nothing},
};
static_assert(sizeof(Commands) / sizeof(Commands[0]) == ViewCommandCount);

const Command& RowOf(ViewCommand command) { return Commands[static_cast<uint32_t>(command)]; }

} // namespace

bool HexCommands::IsKnown(ViewCommand command) { return static_cast<uint32_t>(command) < ViewCommandCount; }

bool HexCommands::IsEnabled(const HexEditor& editor, ViewCommand command) {
    return IsKnown(command) && RowOf(command).isEnabled(editor);
}

void HexCommands::Execute(HexEditor& editor, ViewCommand command) {
    if (IsKnown(command)) RowOf(command).execute(editor);
}
