#pragma once

#include "view/TextSpan.h"
#include "viewbase/CharWidths.h"
#include "viewbase/ViewMetrics.h"

// A column of a line and where it starts, in pixels from the line's start.
struct LinePlace {
    uint32_t column = 0;
    int64_t position = 0;
};

// Where the characters of a line are, in pixels from the line's start. A tab reaches to the next multiple
// of the tab width, every other character is as wide as it is alone. The halves of a pair of surrogates share the
// width of what the pair shows.
class LineLayout {
public:
    LineLayout(const ViewMetrics& metrics, CharWidths& charWidths) : widths(charWidths), tabWidth(TabWidth(metrics)) {}

    // The width of the character in that column, which starts at pixel `position`.
    int32_t WidthAt(TextSpan line, uint32_t column, int64_t position) const {
        const Char character = line.text[column];
        if (Surrogates::IsHalf(character)) return HalfWidth(line, column);
        if (character != u'\t') return widths.Of(character);
        return static_cast<int32_t>(tabWidth - position % tabWidth);
    }
    // Where column `column` starts. `from` is a known place of the line at or before that column.
    int64_t PositionOf(TextSpan line, uint32_t column, LinePlace from = {}) const;
    // The column whose left edge is nearest to `target`, reading no further than needed. A NUL ends
    // the line.
    uint32_t ColumnAt(TextSpan line, int64_t target) const;
    // How many leading characters it takes to reach pixel `limit`, which does not lie before `from`.
    uint32_t ColumnsWithin(TextSpan line, int64_t limit, LinePlace from = {}) const;

private:
    int32_t HalfWidth(TextSpan line, uint32_t column) const;
    // Skips the characters that PrintableWithin counts. Returns how many there are.
    uint32_t SkipPrintable(const Char* text, uint32_t count, int64_t room, int64_t& position) const;

    CharWidths& widths;
    int64_t tabWidth;
};
