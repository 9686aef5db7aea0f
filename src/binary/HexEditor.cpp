#include "binary/HexEditor.h"

#include "base/Assert.h"
#include "binary/HexText.h"
#include "viewbase/HostCalls.h"

#include <algorithm>

// The document.

void HexEditor::SetDocument(BinaryDocument* newDocument) {
    if (document && document != newDocument) document->ForgetView(this);
    document = newDocument;
    selection = EditorSelection();
    lowNibble = false;
    page.Forget();
    viewport.Reset(FileSize());
    if (document) viewport.UpdateScrollBar();
}

void HexEditor::ContentChanged() {
    ++changeCount;
    page.Forget();
    Invalidate();
}

void HexEditor::ReportEditFailure() { HostCalls::ShowStatus(surface, u"Failed changing the file"); }

void HexEditor::ReportReadOnly() { HostCalls::ShowStatus(surface, u"The file can only be read"); }

// The window.

void HexEditor::WindowAttached() {
    viewport.ForgetScrollBars();
    viewport.UpdateScrollBar();
}

void HexEditor::LayOut() {
    if (!surface.HasWindow()) return;
    viewport.Measure();
    surface.RenewCaret();
    UpdateCaret(false);
}

void HexEditor::FocusGained() {
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

void HexEditor::MoveCaret(uint64_t offset, bool extend) {
    if (!document) return;
    const EditorSelection old = selection;
    selection.caret = std::min(offset, FileSize());
    lowNibble = false;
    if (!extend) MoveAnchorToCaret();
    CaretMoved(old, RowOf(old.caret), extend);
}

void HexEditor::SelectBytes(EditorSelection selected) {
    MoveCaret(selected.caret, false);
    selection.anchor = std::min(selected.anchor, FileSize());
    Invalidate();
}

void HexEditor::SetCaret(HexCaret newCaret) {
    selection.caret = selection.anchor = std::min(newCaret.offset, FileSize());
    lowNibble = newCaret.lowNibble;
    if (surface.HasFocus()) HostCalls::ShowStatus(surface, nullptr);
}

void HexEditor::ToHighNibble() {
    if (!lowNibble) return;
    lowNibble = false;
    UpdateCaret(false);
}

void HexEditor::UpdateCaret(bool scrollIntoView) {
    ORVANE_ASSERT(selection.End() <= FileSize());
    if (!document || !surface.HasWindow()) return;
    if (scrollIntoView) viewport.ScrollIntoView(selection.caret);
    if (surface.HasFocus()) {
        viewport.ShowCaret(selection.caret, lowNibble);
        RefreshStatus();
    }
    viewport.UpdateScrollBar();
}

void HexEditor::RefreshStatus() {
    ViewHost* host = surface.Host();
    if (!host || (statusSent && sentCaret == selection.caret)) return;
    WString text;
    if (!HexText::AppendOffset(text, selection.caret)) return;
    host->SetStatusText(StatusField::Line, text.Text());
    if (!statusSent) host->SetStatusText(StatusField::Column, nullptr);
    statusSent = true;
    sentCaret = selection.caret;
}
