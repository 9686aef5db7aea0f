#include "view/Brackets.h"

bool Brackets::Identify(const Char* pairs, Char character, Bracket& bracket) {
    if (character == 0) return false;
    for (uint32_t i = 0; pairs[i] != 0 && pairs[i + 1] != 0; i += 2) {
        if (character == pairs[i]) {
            bracket = {character, pairs[i + 1], true};
            return true;
        }
        if (character == pairs[i + 1]) {
            bracket = {character, pairs[i], false};
            return true;
        }
    }
    return false;
}

uint32_t Brackets::FindPartner(const Char* text, uint32_t length, uint32_t offset, const Bracket& bracket) {
    uint32_t depth = 0;
    // Backwards the offset wraps below 0 to None32, which is not below any length.
    const uint32_t step = bracket.opens ? 1 : None32;
    for (uint32_t at = offset; at < length && text[at] != 0; at += step) {
        if (text[at] == bracket.self) {
            ++depth;
        } else if (text[at] == bracket.partner && --depth == 0) {
            return at;
        }
    }
    return None32;
}
