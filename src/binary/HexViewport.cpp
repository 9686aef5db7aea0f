#include "binary/HexViewport.h"

#include <algorithm>

void HexViewport::Reset(uint64_t size) {
    fileSize = size;
    rows.top = 0;
    // One more than the size needs, rounded up to an even number.
    offsetDigits = (1 + HexText::CountDigits(size) + 1) / 2 * 2;
}

void HexViewport::Measure() {
    if (surface.HasWindow()) CountRows();
}

int32_t HexViewport::GutterWidth() const { return static_cast<int32_t>(offsetDigits) * surface.Metrics().averageWidth; }

void HexViewport::ScrollTo(uint64_t row) {
    row = std::min(row, RowCount() ? RowCount() - 1 : 0);
    if (row == rows.top) return;
    rows.top = row;
    redraw.InvalidateAll();
}

void HexViewport::ScrollIntoView(uint64_t offset) {
    const uint64_t top = rows.TopToShow(offset / BytesPerRow);
    if (top != rows.top) ScrollTo(top);
}

void HexViewport::UpdateScrollBar() { bars.Show(ScrollAxis::Vertical, ScrolledRows().Bar()); }

void HexViewport::ForgetScrollBars() {
    bars.Forget();
    bars.Show(ScrollAxis::Horizontal, {0, 1, 0}); // nothing ever scrolls sideways
}

void HexViewport::ShowCaret(uint64_t offset, bool lowNibble) {
    const ViewMetrics& metrics = surface.Metrics();
    const auto column = static_cast<int32_t>(offset % BytesPerRow * HexText::PerByte + lowNibble);
    // A row that far away is out of sight either way.
    const int64_t row =
        std::clamp<int64_t>(static_cast<int64_t>(offset / BytesPerRow - rows.top), INT32_MIN, INT32_MAX);
    surface.ShowCaretAt({TextLeft() + column * metrics.averageWidth, Saturate(row * metrics.lineHeight)});
}

uint64_t HexViewport::OffsetAt(ClientPoint point, uint64_t withoutFont) const {
    const ViewMetrics& metrics = surface.Metrics();
    if (metrics.averageWidth <= 0 || metrics.lineHeight <= 0) return withoutFont;
    const int64_t line = point.y / metrics.lineHeight;
    uint64_t row = rows.top;
    if (line >= 0)
        row += static_cast<uint64_t>(line);
    else
        row -= std::min(row, static_cast<uint64_t>(-line));
    const int64_t column = (int64_t(point.x) - MarginPixels(metrics)) / metrics.averageWidth - offsetDigits;
    uint64_t byte = static_cast<uint64_t>(std::clamp<int64_t>(column, 0, HexColumns)) / HexText::PerByte;
    if (column >= TextColumn && column < TextColumn + BytesPerRow) byte = static_cast<uint64_t>(column - TextColumn);
    return std::min(row * BytesPerRow + byte, fileSize);
}
