#include "binary/HexCommands.h"

#include "binary/HexClipboard.h"
#include "binary/HexEditor.h"

namespace {

bool WithSelection(const HexEditor& editor) { return editor.HasSelection(); }
bool Always(const HexEditor&) { return true; }
bool Never(const HexEditor&) { return false; }
void Nothing(HexEditor&) {}

} // namespace

// The frame decides about going to an offset itself.
constexpr CommandRows<HexEditor> HexCommands::Rows = {{
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
static_assert(HexCommands::Rows.IsComplete());
