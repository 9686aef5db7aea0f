#include "view/MeasuredLine.h"

#include "base/Scan.h"

int64_t MeasuredLine::PositionOf(const LineLayout& layout, uint32_t lineStart, TextSpan line, uint32_t column) {
    if (column <= ShortLine) return layout.PositionOf(line, column);
    LinePlace from = PlaceIn(lineStart);
    if (from.column > column) return layout.PositionOf(line, column);
    const uint32_t next = column - Behind;
    // Tabs are painted by a rule of their own, and a NUL ends what is painted: no place lies behind one.
    if (next > from.column &&
        Scan::FindUnprintable(line.text + from.column, next - from.column) == next - from.column) {
        from = {next, layout.PositionOf(line, next, from)};
        start = lineStart;
        place = from;
    }
    return layout.PositionOf(line, column, from);
}

void MeasuredLine::TextChanged(uint32_t offset) {
    if (start != None32 && offset < uint64_t{start} + place.column) Forget();
}
