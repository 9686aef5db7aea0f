// Sizes of a TextEditor, where its text stands in the window, and what is painted anew.

#include "settings/Settings.h"
#include "view/TextEditor.h"

namespace {

constexpr uint32_t FixedDigits = 7;

int32_t Saturate(int64_t value) {
    return static_cast<int32_t>(value > INT32_MAX ? INT32_MAX : value < INT32_MIN ? INT32_MIN : value);
}

} // namespace

LineLayout TextEditor::Layout() const { return {surface.Metrics(), textSurface.Widths()}; }

void TextEditor::OnSize(bool coloursChanged) {
    if (coloursChanged) states.TextChanged(0);
    measured.Forget(); // the font or the tabs may have changed
    if (!surface.HasWindow()) return;
    const int32_t lineHeight = surface.Metrics().lineHeight;
    visibleLines = lineHeight > 0 ? surface.Size().height / lineHeight : 0;
    surface.RenewCaret();
    RecomputeDigits();
    RecomputeColumns();
    const bool owed = owesScroll && visibleLines > 0;
    if (owed) owesScroll = false;
    UpdateCaret(owed);
}

// One more than the decimal digits of the line count: the spare column separates the numbers from the
// margin. See docs/oddities.md.
void TextEditor::RecomputeDigits() {
    lineNumberDigits = FixedDigits;
    if (settings.VarWidthLineNumbers == 0) return;
    uint32_t rest = document ? document->GetLineCount() : 0;
    lineNumberDigits = 1;
    for (; rest; rest /= 10) ++lineNumberDigits;
}

void TextEditor::RecomputeColumns() {
    const int32_t average = surface.Metrics().averageWidth;
    const int32_t room = surface.Size().width - TextLeft();
    visibleColumns = average > 0 && room > 0 ? room / average : 0;
}

int32_t TextEditor::GutterWidth() const {
    return settings.ShowLineNumbers ? static_cast<int32_t>(lineNumberDigits) * surface.Metrics().averageWidth : 0;
}

int32_t TextEditor::TextLeft() const { return GutterWidth() + MarginPixels(); }

void TextEditor::LineCountChanged() {
    const uint32_t digits = lineNumberDigits;
    RecomputeDigits();
    if (digits != lineNumberDigits) {
        RecomputeColumns();
        Invalidate();
        UpdateCaret(false);
    }
    if (!redraw.DefersCaret()) UpdateScrollBars();
}

void TextEditor::InvalidateLines(uint32_t first, uint32_t last) {
    redraw.InvalidateRows(first, last, {topLine, visibleLines});
}

void TextEditor::ResumeRedraw() {
    if (redraw.Resume()) UpdateCaret(true);
}

int64_t TextEditor::CaretX() {
    const TextSpan line = CaretLineText();
    // What is typed changes a line without a word.
    if (document->HasPendingEdit()) return Layout().PositionOf(line, caretColumn);
    return measured.PositionOf(Layout(), LineStart(caretLine), line, caretColumn);
}

LinePlace TextEditor::PlaceLeftOfWindow(uint32_t lineStart) const {
    return document->HasPendingEdit() ? LinePlace() : measured.PlaceIn(lineStart, horizontalScroll);
}

void TextEditor::UpdateCaret(bool scrollIntoView) {
    if (redraw.DefersCaret() || !document) return;
    if (!surface.HasWindow()) {
        owesScroll = owesScroll || scrollIntoView;
        return;
    }
    const int64_t caretX = CaretX();
    if (scrollIntoView) ScrollCaretIntoView(caretX);
    if (surface.HasFocus()) {
        ShowCaret(caretX);
        RefreshStatus();
    }
    UpdateScrollBars();
}

void TextEditor::ScrollCaretIntoView(int64_t caretX) {
    const auto rows = static_cast<uint32_t>(visibleLines > 0 ? visibleLines : 1);
    if (caretLine < topLine) {
        ScrollTo(caretLine);
    } else if (caretLine - topLine >= rows) {
        ScrollTo(caretLine - rows + 1);
    }
    // A margin wider than the window leaves nothing to show the caret in; it must not jump to and fro.
    const int32_t room = surface.Size().width - surface.Metrics().averageWidth - TextLeft();
    const int32_t usable = room > 0 ? room : 0;
    if (caretX > int64_t(horizontalScroll) + usable) {
        SetHorizontalScroll(caretX - usable);
    } else if (caretX < horizontalScroll) {
        SetHorizontalScroll(0); // all the way: see docs/oddities.md
    }
}

void TextEditor::ShowCaret(int64_t caretX) {
    const int64_t left = TextLeft();
    const int64_t x = caretX + left - horizontalScroll;
    const int64_t y = (int64_t(caretLine) - topLine) * surface.Metrics().lineHeight;
    if (x >= left) {
        surface.ShowCaretAt({Saturate(x), Saturate(y)});
    } else {
        textSurface.HideCaret();
    }
}

void TextEditor::PositionAt(ClientPoint point, uint32_t& line, uint32_t& column) const {
    const int32_t lineHeight = surface.Metrics().lineHeight;
    const int64_t at = int64_t(topLine) + (lineHeight > 0 ? point.y / lineHeight : 0);
    line = static_cast<uint32_t>(at < 0 ? 0 : at < None32 ? at : None32);
    column = Layout().ColumnAt(LineText(line), int64_t(horizontalScroll) + point.x - TextLeft());
}
