// Sizes of a HexEditor, its scroll bar, what is painted anew, and the mouse.

#include "binary/HexEditor.h"

#include <algorithm>

namespace {

int32_t Saturate(int64_t value) { return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX)); }

} // namespace

void HexEditor::OnSize(uint32_t) {
    if (!surface.HasWindow()) return;
    int32_t width = 0;
    int32_t height = 0;
    surface.GetClientSize(width, height);
    const int32_t lineHeight = surface.Metrics().lineHeight;
    visibleRows = lineHeight > 0 ? height / lineHeight : 0;
    surface.RenewCaret();
    UpdateCaret(false);
}

int32_t HexEditor::GutterWidth() const { return static_cast<int32_t>(offsetDigits) * surface.Metrics().averageWidth; }

int32_t HexEditor::TextLeft() const { return GutterWidth() + MarginPixels(); }

// Painting anew.

void HexEditor::Invalidate() {
    if (suspendCount) {
        invalidatePending = true;
    } else {
        surface.InvalidateAll();
    }
}

// The rows of both bytes and all between them.
void HexEditor::InvalidateBytes(uint64_t first, uint64_t second) {
    if (suspendCount) {
        invalidatePending = true;
        return;
    }
    const uint64_t low = std::min(first, second) / BytesPerRow;
    const uint64_t high = std::max(first, second) / BytesPerRow;
    const uint64_t lastShown = topRow + static_cast<uint32_t>(visibleRows);
    if (high < topRow || low > lastShown) return;
    const int32_t lineHeight = surface.Metrics().lineHeight;
    const auto top = static_cast<int32_t>(std::max(low, topRow) - topRow);
    const auto bottom = static_cast<int32_t>(std::min(high, lastShown) - topRow + 1);
    surface.InvalidateStrip(top * lineHeight, bottom * lineHeight);
}

void HexEditor::ResumeRedraw() {
    if (suspendCount == 0 || --suspendCount || !invalidatePending) return;
    invalidatePending = false;
    surface.InvalidateAll();
}

// The caret.

void HexEditor::UpdateCaret(bool scrollIntoView) {
    if (!document || !surface.HasWindow()) return;
    if (scrollIntoView) {
        const uint64_t row = caret / BytesPerRow;
        const auto rows = static_cast<uint32_t>(visibleRows > 0 ? visibleRows : 1);
        if (row < topRow)
            ScrollToRow(row);
        else if (row - topRow >= rows)
            ScrollToRow(row - rows + 1);
    }
    if (surface.HasFocus()) {
        PlaceCaret();
        RefreshStatus();
    }
    UpdateScrollBar();
}

void HexEditor::PlaceCaret() {
    const ViewMetrics& metrics = surface.Metrics();
    const auto column = static_cast<int32_t>(caret % BytesPerRow * 3 + lowNibble);
    // A row that far away is out of sight either way.
    const int64_t row = std::clamp<int64_t>(static_cast<int64_t>(caret / BytesPerRow - topRow), INT32_MIN, INT32_MAX);
    surface.ShowCaretAt(TextLeft() + column * metrics.averageWidth, Saturate(row * metrics.lineHeight));
}

// Scrolling.

// Where bar and wheel end: one row more than there is fits below the last one, as in a text.
uint64_t HexEditor::LastTopRow() const {
    const auto rows = static_cast<uint32_t>(visibleRows);
    return RowCount() + 1 > rows ? RowCount() + 1 - rows : 0;
}

void HexEditor::ScrollToRow(uint64_t row) {
    row = std::min(row, RowCount() ? RowCount() - 1 : 0);
    if (row == topRow) return;
    topRow = row;
    Invalidate();
}

// By how many bits rows are made coarser, so that the bar's 32 bits hold them.
uint32_t HexEditor::BarShift() const {
    uint32_t shift = 0;
    while (RowCount() >> shift > INT32_MAX) ++shift;
    return shift;
}

