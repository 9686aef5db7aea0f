#include "view/MeasuredLine.h"

#include "base/Scan.h"

int64_t MeasuredLine::PositionOf(const LineLayout& layout, TextSpan line, LineColumn wanted) {
    const uint32_t column = wanted.column;
    if (column <= ShortLine) return layout.PositionOf(line, column);
    LinePlace from = PlaceIn({wanted.start});
    if (from.column > column) return layout.PositionOf(line, column);
    const uint32_t next = column - Lead;
    // Tabs are painted by a rule of their own, and a NUL ends what is painted: no place is remembered after one.
    if (next > from.column &&
        Scan::FindUnprintable(line.text + from.column, next - from.column) == next - from.column) {
        MoveTo(next, from, layout, line);
        start = wanted.start;
        from = place;
    }
    return layout.PositionOf(line, column, from);
}

// `from` is the last place, or the start of another line.
void MeasuredLine::MoveTo(uint32_t column, LinePlace from, const LineLayout& layout, TextSpan line) {
    place = {column, layout.PositionOf(line, column, from)};
    if (place.position <= FarthestScroll) {
        inReach = place;
    } else if (from.position <= FarthestScroll) {
        const uint32_t last = layout.ColumnsWithin(line, FarthestScroll, from) - 1;
        inReach = {last, layout.PositionOf(line, last, from)};
    }
}

void MeasuredLine::ForgetAfter(uint32_t offset) {
    if (start != NoOffset && offset < uint64_t{start} + place.column) Forget();
}
