#include "view/LineLayout.h"

int64_t LineLayout::PositionOf(TextSpan line, uint32_t column) const {
    const uint32_t count = column < line.length ? column : line.length;
    int64_t position = 0;
    for (uint32_t i = 0; i < count; ++i) position += WidthAt(line.text[i], position);
    return position;
}

uint32_t LineLayout::ColumnAt(TextSpan line, int64_t target) const {
    int64_t position = 0;
    uint32_t column = 0;
    while (column < line.length && position < target && line.text[column] != 0) {
        const int32_t width = WidthAt(line.text[column], position);
        if (position + width / 2 > target) break;
        position += width;
        ++column;
    }
    return column;
}

uint32_t LineLayout::ColumnsWithin(TextSpan line, int64_t limit) const {
    int64_t position = 0;
    uint32_t column = 0;
    while (column < line.length && position < limit) position += WidthAt(line.text[column++], position);
    return column;
}
