#include "view/TextEditor.h"

#include "base/Assert.h"
#include "document/TextChange.h"
#include "viewbase/HostCalls.h"

// The document.

void TextEditor::SetDocument(TextBuffer* newDocument) {
    TextBuffer* old = text.Document();
    if (old && old != newDocument) old->ForgetView(this);
    text.Show(newDocument);
    caret = TextCaret();
    scrollPending = false;
    viewport.Reset();
    if (newDocument) viewport.UpdateScrollBars();
}

void TextEditor::InvalidateLines(LineRange lines) { InvalidateRows(lines.first, lines.last); }

void TextEditor::LineCountChanged() {
    if (viewport.UpdateGutter()) {
        Invalidate();
        UpdateCaret(false);
    }
    // While redraw is suspended the caret is noted as due, and placing it sets the bars as well.
    if (!redraw.DefersCaret()) viewport.UpdateScrollBars();
}

void TextEditor::ForgetAfter(uint32_t offset) {
    brackets.SetDue(); // the brackets may be elsewhere
    text.ForgetAfter(offset);
    viewport.ForgetAfter(offset);
}

void TextEditor::PlaceCaret(TextPosition place) {
    if (!GetTextBuffer()) return;
    SetCaret(place, false);
    brackets.SetDue();
}

void TextEditor::PlaceSelection(TextSelection selection) {
    PlaceCaret(text.PositionOf(selection.caret < text.Length() ? selection.caret : text.Length()));
    SetSelection(selection.anchor);
}

void TextEditor::FollowChange(const TextChange& change) {
    caret.Follow(text, change);
    viewport.Follow(change);
}

void TextEditor::FollowEnd(TextPosition end) {
    caret.MoveTo(text, end, false);
    UpdateCaret(true);
    brackets.SetDue();
}

void TextEditor::EditFinished() {
    // Whichever way the change came, and whichever view it was made in.
    ORVANE_ASSERT(caret.IsIn(text) && TopLine() < text.LineCount());
    ++editCount;
    brackets.MatchIfDue();
}

void TextEditor::RunStateChanged(Document* changed, bool running) {
    if (ViewHost* host = surface.Host()) host->CheckChangedOnDisk(changed, running);
}

// The window.

void TextEditor::WindowAttached() {
    if (TextBuffer* document = GetTextBuffer()) document->ViewAttached(this);
    viewport.ForgetScrollBars();
    viewport.UpdateScrollBars();
}

void TextEditor::LayOut(bool coloursChanged) {
    caret.LeavePairs(text);                  // WholeCharacters may be on now
    if (coloursChanged) text.ForgetAfter(0); // states of other engines mean something else
    viewport.Measure();
    if (!surface.HasWindow()) return;
    surface.RenewCaret();
    const bool owed = scrollPending && VisibleLines() > 0;
    if (owed) scrollPending = false;
    UpdateCaret(owed);
    if (coloursChanged) brackets.Match(); // the engine may be another one
}

void TextEditor::FocusGained() {
    TextBuffer* document = GetTextBuffer();
    if (!document) return;
    document->SetActiveView(this);
    status.Forget(); // the fields show what the view before has sent
    OpenCaretLine();
    UpdateCaret(false);
    brackets.Match();
}

// Caret and selection.

void TextEditor::OpenCaretLine() {
    // Here and in MoveCaret: without memory the line is opened when it is typed in.
    if (TextBuffer* document = GetTextBuffer()) static_cast<void>(document->LoadEditLine(caret.Line()));
}

void TextEditor::MoveCaret(TextPosition place, bool extend, CaretStop stop) {
    TextBuffer* document = GetTextBuffer();
    if (!document) return;
    if (document->ActiveView() == this) static_cast<void>(document->LoadEditLine(place.line));
    SetCaret(place, extend, stop);
    brackets.Match();
}

void TextEditor::SetCaret(TextPosition place, bool extend, CaretStop stop) {
    const EditorSelection old = Selected();
    const uint32_t oldLine = caret.Line();
    caret.MoveTo(text, place, extend, stop);
    CaretMoved(old, oldLine, extend);
}

void TextEditor::MoveCaretToOffset(uint32_t offset, bool extend) { MoveCaret(text.PositionOf(offset), extend); }

void TextEditor::SelectRange(TextSelection selection) {
    MoveCaretToOffset(selection.caret < text.Length() ? selection.caret : text.Length(), false);
    SetSelection(selection.anchor);
}

void TextEditor::SetSelection(uint32_t anchor) {
    caret.SetAnchor(text, anchor);
    Invalidate();
}

bool TextEditor::DeleteSelection() {
    return caret.HasSelection() && GetTextBuffer()->DeleteText(caret.Selection().Range());
}

void TextEditor::GoToLine(uint32_t line, bool selectLine) {
    MoveCaret({line, 0});
    if (!selectLine) return;
    caret.SetAnchor(text, caret.Offset() + text.Line(caret.Line()).length);
    InvalidateLines({caret.Line(), caret.Line()});
}

void TextEditor::UpdateCaret(bool scrollIntoView) {
    if (redraw.DefersCaret() || !GetTextBuffer()) return;
    // Made up for in LayOut, once it is known how many lines are seen.
    if (!surface.HasWindow()) {
        scrollPending = scrollPending || scrollIntoView;
        return;
    }
    const int64_t caretX = viewport.CaretX(caret);
    if (scrollIntoView) viewport.ScrollIntoView(caret, caretX);
    if (surface.HasFocus()) {
        viewport.ShowCaret(caret, caretX);
        RefreshStatus();
    }
    viewport.UpdateScrollBars();
}

void TextEditor::SetTopLine(uint32_t line) {
    if (line == TopLine()) return;
    // Without memory what is pending stays so.
    if (TextBuffer* document = GetTextBuffer()) static_cast<void>(document->CommitEdit());
    viewport.ScrollTo(line);
}

void TextEditor::ToggleBookmark(uint32_t line) {
    if (TextBuffer* document = GetTextBuffer()) document->ToggleBookmark(line == NoLine ? caret.Line() : line);
}

void TextEditor::ToggleOverwrite() {
    overwrite = !overwrite;
    RefreshStatus();
}

void TextEditor::PrepareEdit() {
    if (!viewport.Rows().Holds(caret.Line())) UpdateCaret(true);
}

void TextEditor::PlaceAfterEdit(uint32_t column) {
    SetCaret({caret.Line(), column}, false);
    brackets.Match();
}

void TextEditor::RefreshStatus() {
    ViewHost* host = surface.Host();
    TextBuffer* document = GetTextBuffer();
    if (host && document) status.Show(*host, {caret.Position(), overwrite, document->GetLineEnding()});
}
