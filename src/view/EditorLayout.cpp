// Sizes of a TextEditor, where its text stands in the window, and what is painted anew.

#include "settings/Settings.h"
#include "view/TextEditor.h"

namespace {

constexpr uint32_t PendingInvalidate = 1;
constexpr uint32_t PendingCaret = 2;
constexpr uint32_t FixedDigits = 7;

int32_t Saturate(int64_t value) {
    return static_cast<int32_t>(value > INT32_MAX ? INT32_MAX : value < INT32_MIN ? INT32_MIN : value);
}

} // namespace

LineLayout TextEditor::Layout() const { return {surface.Metrics(), textSurface.Widths()}; }

void TextEditor::OnSize(uint32_t flags) {
    constexpr uint32_t ColouringChanged = 2;
    if (flags & ColouringChanged) states.TextChanged(0);
    measured.Forget(); // the font or the tabs may have changed
    if (!surface.HasWindow()) return;
    int32_t width = 0;
    int32_t height = 0;
    surface.GetClientSize(width, height);
    const int32_t lineHeight = surface.Metrics().lineHeight;
    visibleLines = lineHeight > 0 ? height / lineHeight : 0;
    surface.RenewCaret();
    RecomputeDigits();
    RecomputeColumns();
    const bool owed = owesScroll && visibleLines > 0;
    if (owed) owesScroll = false;
    UpdateCaret(owed);
}

// One more than the decimal digits of the line count: the spare column separates the numbers from the
// margin.
void TextEditor::RecomputeDigits() {
    lineNumberDigits = FixedDigits;
    if (settings.VarWidthLineNumbers == 0) return;
    uint32_t rest = document ? document->GetLineCount() : 0;
    lineNumberDigits = 1;
    for (; rest; rest /= 10) ++lineNumberDigits;
}

void TextEditor::RecomputeColumns() {
    int32_t width = 0;
    int32_t height = 0;
    surface.GetClientSize(width, height);
    const int32_t average = surface.Metrics().averageWidth;
    const int32_t room = width - TextLeft();
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
    if (suspendCount) {
        pendingFlags |= PendingCaret;
    } else {
        UpdateScrollBars();
    }
}

void TextEditor::Invalidate() {
    if (suspendCount) {
        pendingFlags |= PendingInvalidate;
    } else {
        surface.InvalidateAll();
    }
}

void TextEditor::InvalidateLines(uint32_t first, uint32_t last) {
    if (suspendCount) {
        pendingFlags |= PendingInvalidate;
        return;
    }
    const int64_t low = first < last ? first : last;
    const int64_t high = first < last ? last : first;
    if (high < topLine || low > int64_t(topLine) + visibleLines) return;
    // Held within the window, so that a far line's pixels need no 64 bits.
    const int64_t lineHeight = surface.Metrics().lineHeight;
    const int64_t top = (low < topLine ? 0 : low - topLine) * lineHeight;
    const int64_t bottom = (high - topLine + 1) * lineHeight;
    const int64_t end = (int64_t(visibleLines) + 1) * lineHeight;
    surface.InvalidateStrip(static_cast<int32_t>(top), static_cast<int32_t>(bottom < end ? bottom : end));
}

void TextEditor::ResumeRedraw() {
    if (suspendCount == 0 || --suspendCount) return;
    const uint32_t pending = pendingFlags;
    pendingFlags = 0;
    if (pending & PendingInvalidate) surface.InvalidateAll();
    if (pending & PendingCaret) UpdateCaret(true);
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
    if (suspendCount) {
        pendingFlags |= PendingCaret;
        return;
    }
    if (!document) return;
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
    int32_t width = 0;
    int32_t height = 0;
    surface.GetClientSize(width, height);
    // A margin wider than the window leaves nothing to show the caret in; it must not jump to and fro.
    const int32_t room = width - surface.Metrics().averageWidth - TextLeft();
    const int32_t usable = room > 0 ? room : 0;
    if (caretX > int64_t(horizontalScroll) + usable) {
        SetHorizontalScroll(caretX - usable);
    } else if (caretX < horizontalScroll) {
        SetHorizontalScroll(0); // all the way, not just to the caret
    }
}

void TextEditor::ShowCaret(int64_t caretX) {
    const int64_t left = TextLeft();
    const int64_t x = caretX + left - horizontalScroll;
    const int64_t y = (int64_t(caretLine) - topLine) * surface.Metrics().lineHeight;
    if (x >= left) {
        surface.ShowCaretAt(Saturate(x), Saturate(y));
    } else {
        textSurface.HideCaret();
    }
}

void TextEditor::PositionAt(int32_t x, int32_t y, uint32_t& line, uint32_t& column) const {
    const int32_t lineHeight = surface.Metrics().lineHeight;
    const int64_t at = int64_t(topLine) + (lineHeight > 0 ? y / lineHeight : 0);
    line = static_cast<uint32_t>(at < 0 ? 0 : at < None32 ? at : None32);
    column = Layout().ColumnAt(LineText(line), int64_t(horizontalScroll) + x - TextLeft());
}