void HexEditor::UpdateScrollBar() {
    if (!surface.HasWindow()) return;
    const uint32_t shift = BarShift();
    const ScrollBar bar = {static_cast<int32_t>(RowCount() >> shift), visibleRows >> shift,
                           static_cast<int32_t>(topRow >> shift)};
    if (bar == sentBar) return; // setting one costs more than painting the window
    sentBar = bar;
    surface.SetScrollBar(ScrollAxis::Vertical, bar);
}

void HexEditor::OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) {
    if (!document || axis != ScrollAxis::Vertical) return;
    const auto rows = static_cast<uint32_t>(visibleRows);
    const auto above = [this](uint64_t count) { return topRow > count ? topRow - count : 0; };
    uint64_t row = 0; // ScrollRequest::Minimum
    switch (request) {
    case ScrollRequest::LineBack:
        row = above(1);
        break;
    case ScrollRequest::LineForward:
        row = topRow + 1;
        break;
    case ScrollRequest::PageBack:
        row = above(rows);
        break;
    case ScrollRequest::PageForward:
        row = topRow + rows;
        break;
    case ScrollRequest::Track:
        // The very end is no multiple of what a coarse bar counts in.
        row = static_cast<uint64_t>(std::max(trackPosition, 0));
        row = row < RowCount() >> BarShift() ? row << BarShift() : LastTopRow();
        break;
    case ScrollRequest::Maximum:
        row = LastTopRow();
        break;
    case ScrollRequest::Minimum:
        break;
    }
    ScrollToRow(std::min(row, LastTopRow()));
    UpdateCaret(false);
}

void HexEditor::OnWheel(int32_t delta, int32_t linesPerNotch, bool ctrl) {
    const int64_t notches = wheel.Turn(delta);
    if (notches == 0) return;
    if (ctrl) return ChangeFontSize(surface.Host(), notches > 0);
    if (!document || linesPerNotch <= 0) return;
    const int64_t rows = notches * linesPerNotch;
    if (rows < 0) {
        const auto back = static_cast<uint64_t>(-rows);
        ScrollToRow(topRow > back ? topRow - back : 0);
    } else {
        ScrollToRow(std::min(topRow + static_cast<uint64_t>(rows), LastTopRow()));
    }
    UpdateCaret(false);
}

// The mouse.

uint64_t HexEditor::OffsetAt(int32_t x, int32_t y) const {
    const ViewMetrics& metrics = surface.Metrics();
    if (metrics.averageWidth <= 0 || metrics.lineHeight <= 0) return caret;
    const int64_t line = y / metrics.lineHeight;
    uint64_t row = topRow;
    if (line >= 0)
        row += static_cast<uint64_t>(line);
    else
        row -= std::min(row, static_cast<uint64_t>(-line));
    const int64_t column = (int64_t(x) - MarginPixels()) / metrics.averageWidth - offsetDigits;
    uint64_t byte = static_cast<uint64_t>(std::clamp<int64_t>(column, 0, HexColumns)) / 3;
    if (column >= TextColumn && column < TextColumn + BytesPerRow) byte = static_cast<uint64_t>(column - TextColumn);
    return std::min(row * BytesPerRow + byte, FileSize());
}

void HexEditor::OnLeftButtonDown(int32_t x, int32_t y, bool shift) {
    if (!document) return;
    surface.TakeFocus();
    if (HasSelection()) InvalidateBytes(anchor, caret);
    anchor = caret;
    MoveTo(OffsetAt(x, y), shift);
    dragging = true;
    dragX = x;
    dragY = y;
    surface.BeginDrag();
}

void HexEditor::OnMouseMove(int32_t x, int32_t y) {
    if (!dragging) return;
    dragX = x;
    dragY = y;
    OnDragTimer();
}

// The move scrolls the caret into view: a mouse held above or below the window scrolls on.
void HexEditor::OnDragTimer() {
    if (!dragging) return;
    const uint64_t offset = OffsetAt(dragX, dragY);
    if (offset != caret) MoveTo(offset, true);
}

void HexEditor::OnLeftButtonUp() {
    if (dragging) surface.EndDrag();
}

void HexEditor::OnCaptureLost() {
    if (!dragging) return;
    dragging = false;
    surface.EndDrag();
}
