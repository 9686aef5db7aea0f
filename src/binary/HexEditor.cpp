#include "binary/HexEditor.h"

#include "binary/HexText.h"
#include "viewbase/HostCalls.h"

#include <algorithm>

// The document.

void HexEditor::SetDocument(BinaryDocument* newDocument) {
    if (document && document != newDocument) document->ForgetView(this);
    document = newDocument;
    topRow = 0;
    caret = anchor = 0;
    lowNibble = 0;
    page.Forget();
    offsetDigits = (1 + HexText::CountDigits(FileSize()) + 1) / 2 * 2;
    if (document) UpdateScrollBar();
}

void HexEditor::DocumentChanged(Document* changed) { HostCalls::DocumentChanged(surface, changed); }

void HexEditor::ContentChanged() {
    page.Forget();
    Invalidate();
}

void HexEditor::OnAttached() {
    bars.Forget();
    bars.Show(ScrollAxis::Horizontal, {0, 1, 0}); // nothing ever scrolls sideways
    UpdateScrollBar();
}

void HexEditor::OnFocus() {
    if (!document) return;
    ContentChanged(); // by another program, meanwhile
    statusSent = false;
    if (ViewHost* host = surface.Host()) {
        // Left there by a text view.
        host->SetStatusText(StatusField::Overwrite, nullptr);
        host->SetStatusText(StatusField::LineEnding, nullptr);
    }
    UpdateCaret(false);
}

// Caret and selection.

void HexEditor::MoveTo(uint64_t offset, bool extend) {
    if (!document) return;
    const uint64_t oldCaret = caret;
    const uint64_t oldAnchor = anchor;
    caret = std::min(offset, FileSize());
    lowNibble = 0;
    if (extend) {
        // Only what lies between the old and the new caret becomes selected or ceases to be.
        if (caret != oldCaret) InvalidateBytes(oldCaret, caret);
    } else {
        anchor = caret;
        if (oldAnchor != oldCaret) InvalidateBytes(oldAnchor, oldCaret);
    }
    if (surface.HasFocus()) HostCalls::ShowStatus(surface, nullptr);
    UpdateCaret(true);
}

void HexEditor::SelectBytes(uint64_t newAnchor, uint64_t newCaret) {
    MoveTo(newCaret, false);
    anchor = std::min(newAnchor, FileSize());
    Invalidate();
}

void HexEditor::SetCaret(uint64_t offset, uint32_t subPosition) {
    caret = anchor = std::min(offset, FileSize());
    lowNibble = subPosition ? 1 : 0;
    if (surface.HasFocus()) HostCalls::ShowStatus(surface, nullptr);
}

void HexEditor::ToHighNibble() {
    if (!lowNibble) return;
    lowNibble = 0;
    UpdateCaret(false);
}

// The status bar.

void HexEditor::RefreshStatus() {
    ViewHost* host = surface.Host();
    if (!host || (statusSent && sentCaret == caret)) return;
    WString text;
    if (!HexText::AppendOffset(text, caret)) return;
    host->SetStatusText(StatusField::Line, text.Text());
    if (!statusSent) host->SetStatusText(StatusField::Column, nullptr);
    statusSent = true;
    sentCaret = caret;
}

// Commands.

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
    {WithSelection, [](HexEditor& editor) { editor.Copy(); }},
    {[](const HexEditor& editor) { return editor.CanPaste(); }, [](HexEditor& editor) { editor.Paste(); }},
    {Never, Nothing},
    {Always, [](HexEditor& editor) { editor.SelectAll(); }},
    {Always, [](HexEditor& editor) { editor.Surface().ShowFindDialog(); }},
    {Never, Nothing},
    {Never, [](HexEditor& editor) { editor.Surface().ShowGoToDialog(); }},
    {Never, Nothing}, // there are no bookmarks
    {Never, Nothing},
};
static_assert(sizeof(Commands) / sizeof(Commands[0]) == ViewCommandCount);

// Null for a number that is no command.
const Command* Find(ViewCommand command) {
    const auto number = static_cast<uint32_t>(command);
    return number < ViewCommandCount ? &Commands[number] : nullptr;
}

} // namespace

bool HexEditor::CanDo(ViewCommand command) const {
    const Command* found = Find(command);
    return document && found && found->isEnabled(*this);
}

bool HexEditor::ExecuteCommand(ViewCommand command) {
    const Command* found = Find(command);
    if (found && document) found->execute(*this);
    return found != nullptr;
}
