#include "view/TextCaret.h"

#include "base/Surrogates.h"
#include "document/TextChange.h"
#include "settings/AdditionalSettings.h"
#include "view/ShownText.h"

#include <algorithm>

bool TextCaret::IsIn(const ShownText& text) const {
    return position.line < text.LineCount() && position.column <= text.Line(position.line).length &&
           offset == text.LineStart(position.line) + position.column && anchor <= text.Length();
}

void TextCaret::MoveTo(const ShownText& text, TextPosition place, bool extend, CaretStop stop) {
    preferredColumn = place.column; // not as it is clamped: beyond a short line the caret goes back there
    const uint32_t last = text.LineCount() ? text.LineCount() - 1 : 0;
    position.line = std::min(place.line, last);
    const TextSpan line = text.Line(position.line);
    const uint32_t column = std::min(place.column, line.length);
    const bool isWhole = stop == CaretStop::WholeCharacters;
    position.column = isWhole ? CaretStops::AtOrBefore(line, column) : CaretStops::OutsidePair(line, column);
    offset = text.LineStart(position.line) + position.column;
    if (!extend) anchor = offset;
}

namespace {

uint32_t OutsidePair(const ShownText& text, uint32_t offset) {
    if (!additionalSettings.WholeCharacters || offset == 0) return offset;
    return Surrogates::IsPair(text.CharacterAt(offset - 1), text.CharacterAt(offset)) ? offset - 1 : offset;
}

} // namespace

void TextCaret::SetAnchor(const ShownText& text, uint32_t newAnchor) {
    anchor = OutsidePair(text, std::min(newAnchor, text.Length()));
}

// Looks nothing up unless lines come or go: a key must not walk the text to a far caret.
void TextCaret::Follow(const ShownText& text, const TextChange& change) {
    const uint32_t moved = change.Moved(offset);
    anchor = change.Moved(anchor);
    if (change.ChangesLines()) {
        position = text.PositionOf(moved);
    } else if (position.line == change.startLine) { // elsewhere only the offset moves
        position.column += moved - offset;          // modulo 2^32
    }
    offset = moved;
    LeavePairs(text); // the change may have made one
}

void TextCaret::LeavePairs(const ShownText& text) {
    anchor = OutsidePair(text, anchor);
    const uint32_t outside = OutsidePair(text, offset);
    position.column -= offset - outside;
    offset = outside;
}
