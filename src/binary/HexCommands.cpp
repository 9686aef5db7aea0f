#include "binary/HexCommands.h"

#include "binary/HexClipboard.h"
#include "binary/HexEditor.h"

namespace {

using Commands = CommandRows<HexEditor>;

} // namespace

// The frame decides about going to an offset itself.
constexpr CommandRows<HexEditor> HexCommands::Rows = {{
    {}, // bytes are not taken out of a file
    {Commands::WithSelection, HexClipboard::Copy},
    {HexClipboard::CanPaste, HexClipboard::Paste},
    {},
    {Commands::Always, [](HexEditor& editor) { editor.SelectAll(); }},
    {Commands::Always, [](HexEditor& editor) { editor.Surface().ShowFindDialog(); }},
    {},
    {Commands::Never, [](HexEditor& editor) { editor.Surface().ShowGoToDialog(); }},
    {}, // there are no bookmarks
    {},
}};
static_assert(HexCommands::Rows.IsWhole());
