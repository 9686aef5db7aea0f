#include "base/Scan.h"

#include "base/ScanVector.h"

// Most blocks hold fewer closing marks than are open, so that the balance cannot be reached in them: their
// marks are only counted.

namespace {

using namespace Scan::Vector;

// Where marks are in a block, a bit for each character.
struct Marks {
    uint32_t self;
    uint32_t partner;
    uint32_t nul;

    Marks(const Char* block, Char selfMark, Char partnerMark) {
        const auto find = [block](Char mark) {
            const __m128i wanted = Fill(mark);
            return TestBlock(block, [wanted](__m128i text) { return _mm_cmpeq_epi16(text, wanted); }).Mask();
        };
        self = find(selfMark);
        partner = find(partnerMark);
        nul = find(0);
    }
    bool MayEndAt(size_t depth) const { return nul != 0 || depth <= static_cast<size_t>(std::popcount(partner)); }
    void Count(size_t& depth) const {
        depth += static_cast<size_t>(std::popcount(self));
        depth -= static_cast<size_t>(std::popcount(partner));
    }
};

// One character of the search. True when it ends here, with the balance or at a NUL.
bool EndsAt(Char character, Char self, Char partner, size_t& depth) {
    if (character == self) ++depth;
    return character == 0 || (character == partner && --depth == 0);
}

// A NUL ends the search without an answer.
size_t Answer(const Char* text, size_t at) { return text[at] != 0 ? at : Scan::NotFound; }

} // namespace

size_t Scan::FindBalanceForward(const Char* text, size_t count, size_t from, Char self, Char partner) {
    size_t depth = 0;
    size_t at = from;
    while (at < count) {
        size_t end = count;
        if (count - at >= Block) {
            const Marks marks(text + at, self, partner);
            end = at + Block;
            if (!marks.MayEndAt(depth)) {
                marks.Count(depth);
                at = end;
                continue;
            }
        }
        for (; at < end; ++at) {
            if (EndsAt(text[at], self, partner, depth)) return Answer(text, at);
        }
    }
    return NotFound;
}

size_t Scan::FindBalanceBackward(const Char* text, size_t from, Char self, Char partner) {
    size_t depth = 0;
    size_t end = from + 1;
    while (end > 0) {
        size_t start = 0;
        if (end >= Block) {
            start = end - Block;
            const Marks marks(text + start, self, partner);
            if (!marks.MayEndAt(depth)) {
                marks.Count(depth);
                end = start;
                continue;
            }
        }
        for (; end > start; --end) {
            if (EndsAt(text[end - 1], self, partner, depth)) return Answer(text, end - 1);
        }
    }
    return NotFound;
}
