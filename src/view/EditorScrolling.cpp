// Scroll bars, wheel and the top line of a TextEditor.

#include "view/TextEditor.h"

namespace {

constexpr uint64_t HorizontalRange = 16384; // pixels

} // namespace

void TextEditor::UpdateScrollBars() {
    bars.Show(ScrollAxis::Vertical, Scrolled(ScrollAxis::Vertical).Bar());
    bars.Show(ScrollAxis::Horizontal, Scrolled(ScrollAxis::Horizontal).Bar());
}

ScrollState TextEditor::Scrolled(ScrollAxis axis) const {
    if (axis == ScrollAxis::Vertical) return {LineCount(), visibleLines, topLine};
    const int64_t page = int64_t(visibleColumns) * surface.Metrics().averageWidth;
    return {HorizontalRange, static_cast<int32_t>(page < INT32_MAX ? page : INT32_MAX),
            static_cast<uint32_t>(horizontalScroll)};
}

void TextEditor::OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) {
    if (axis == ScrollAxis::Vertical) {
        SetTopLine(static_cast<uint32_t>(Scrolled(axis).After(request, 1, trackPosition)));
    } else {
        const int32_t step = surface.Metrics().averageWidth;
        SetHorizontalScroll(static_cast<int64_t>(Scrolled(axis).After(request, step, trackPosition)));
    }
    UpdateCaret(false);
}

void TextEditor::OnWheel(const WheelTurn& turn) {
    const int64_t lines = wheel.Turn(turn, surface.Host());
    if (lines == 0 || !document) return;
    SetTopLine(static_cast<uint32_t>(Scrolled(ScrollAxis::Vertical).Moved(lines)));
    UpdateCaret(false);
}

void TextEditor::SetTopLine(uint32_t line) {
    if (line == topLine) return;
    if (document) document->CommitEdit();
    ScrollTo(line);
}

// The picture is moved when some of it stays in view; only what comes in is painted.
void TextEditor::ScrollTo(uint32_t line) {
    const uint32_t last = LineCount() - 1;
    if (line > last) line = last;
    if (line == topLine) return;
    const int64_t rows = int64_t(line) - topLine;
    topLine = line;
    const int64_t moved = rows < 0 ? -rows : rows;
    if (redraw.IsSuspended() || moved >= visibleLines) {
        Invalidate();
    } else {
        textSurface.ScrollPicture(static_cast<int32_t>(-rows) * surface.Metrics().lineHeight);
    }
}

void TextEditor::SetHorizontalScroll(int64_t pixels) {
    const auto scroll = static_cast<int32_t>(pixels < 0 ? 0 : pixels < INT32_MAX ? pixels : INT32_MAX);
    if (scroll == horizontalScroll) return;
    horizontalScroll = scroll;
    Invalidate();
}
