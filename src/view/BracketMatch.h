#pragma once

#include "document/TextPosition.h"
#include "document/TextRange.h"

class ShownText;
class TextCaret;

struct BracketPlace {
    uint32_t offset = NoOffset;
    uint32_t line = NoLine;

    bool operator==(const BracketPlace&) const = default;
};

// A bracket at the caret and its partner; neither without both.
struct BracketPair {
    BracketPlace bracket;
    BracketPlace partner;

    bool operator==(const BracketPair&) const = default;
};

// The pair of brackets that the document's engine highlights, in every view that shows the document. The view with
// the focus says which.
namespace BracketMatch {

// Whether there is a bracket at the caret of which Update would look for the partner: an opening one after the caret,
// or a closing one before it.
bool IsAtBracket(const ShownText& text, const TextCaret& caret);
// The pair that is highlighted now, whichever view found it; empty with an engine that cannot highlight.
BracketPair Highlighted(const ShownText& text);
// Highlights the bracket at the caret and its partner, or nothing without both. The partner is looked for in the store:
// the caller commits a pending edit first where IsAtBracket says that there is something to look for. So while somebody
// types beside a bracket each key goes to the store, elsewhere none does.
void Update(const ShownText& text, const TextCaret& caret);
// Highlights nothing.
void Clear(const ShownText& text);

} // namespace BracketMatch
