// Sizes of a HexEditor, its scroll bar, what is painted again, and the mouse.

#include "binary/HexEditor.h"

#include <algorithm>

namespace {

int32_t Saturate(int64_t value) { return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX)); }

} // namespace

void HexEditor::OnSize(bool) {
    if (!surface.HasWindow()) return;
    const int32_t lineHeight = surface.Metrics().lineHeight;
    visibleRows = lineHeight > 0 ? surface.Size().height / lineHeight : 0;
    surface.RenewCaret();
    UpdateCaret(false);
}

int32_t HexEditor::GutterWidth() const { return static_cast<int32_t>(offsetDigits) * surface.Metrics().averageWidth; }

int32_t HexEditor::TextLeft() const { return GutterWidth() + MarginPixels(); }

// The rows of both bytes and all between them.
void HexEditor::InvalidateBytes(uint64_t first, uint64_t second) {
    redraw.InvalidateRows(first / BytesPerRow, second / BytesPerRow, {topRow, visibleRows});
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
        ShowCaret();
        RefreshStatus();
    }
    UpdateScrollBar();
}

void HexEditor::ShowCaret() {
    const ViewMetrics& metrics = surface.Metrics();
    const auto column = static_cast<int32_t>(caret % BytesPerRow * 3 + lowNibble);
    // A row that far away is out of sight either way.
    const int64_t row = std::clamp<int64_t>(static_cast<int64_t>(caret / BytesPerRow - topRow), INT32_MIN, INT32_MAX);
    surface.ShowCaretAt({TextLeft() + column * metrics.averageWidth, Saturate(row * metrics.lineHeight)});
}

// Scrolling.

void HexEditor::ScrollToRow(uint64_t row) {
    row = std::min(row, RowCount() ? RowCount() - 1 : 0);
    if (row == topRow) return;
    topRow = row;
    Invalidate();
}

void HexEditor::UpdateScrollBar() { bars.Show(ScrollAxis::Vertical, Scrolled().Bar()); }

void HexEditor::OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) {
    if (!document || axis != ScrollAxis::Vertical) return;
    ScrollToRow(Scrolled().After(request, 1, trackPosition));
    UpdateCaret(false);
}

void HexEditor::OnWheel(const WheelTurn& turn) {
    const int64_t rows = wheel.Turn(turn, surface.Host());
    if (rows == 0 || !document) return;
    ScrollToRow(Scrolled().Moved(rows));
    UpdateCaret(false);
}

// The mouse.

uint64_t HexEditor::OffsetAt(ClientPoint point) const {
    const ViewMetrics& metrics = surface.Metrics();
    if (metrics.averageWidth <= 0 || metrics.lineHeight <= 0) return caret;
    const int64_t line = point.y / metrics.lineHeight;
    uint64_t row = topRow;
    if (line >= 0)
        row += static_cast<uint64_t>(line);
    else
        row -= std::min(row, static_cast<uint64_t>(-line));
    const int64_t column = (int64_t(point.x) - MarginPixels()) / metrics.averageWidth - offsetDigits;
    uint64_t byte = static_cast<uint64_t>(std::clamp<int64_t>(column, 0, HexColumns)) / 3;
    if (column >= TextColumn && column < TextColumn + BytesPerRow) byte = static_cast<uint64_t>(column - TextColumn);
    return std::min(row * BytesPerRow + byte, FileSize());
}

bool HexEditor::BeginSelection(ClientPoint point, bool extend) {
    if (!document) return false;
    surface.TakeFocus();
    if (HasSelection()) InvalidateBytes(anchor, caret);
    anchor = caret;
    MoveTo(OffsetAt(point), extend);
    return true;
}

void HexEditor::ExtendSelection(ClientPoint point) {
    const uint64_t offset = OffsetAt(point);
    if (offset != caret) MoveTo(offset, true);
}
