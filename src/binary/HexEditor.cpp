#include "binary/HexEditor.h"

#include "base/Assert.h"
#include "binary/HexText.h"
#include "viewbase/HostCalls.h"

#include <algorithm>

// The document.

void HexEditor::SetDocument(BinaryDocument* newDocument) {
    if (document && document != newDocument) document->ForgetView(this);
    document = newDocument;
    caret = anchor = 0;
    lowNibble = false;
    page.Forget();
    viewport.Reset(FileSize());
    if (document) viewport.UpdateScrollBar();
}

void HexEditor::DocumentChanged(Document* changed) { HostCalls::DocumentChanged(surface, changed); }

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

void HexEditor::MoveTo(uint64_t offset, bool extend) {
    if (!document) return;
    const uint64_t oldCaret = caret;
    const uint64_t oldAnchor = anchor;
    caret = std::min(offset, FileSize());
    lowNibble = false;
    if (extend) {
        // Only what lies between the old and the new caret becomes selected or ceases to be.
        if (caret != oldCaret) viewport.InvalidateBytes(oldCaret, caret);
    } else {
        anchor = caret;
        if (oldAnchor != oldCaret) viewport.InvalidateBytes(oldAnchor, oldCaret);
    }
    if (surface.HasFocus()) HostCalls::ShowStatus(surface, nullptr);
    UpdateCaret(true);
}

void HexEditor::SelectBytes(HexSelection selection) {
    MoveTo(selection.caret, false);
    anchor = std::min(selection.anchor, FileSize());
    Invalidate();
}

void HexEditor::SetCaret(HexCaret newCaret) {
    caret = anchor = std::min(newCaret.offset, FileSize());
    lowNibble = newCaret.lowNibble;
    if (surface.HasFocus()) HostCalls::ShowStatus(surface, nullptr);
}

void HexEditor::CollapseSelection() {
    if (HasSelection()) viewport.InvalidateBytes(anchor, caret);
    anchor = caret;
}

void HexEditor::ToHighNibble() {
    if (!lowNibble) return;
    lowNibble = false;
    UpdateCaret(false);
}

void HexEditor::UpdateCaret(bool scrollIntoView) {
    ORVANE_ASSERT(caret <= FileSize() && anchor <= FileSize());
    if (!document || !surface.HasWindow()) return;
    if (scrollIntoView) viewport.ScrollIntoView(caret);
    if (surface.HasFocus()) {
        viewport.ShowCaret(caret, lowNibble);
        RefreshStatus();
    }
    viewport.UpdateScrollBar();
}

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
