#include "binary/HexCommands.h"

#include "binary/HexClipboard.h"
#include "binary/HexEditor.h"

namespace {

using Commands = CommandRows<HexEditor>;

void Nothing(HexEditor&) {}

} // namespace

// The frame decides about going to an offset itself.
constexpr CommandRows<HexEditor> HexCommands::Rows = {{
    {Commands::Never, Nothing}, // bytes are not taken out of a file
    {Commands::WithSelection, HexClipboard::Copy},
    {HexClipboard::CanPaste, HexClipboard::Paste},
    {Commands::Never, Nothing},
    {Commands::Always, [](HexEditor& editor) { editor.SelectAll(); }},
    {Commands::Always, [](HexEditor& editor) { editor.Surface().ShowFindDialog(); }},
    {Commands::Never, Nothing},
    {Commands::Never, [](HexEditor& editor) { editor.Surface().ShowGoToDialog(); }},
    {Commands::Never, Nothing}, // there are no bookmarks
    {Commands::Never, Nothing},
}};
static_assert(HexCommands::Rows.IsComplete());
