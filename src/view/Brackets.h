#pragma once

#include "document/TextRange.h"

// One bracket of a set in which each opening bracket is followed by its closing one.
struct Bracket {
    Char self = 0;
    Char partner = 0;
    bool opens = false; // its partner is searched forwards
};

namespace Brackets {

// False when `character` is no bracket of `pairs`.
bool Identify(const Char* pairs, Char character, Bracket& bracket);
// The offset of the bracket that balances the one at `offset`; only this pair of characters counts, and
// strings and comments are not skipped. NoOffset when there is none before the text's ends or a NUL.
uint32_t FindPartner(const Char* text, uint32_t length, uint32_t offset, const Bracket& bracket);

} // namespace Brackets
