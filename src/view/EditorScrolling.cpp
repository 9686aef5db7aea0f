// Scroll bars, wheel and the top line of a TextEditor.

#include "view/TextEditor.h"

namespace {

constexpr int32_t HorizontalRange = 16384; // pixels

int32_t ToBar(int64_t value) { return static_cast<int32_t>(value > INT32_MAX ? INT32_MAX : value); }

// The position as the system keeps it: the last page is the end of the bar.
int32_t Clamp(const ScrollBar& bar, int64_t position) {
    const int64_t most = int64_t(bar.maximum) - (bar.page > 1 ? bar.page - 1 : 0);
    if (position > most) position = most;
    return static_cast<int32_t>(position < 0 ? 0 : position);
}

int64_t Target(const ScrollBar& bar, ScrollRequest request, int32_t step, int32_t trackPosition) {
    const int64_t position = Clamp(bar, bar.position);
    switch (request) {
    case ScrollRequest::LineBack:
        return position - step;
    case ScrollRequest::LineForward:
        return position + step;
    case ScrollRequest::PageBack:
        return position - bar.page;
    case ScrollRequest::PageForward:
        return position + bar.page;
    case ScrollRequest::Track:
        return trackPosition;
    case ScrollRequest::Minimum:
        return 0;
    case ScrollRequest::Maximum:
        return bar.maximum;
    }
    return position;
}

} // namespace

void TextEditor::UpdateScrollBars() {
    if (!surface.HasWindow()) return;
    SendScrollBar(ScrollAxis::Vertical);
    SendScrollBar(ScrollAxis::Horizontal);
}

// Setting a bar costs more than painting the window: only a change is worth it.
void TextEditor::SendScrollBar(ScrollAxis axis) {
    const ScrollBar bar = BarOf(axis);
    ScrollBar& sent = sentBars[static_cast<uint32_t>(axis)];
    if (bar == sent) return;
    sent = bar;
    surface.SetScrollBar(axis, bar);
}

ScrollBar TextEditor::BarOf(ScrollAxis axis) const {
    if (axis == ScrollAxis::Vertical) return {ToBar(LineCount()), visibleLines, ToBar(topLine)};
    return {HorizontalRange, ToBar(int64_t(visibleColumns) * surface.Metrics().averageWidth), horizontalScroll};
}

void TextEditor::OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) {
    const ScrollBar bar = BarOf(axis);
    const bool vertical = axis == ScrollAxis::Vertical;
    const int32_t step = vertical ? 1 : surface.Metrics().averageWidth;
    const int32_t position = Clamp(bar, Target(bar, request, step, trackPosition));
    if (vertical) {
        SetTopLine(static_cast<uint32_t>(position));
    } else {
        SetHorizontalScroll(position);
    }
    UpdateCaret(false);
}

void TextEditor::OnWheel(int32_t delta, int32_t linesPerNotch, bool ctrl) {
    const int64_t notches = wheel.Turn(delta);
    if (notches == 0) return;
    if (ctrl) return ChangeFontSize(surface.Host(), notches > 0);
    if (!document || linesPerNotch <= 0) return;

    const int64_t count = LineCount();
    int64_t top = topLine + notches * linesPerNotch;
    if (top < 0) top = 0;
    if (top + visibleLines > count) top = count >= visibleLines ? count - visibleLines + 1 : 0;
    SetTopLine(static_cast<uint32_t>(top));
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
    if (suspendCount || moved >= visibleLines) {
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
