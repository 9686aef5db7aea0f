#pragma once

#include "document/TextPosition.h"
#include "document/TextRange.h"

class ShownText;
class TextCaret;

// A bracket at the caret and its partner, with their lines; none of them without one.
struct BracketPair {
    uint32_t position = NoOffset;
    uint32_t partner = NoOffset;
    uint32_t line = NoLine;
    uint32_t partnerLine = NoLine;

    bool operator==(const BracketPair&) const = default;
};

// The pair of brackets that a text view highlights, through the document's engine.
class BracketMatch {
public:
    const BracketPair& Pair() const { return pair; }
    // Another document is shown, whose engine highlights nothing yet.
    void Forget() { pair = {}; }

    // Whether a bracket is at the caret that Update would look for the partner of.
    static bool IsAtBracket(const ShownText& text, const TextCaret& caret) { return Position(text, caret) != NoOffset; }
    // Highlights the bracket at the caret and its partner, or nothing without both. No edit may be pending.
    void Update(const ShownText& text, const TextCaret& caret);
    void Clear(const ShownText& text) { Set(text, {}); }

private:
    static uint32_t Position(const ShownText& text, const TextCaret& caret);
    static BracketPair Find(const ShownText& text, const TextCaret& caret);
    void Set(const ShownText& text, const BracketPair& found);

    BracketPair pair;
};
