#include "view/CaretStops.h"

#include "base/Surrogates.h"
#include "settings/AdditionalSettings.h"
#include "viewbase/TextDirection.h"

namespace {

// Half a pair alone is no mark of the character before it.
bool IsInside(TextSpan line, uint32_t column) {
    if (column == 0 || column >= line.length) return false;
    const Char next = line.text[column];
    return Surrogates::IsSecond(next) ? Surrogates::SplitsPair(line.text, line.length, column)
                                      : TextDirection::KindOf(next) == TextDirection::Kind::Combining;
}

} // namespace

uint32_t CaretStops::OutsidePair(TextSpan line, uint32_t column) {
    const bool splits = additionalSettings.WholeCharacters && Surrogates::SplitsPair(line.text, line.length, column);
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
