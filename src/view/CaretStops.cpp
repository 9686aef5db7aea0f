#include "view/CaretStops.h"

#include "base/Text.h"
#include "settings/AdditionalSettings.h"
#include "viewbase/TextDirection.h"

namespace {

// The second half of a pair counts as a mark as well.
bool IsInside(TextSpan line, uint32_t column) {
    return column > 0 && column < line.length &&
           TextDirection::KindOf(line.text[column]) == TextDirection::Kind::Combining;
}

} // namespace

uint32_t CaretStops::OutsidePair(TextSpan line, uint32_t column) {
    const bool splits = additionalSettings.WholeCharacters && Text::SplitsPair(line.text, line.length, column);
    return splits ? column - 1 : column;
}

uint32_t CaretStops::AtOrBefore(TextSpan line, uint32_t column) {
    if (additionalSettings.WholeCharacters)
        while (IsInside(line, column)) --column;
    return column;
}

uint32_t CaretStops::AtOrAfter(TextSpan line, uint32_t column) {
    if (additionalSettings.WholeCharacters)
        while (IsInside(line, column)) ++column;
    return column;
}
