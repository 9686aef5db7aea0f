#include "binary/HexCommands.h"

#include "binary/HexClipboard.h"
#include "binary/HexEditor.h"
#include "viewbase/CommandRows.h"

namespace {

bool WithSelection(const HexEditor& editor) { return editor.HasSelection(); }
bool Always(const HexEditor&) { return true; }
bool Never(const HexEditor&) { return false; }
void Nothing(HexEditor&) {}

// The frame decides about going to an offset itself.
constexpr CommandRows<HexEditor> Commands = {{
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
}};
static_assert(Commands.IsComplete());

} // namespace

bool HexCommands::IsEnabled(const HexEditor& editor, ViewCommand command) {
    return Commands.IsEnabled(editor, command);
}

void HexCommands::Execute(HexEditor& editor, ViewCommand command) { Commands.Execute(editor, command); }
