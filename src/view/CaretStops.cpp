#include "view/CaretStops.h"

#include "base/CombiningMarks.h"
#include "base/Surrogates.h"
#include "settings/AdditionalSettings.h"

namespace {

bool IsInside(TextSpan line, uint32_t column) {
    if (column == 0 || column >= line.length) return false;
    const Char* const at = line.text + column;
    return CaretStops::IsInsideCharacter(at[-1], at[0], column + 1 < line.length ? at[1] : Char{0});
}

} // namespace

bool CaretStops::IsInsideCharacter(Char before, Char after, Char second) {
    if (!Surrogates::IsHalf(after)) return CombiningMarks::IsMark(after);
    if (Surrogates::IsPair(before, after)) return true;
    return Surrogates::IsPair(after, second) && CombiningMarks::IsMark(Surrogates::CodePoint(after, second));
}

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
