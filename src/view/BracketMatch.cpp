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

BracketPair Find(const ShownText& text, const TextCaret& caret) {
    const TextBuffer& document = *text.Document();
    BracketPair found;
    found.position = Position(text, caret);
    if (found.position == NoOffset) return {};
    Bracket bracket;
    Brackets::Identify(document.Engine()->BraceCharacters(), document.Content()[found.position], bracket);
    found.partner = Brackets::FindPartner(document.Content(), document.Length(), found.position, bracket);
    if (found.partner == NoOffset) return {};
    found.line = caret.Line();
    found.partnerLine = text.LineOf(found.partner);
    return found;
}

void Set(const ShownText& text, const BracketPair& pair) {
    const uint32_t offsets[] = {pair.position, pair.partner};
    const uint32_t lines[] = {pair.line, pair.partnerLine};
    for (uint32_t i = 0; i < 2; ++i) {
        const HighlightRange range = {offsets[i],     offsets[i] + 1, settings.BraceMatchFg, settings.BraceMatchBg,
                                      settings.SelBg, lines[i]};
        text.Document()->Engine()->SetHighlight(i, offsets[i] == NoOffset ? nullptr : &range);
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
    return {bracket.start, partner.start, bracket.line, partner.line};
}

void BracketMatch::Update(const ShownText& text, const TextCaret& caret) { Set(text, Find(text, caret)); }

void BracketMatch::Clear(const ShownText& text) { Set(text, {}); }
