#include "view/LineLayout.h"

#include "base/Surrogates.h"

// Printable characters that are equally wide are skipped as a whole: a line may be 100 million characters
// long, and the caret may be at its end.

int64_t LineLayout::PositionOf(TextSpan line, uint32_t column, LinePlace from) const {
    const uint32_t count = column < line.length ? column : line.length;
    int64_t position = from.position;
    for (uint32_t i = from.column; i < count; ++i) {
        i += SkipPrintable(line.text + i, count - i, INT64_MAX, position);
        if (i < count) position += WidthAt(line, i, position);
    }
    return position;
}

uint32_t LineLayout::ColumnAt(TextSpan line, int64_t target) const {
    int64_t position = 0;
    uint32_t column = 0;
    while (column < line.length && position < target && line.text[column] != 0) {
        column += SkipPrintable(line.text + column, line.length - column, target - position, position);
        if (column == line.length || position >= target || line.text[column] == 0) break;
        const int32_t width = WidthAt(line, column, position);
        if (position + width / 2 > target) break;
        position += width;
        ++column;
    }
    return column;
}

uint32_t LineLayout::ColumnsWithin(TextSpan line, int64_t limit, LinePlace from) const {
    int64_t position = from.position;
    uint32_t column = from.column;
    while (column < line.length && position < limit) {
        column += SkipPrintable(line.text + column, line.length - column, limit - position, position);
        if (column == line.length || position >= limit) break;
        position += WidthAt(line, column, position);
        ++column;
    }
    return column;
}

int32_t LineLayout::HalfWidth(TextSpan line, uint32_t column) const {
    const Char* const at = line.text + column;
    if (column + 1 < line.length && Surrogates::IsPair(at[0], at[1]))
        return CharWidths::FirstShare(widths.OfPair(at[0], at[1]));
    // What the first half has left, so that what comes after the pair is where it ends, to the pixel.
    if (column > 0 && Surrogates::IsPair(at[-1], at[0])) {
        const int32_t both = widths.OfPair(at[-1], at[0]);
        return both - CharWidths::FirstShare(both);
    }
    return widths.Of(*at);
}

uint32_t LineLayout::SkipPrintable(const Char* text, uint32_t count, int64_t room, int64_t& position) const {
    const uint32_t skipped = widths.PrintableWithin(text, count, room);
    position += int64_t{skipped} * widths.PrintableWidth();
    return skipped;
}
