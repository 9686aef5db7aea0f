#include "view/TextCaret.h"

#include "document/TextChange.h"
#include "view/ShownText.h"

#include <algorithm>

void TextCaret::MoveTo(const ShownText& text, TextPosition place, bool extend) {
    preferredColumn = place.column;
    const uint32_t last = text.LineCount() ? text.LineCount() - 1 : 0;
    position.line = std::min(place.line, last);
    position.column = std::min(place.column, text.Line(position.line).length);
    offset = text.LineStart(position.line) + position.column;
    if (!extend) anchor = offset;
}

void TextCaret::SetAnchor(const ShownText& text, uint32_t newAnchor) { anchor = std::min(newAnchor, text.Length()); }

// Looks nothing up unless lines come or go: a key must not walk the text to a far caret.
void TextCaret::Follow(const ShownText& text, const TextChange& change) {
    const uint32_t moved = change.Moved(offset);
    anchor = change.Moved(anchor);
    if (change.ChangesLines()) {
        position = text.PositionOf(moved);
    } else if (position.line == change.startLine) {
        position.column += moved - offset; // modulo 2^32
    }
    offset = moved;
}
