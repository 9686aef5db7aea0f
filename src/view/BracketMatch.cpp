#include "view/BracketMatch.h"

#include "document/TextBuffer.h"
#include "settings/Settings.h"
#include "view/Brackets.h"
#include "view/ShownText.h"
#include "view/TextCaret.h"

namespace {

// Only an opener right after the caret and a closer right before it are matched: see docs/oddities.md.
uint32_t Position(const ShownText& text, const TextCaret& caret) {
    const TextSpan line = text.Line(caret.Line());
    const uint32_t column = caret.Column();
    const Char* pairs = text.Document()->Engine()->BraceCharacters();
    const Char after = column < line.length ? line.text[column] : Char(0);
    const Char before = column > 0 ? line.text[column - 1] : Char(0);
    Bracket bracket;
    if (Brackets::Identify(pairs, after, bracket) && bracket.opens) return caret.Offset();
    if (Brackets::Identify(pairs, before, bracket) && !bracket.opens) return caret.Offset() - 1;
    return NoOffset;
}

// The text must be whole: a bracket is found in the line as it is seen, and its partner in the store.
BracketPair Find(const ShownText& text, const TextCaret& caret) {
    const TextBuffer& document = *text.Document();
    const uint32_t offset = Position(text, caret);
    if (offset == NoOffset) return {};
    Bracket bracket;
    Brackets::Identify(document.Engine()->BraceCharacters(), document.Content()[offset], bracket);
    const uint32_t partner = Brackets::FindPartner(document.Content(), document.Length(), offset, bracket);
    if (partner == NoOffset) return {};
    return {{offset, caret.Line()}, {partner, text.LineOf(partner)}};
}

void Set(const ShownText& text, const BracketPair& pair) {
    const BracketPlace places[] = {pair.bracket, pair.partner};
    for (uint32_t i = 0; i < 2; ++i) {
        const BracketPlace& place = places[i];
        const HighlightRange range = {place.offset,          place.offset + 1, settings.BraceMatchFg,
                                      settings.BraceMatchBg, settings.SelBg,   place.line};
        text.Document()->Engine()->SetHighlight(i, place.offset == NoOffset ? nullptr : &range);
    }
}

} // namespace

bool BracketMatch::IsAtBracket(const ShownText& text, const TextCaret& caret) {
    return Position(text, caret) != NoOffset;
}

BracketPair BracketMatch::Highlighted(const ShownText& text) {
    const SyntaxEngine* engine = text.Document() ? text.Document()->Engine() : nullptr;
    if (!engine) return {};
    const HighlightRange bracket = engine->Highlight(0);
    const HighlightRange partner = engine->Highlight(1);
    return {{bracket.start, bracket.line}, {partner.start, partner.line}};
}

void BracketMatch::Update(const ShownText& text, const TextCaret& caret) { Set(text, Find(text, caret)); }

void BracketMatch::Clear(const ShownText& text) { Set(text, {}); }
