#pragma once

#include "document/TextPosition.h"
#include "document/TextRange.h"
#include "view/CaretStops.h"

class ShownText;
struct TextChange;

// Caret and selection of a text view. Line, column and offset of the caret always mean the same place. The
// selection reaches from the anchor to the caret, whichever comes first, and is empty when both are one.
class TextCaret {
public:
    uint32_t Line() const { return position.line; }
    uint32_t Column() const { return position.column; }
    TextPosition Position() const { return position; }
    uint32_t Offset() const { return offset; }
    uint32_t Anchor() const { return anchor; }
    TextSelection Selection() const { return {anchor, offset}; }
    // The column that was asked for last, kept for moves up and down across shorter lines.
    uint32_t PreferredColumn() const { return preferredColumn; }
    bool HasSelection() const { return anchor != offset; }
    uint32_t SelectionStart() const { return anchor < offset ? anchor : offset; }
    uint32_t SelectionEnd() const { return anchor < offset ? offset : anchor; }

    // Whether line, column and offset are one place of the text, and the anchor is in it.
    bool IsIn(const ShownText& text) const;
    // Clamps the place to the text, and to where the caret may stop. Extending leaves the anchor where it is.
    void MoveTo(const ShownText& text, TextPosition place, bool extend, CaretStop stop = CaretStop::OutsidePairs);
    // Moves the other end of the selection, clamped to the text and to the outside of pairs.
    void SetAnchor(const ShownText& text, uint32_t newAnchor);
    // Empties the selection at the caret.
    void Collapse() { anchor = offset; }
    // Stays at its place in the text, both ends of the selection alike, after an edit that does not say where this view
    // goes.
    void Follow(const ShownText& text, const TextChange& change);
    // Caret and anchor, to the outside of pairs: a setting may say so now.
    void LeavePairs(const ShownText& text);

private:
    TextPosition position;
    uint32_t offset = 0;
    uint32_t anchor = 0;
    uint32_t preferredColumn = 0;
};
