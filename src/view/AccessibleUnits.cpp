#include "view/AccessibleUnits.h"

#include "base/Surrogates.h"
#include "base/Text.h"
#include "view/CaretStops.h"
#include "view/Punctuation.h"
#include "view/ShownText.h"

#include <algorithm>

namespace {

// The units that the text has.
enum class Piece { Character, Word, Line, Document };

Piece PieceOf(AccessibleUnit unit) {
    switch (unit) {
    case AccessibleUnit::Character:
        return Piece::Character;
    case AccessibleUnit::Format:
    case AccessibleUnit::Word:
        return Piece::Word;
    case AccessibleUnit::Line:
    case AccessibleUnit::Paragraph:
        return Piece::Line;
    default:
        return Piece::Document;
    }
}

enum class Kind { LineFeed, Blank, Letter, Mark };

bool IsBetween(Char c, Char first, Char last) { return c >= first && c <= last; }

// The caret's words are ASCII only; somebody who listens would hear "Za", "ż", "ółć".
bool IsLetter(Char c) {
    if (c < 0xC0) return Text::IsWordChar(c) || c == 0xAA || c == 0xB5 || c == 0xBA;
    return !Punctuation::Contains(c);
}

bool IsBlank(Char c) { return Text::IsBlank(c) || c == 0xA0 || IsBetween(c, 0x2000, 0x200A) || c == 0x3000; }

Kind KindOf(Char c) {
    if (c == u'\n') return Kind::LineFeed;
    if (IsBlank(c)) return Kind::Blank;
    return IsLetter(c) ? Kind::Letter : Kind::Mark;
}

bool IsWordStart(Char before, Char after) {
    const Kind left = KindOf(before);
    const Kind right = KindOf(after);
    if (left == Kind::LineFeed || right == Kind::LineFeed) return true;
    return left != Kind::Blank && left != right;
}

// Whether a character or word starts at `offset`, which is inside the text.
bool IsStart(const ShownText& text, Piece piece, uint32_t offset) {
    const Char before = text.CharacterAt(offset - 1);
    const Char after = text.CharacterAt(offset);
    if (before == u'\n') return true;
    const Char second = Surrogates::IsFirst(after) ? text.CharacterAt(offset + 1) : Char{0};
    if (CaretStops::IsInsideCharacter(before, after, second)) return false;
    return piece == Piece::Character || IsWordStart(before, after);
}

// A start shows in the characters around it, so that either way nothing else has to be looked at.
uint32_t NextStart(const ShownText& text, Piece piece, uint32_t offset, uint32_t end) {
    do ++offset;
    while (offset < end && !IsStart(text, piece, offset));
    return offset;
}

uint32_t PreviousStart(const ShownText& text, Piece piece, uint32_t offset) {
    do --offset;
    while (offset > 0 && !IsStart(text, piece, offset));
    return offset;
}

// One lookup, however many lines are passed over.
uint32_t MoveLinesOn(const ShownText& text, uint32_t offset, uint32_t count, uint32_t& moved) {
    const uint32_t last = text.LineCount() - 1;
    const uint32_t ahead = last - text.LineOf(offset);
    if (count <= ahead) {
        moved = count;
        return text.LineStart(last - ahead + count);
    }
    // The text's end is one more place to go to, unless the last line is empty and starts there.
    moved = ahead + (text.Length() > std::max(offset, text.LineStart(last)) ? 1 : 0);
    return text.Length();
}

uint32_t MoveLinesBack(const ShownText& text, uint32_t offset, uint32_t count, uint32_t& moved) {
    const TextPosition from = text.PositionOf(offset);
    const uint32_t toOwnStart = from.column > 0 ? 1 : 0;
    moved = std::min(count, from.line + toOwnStart);
    return text.LineStart(from.line + toOwnStart - moved);
}

uint32_t MoveOn(const ShownText& text, Piece piece, uint32_t offset, uint32_t count, uint32_t& moved) {
    const uint32_t end = text.Length();
    if (piece == Piece::Line) return MoveLinesOn(text, offset, count, moved);
    if (piece == Piece::Document) {
        moved = offset < end ? 1 : 0;
        return end;
    }
    for (moved = 0; moved < count && offset < end; ++moved) offset = NextStart(text, piece, offset, end);
    return offset;
}

uint32_t MoveBack(const ShownText& text, Piece piece, uint32_t offset, uint32_t count, uint32_t& moved) {
    if (piece == Piece::Line) return MoveLinesBack(text, offset, count, moved);
    if (piece == Piece::Document) {
        moved = offset > 0 ? 1 : 0;
        return 0;
    }
    for (moved = 0; moved < count && offset > 0; ++moved) offset = PreviousStart(text, piece, offset);
    return offset;
}

} // namespace

uint32_t AccessibleUnits::StartOf(const ShownText& text, AccessibleUnit unit, uint32_t offset) {
    const Piece piece = PieceOf(unit);
    const uint32_t end = text.Length();
    if (piece == Piece::Document) return 0;
    if (piece == Piece::Line) return text.LineStart(text.LineOf(std::min(offset, end)));
    if (offset >= end) return end;
    return offset == 0 || IsStart(text, piece, offset) ? offset : PreviousStart(text, piece, offset);
}

uint32_t AccessibleUnits::Move(const ShownText& text, AccessibleUnit unit, uint32_t offset, int32_t count,
                               int32_t& moved) {
    const Piece piece = PieceOf(unit);
    uint32_t steps = 0;
    uint32_t reached = offset;
    if (count > 0) reached = MoveOn(text, piece, offset, static_cast<uint32_t>(count), steps);
    // The count may be the one that has no positive counterpart.
    if (count < 0) reached = MoveBack(text, piece, offset, 0 - static_cast<uint32_t>(count), steps);
    moved = count < 0 ? static_cast<int32_t>(0 - steps) : static_cast<int32_t>(steps);
    return reached;
}

uint32_t AccessibleUnits::LastStart(const ShownText& text, AccessibleUnit unit) {
    const uint32_t end = text.Length();
    return StartOf(text, unit, PieceOf(unit) == Piece::Line || end == 0 ? end : end - 1);
}
