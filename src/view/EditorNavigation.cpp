#include "view/EditorNavigation.h"

#include "view/Brackets.h"
#include "view/CaretStops.h"
#include "view/FilePosition.h"
#include "view/TextEditor.h"
#include "view/Words.h"

void EditorNavigation::GoToBookmark(TextEditor& editor, bool backward) {
    TextBuffer& document = *editor.GetTextBuffer();
    constexpr LineMark::Flags Mask = LineMark::Bookmark;
    const uint32_t line = editor.CaretLine();
    const LineMark* mark = backward ? document.PrevMark(line, Mask, false) : document.NextMark(line, Mask, false);
    if (!mark)
        mark = backward ? document.PrevMark(document.GetLineCount(), Mask, true) : document.NextMark(0, Mask, true);
    if (mark) editor.MoveCaret({mark->line, 0}, false);
}

namespace {

// Where a jump starts: at the bracket after the caret, or else at the one before it. NoOffset without one
// and at the end of the text.
uint32_t JumpStart(const TextBuffer& document, uint32_t caret, Bracket& bracket) {
    const Char* pairs = document.Engine()->BraceCharacters();
    const Char* text = document.Content();
    if (caret >= document.Length()) return NoOffset;
    if (Brackets::Identify(pairs, text[caret], bracket)) return caret;
    return caret > 0 && Brackets::Identify(pairs, text[caret - 1], bracket) ? caret - 1 : NoOffset;
}

} // namespace

void EditorNavigation::GoToPartner(TextEditor& editor, bool extend) {
    TextBuffer& document = *editor.GetTextBuffer();
    if (!document.CommitEdit() || !document.Engine() || !document.Content()) return;
    Bracket bracket;
    const uint32_t start = JumpStart(document, editor.CaretOffset(), bracket);
    if (start == NoOffset) return;
    const uint32_t partner = Brackets::FindPartner(document.Content(), document.Length(), start, bracket);
    if (partner != NoOffset) editor.MoveCaretToOffset(partner, extend);
}

void EditorNavigation::SelectAll(TextEditor& editor) { editor.SelectRange({0, editor.Text().Length()}); }

void EditorNavigation::SelectWord(TextEditor& editor, bool evenIfEmpty) {
    const TextSpan line = editor.Text().Line(editor.CaretLine());
    const ColumnRange word = Words::WordAt(line, editor.CaretColumn());
    const uint32_t lineStart = editor.Text().LineStart(editor.CaretLine());
    const uint32_t start = CaretStops::AtOrBefore(line, word.start);
    const uint32_t end = CaretStops::AtOrAfter(line, word.end);
    if (evenIfEmpty || !word.IsEmpty()) editor.SelectRange({lineStart + start, lineStart + end});
}

void EditorNavigation::OpenNamedFile(TextEditor& editor) {
    ViewHost* host = editor.Surface().Host();
    FilePosition position;
    if (host && position.Parse(editor.Text().Line(editor.CaretLine())))
        host->OpenFileAtLine(position.path.Text(), position.line);
}
