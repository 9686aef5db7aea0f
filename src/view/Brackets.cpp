#include "view/Brackets.h"

#include "base/Scan.h"

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
    const size_t found = bracket.opens ? Scan::FindBalanceForward(text, length, offset, bracket.self, bracket.partner)
                                       : Scan::FindBalanceBackward(text, offset, bracket.self, bracket.partner);
    return found == Scan::NotFound ? NoOffset : static_cast<uint32_t>(found);
}
