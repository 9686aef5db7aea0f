// Caret, selection, bracket match and status fields of a TextEditor.

#include "base/Text.h"
#include "document/TextChange.h"
#include "settings/Settings.h"
#include "view/Brackets.h"
#include "view/TextEditor.h"
#include "viewbase/HostCalls.h"

void TextEditor::MoveCaret(uint32_t line, uint32_t column, bool extend) {
    if (!document) return;
    if (IsActive()) document->LoadEditLine(line);
    SetCaret(line, column, extend);
    UpdateBraceMatch();
}

void TextEditor::SetCaret(uint32_t line, uint32_t column, bool extend) {
    const uint32_t oldAnchor = selectionAnchor;
    const uint32_t oldCaret = caretOffset;
    const uint32_t oldLine = caretLine;
    preferredColumn = column;
    const uint32_t last = LineCount() ? LineCount() - 1 : 0;
    caretLine = line < last ? line : last;
    const uint32_t length = CaretLineText().length;
    caretColumn = column < length ? column : length;
    caretOffset = LineStart(caretLine) + caretColumn;
    if (extend) {
        // Only what lies between the old and the new caret becomes selected or ceases to be.
        if (caretOffset != oldCaret) InvalidateLines(oldLine, caretLine);
    } else {
        selectionAnchor = caretOffset;
        if (oldAnchor != oldCaret) InvalidateSelection(oldAnchor, oldLine);
    }
    if (surface.HasFocus()) HostCalls::ShowStatus(surface, nullptr);
    UpdateCaret(true);
}

void TextEditor::MoveCaretToOffset(uint32_t offset, bool extend) {
    uint32_t line = 0;
    uint32_t column = 0;
    OffsetToLineColumn(offset, line, column);
    MoveCaret(line, column, extend);
}

void TextEditor::SelectRange(uint32_t anchor, uint32_t caret) {
    MoveCaretToOffset(caret < TextLength() ? caret : TextLength(), false);
    SetSelection(anchor, caret);
}

void TextEditor::SetSelection(uint32_t anchor, uint32_t caret) {
    const uint32_t length = TextLength();
    selectionAnchor = anchor < length ? anchor : length;
    caretOffset = caret < length ? caret : length;
    Invalidate();
}

void TextEditor::PlaceCaret(uint32_t line, uint32_t column) {
    if (!document) return;
    SetCaret(line, column, false);
    braceMatchDue = true;
}

void TextEditor::PlaceSelection(uint32_t anchor, uint32_t caret) {
    uint32_t line = 0;
    uint32_t column = 0;
    OffsetToLineColumn(caret < TextLength() ? caret : TextLength(), line, column);
    PlaceCaret(line, column);
    SetSelection(anchor, caret);
}

void TextEditor::EditFinished() {
    if (braceMatchDue) UpdateBraceMatch();
}

// Looks nothing up unless lines come or go: a key must not walk the text to a far caret.
void TextEditor::FollowChange(const TextChange& change) {
    const uint32_t offset = change.Moved(caretOffset);
    selectionAnchor = change.Moved(selectionAnchor);
    if (change.ChangesLines()) {
        OffsetToLineColumn(offset, caretLine, caretColumn);
        topLine = change.MovedLine(topLine);
    } else if (caretLine == change.startLine) {
        caretColumn += offset - caretOffset; // modulo 2^32
    }
    caretOffset = offset;
}

void TextEditor::CollapseSelection() {
    if (!HasSelection()) return;
    InvalidateSelection(selectionAnchor, caretLine);
    selectionAnchor = caretOffset;
}

void TextEditor::InvalidateSelection(uint32_t anchor, uint32_t lineOfCaret) {
    uint32_t line = 0;
    uint32_t column = 0;
    OffsetToLineColumn(anchor, line, column);
    InvalidateLines(line, lineOfCaret);
}

bool TextEditor::DeleteSelection() {
    return HasSelection() && document->DeleteText(SelectionStart(), SelectionEnd() - SelectionStart());
}

void TextEditor::GoToLine(uint32_t line, bool selectLine) {
    MoveCaret(line, 0, false);
    if (!selectLine) return;
    selectionAnchor = caretOffset + CaretLineText().length;
    InvalidateLines(caretLine, caretLine);
}

void TextEditor::ToggleBookmark(uint32_t line) {
    if (document) document->ToggleBookmark(line == None32 ? caretLine : line);
}

void TextEditor::ToggleOverwrite() {
    overwrite = !overwrite;
    RefreshStatus();
}

// Only an opener right after the caret and a closer right before it are matched: see docs/oddities.md.
TextEditor::BracePair TextEditor::FindBracePair() {
    const TextSpan line = CaretLineText();
    const Char* pairs = document->Engine()->BraceCharacters();
    const Char behind = caretColumn < line.length ? line.text[caretColumn] : Char(0);
    const Char before = caretColumn > 0 ? line.text[caretColumn - 1] : Char(0);
    BracePair found;
    Bracket bracket;
    if (Brackets::Identify(pairs, behind, bracket) && bracket.opens) {
        found.position = caretOffset;
    } else if (Brackets::Identify(pairs, before, bracket) && !bracket.opens) {
        found.position = caretOffset - 1;
    } else {
        return {};
    }
    if (document->HasPendingEdit()) {
        if (!document->CommitEdit()) return {};
        OpenCaretLine();
    }
    found.partner = Brackets::FindPartner(document->Content(), document->Length(), found.position, bracket);
    if (found.partner == None32) return {};
    uint32_t column = 0;
    found.line = caretLine;
    OffsetToLineColumn(found.partner, found.partnerLine, column);
    return found;
}

void TextEditor::UpdateBraceMatch() {
    braceMatchDue = false;
    SyntaxEngine* engine = document->Engine();
    if (!engine || !document->Content() || !surface.HasFocus()) return;
    const BracePair old = pair;
    pair = FindBracePair();
    const uint32_t offsets[] = {pair.position, pair.partner};
    for (uint32_t i = 0; i < 2; ++i) {
        const HighlightRange range = {offsets[i], offsets[i] + 1, settings.BraceMatchFg, settings.BraceMatchBg,
                                      settings.SelBg};
        engine->SetHighlight(i, offsets[i] == None32 ? nullptr : &range);
    }
    if (pair == old) return;
    const uint32_t lines[] = {old.line, old.partnerLine, pair.line, pair.partnerLine};
    for (const uint32_t line : lines) {
        if (line != None32) InvalidateLines(line, line);
    }
}

void TextEditor::RefreshStatus() {
    static constexpr const Char* Endings[] = {u"\tUnknown", u"\tUnix", u"\tDos", u"\tMixed"};
    ViewHost* host = surface.Host();
    if (!host || !document) return;
    const uint32_t ending = document->GetLineEnding();
    WString text;
    const auto send = [&](StatusField field, uint32_t& sent, uint32_t value, const Char* format, uint32_t number) {
        text.Clear();
        if (sent == value || !Text::AppendFormat(text, format, number)) return;
        sent = value;
        host->SetStatusText(field, text.Text());
    };
    send(StatusField::Line, sentStatus.line, caretLine, u"\tLn %u", caretLine + 1);
    send(StatusField::Column, sentStatus.column, caretColumn, u"\tCol %u", caretColumn + 1);
    send(StatusField::Overwrite, sentStatus.overwrite, overwrite, overwrite ? u"\tOVR" : u"\tINS", 0);
    send(StatusField::LineEnding, sentStatus.lineEnding, ending, ending < 4 ? Endings[ending] : u"", 0);
}
