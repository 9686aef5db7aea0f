#include "base/Scan.h"
#include "base/ScanVector.h"
#include "base/Text.h"

#include <algorithm>

// Substring search. Of the pattern two characters are chosen that source text rarely holds; a step
// tests for both of them at 32 positions at once, and only where both match is the whole pattern
// compared. Testing the first and the last character instead is slower by half on patterns that begin
// like much of the text does.

using namespace Scan::Vector;

namespace {

// How common the ASCII characters are in C++ source text: 17 plus the binary logarithm of their share,
// no less than 0. Characters beyond ASCII count as rarest.
constexpr uint8_t Commonness[128] = {
    0,  0,  0,  0,  0,  0,  0,  0,  0,  9,  12, 0,  0,  0,  0,  0,  //
    0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  0,  //
    14, 5,  7,  9,  1,  3,  7,  6,  11, 11, 11, 6,  10, 9,  9,  10, // space to /
    10, 9,  9,  8,  7,  9,  7,  6,  7,  8,  8,  9,  8,  8,  8,  2,  // 0 to ?
    6,  10, 9,  11, 9,  11, 9,  9,  8,  11, 6,  8,  11, 10, 11, 11, // @ to O
    10, 6,  11, 11, 11, 9,  8,  7,  9,  8,  5,  6,  7,  6,  2,  13, // P to _
    4,  12, 10, 12, 11, 13, 11, 10, 11, 12, 6,  10, 11, 10, 12, 12, // ` to o
    11, 6,  12, 12, 13, 11, 9,  9,  9,  10, 7,  7,  5,  7,  2,  0,  // p to DEL
};

unsigned CommonnessOf(Char c, bool matchCase) {
    if (c >= 128) return 0;
    const unsigned own = Commonness[c];
    return matchCase || !Text::IsAsciiLetter(c) ? own : std::max<unsigned>(own, Commonness[c ^ 0x20]);
}

// A character of the pattern to test for. Setting the bit in which the two cases of a letter differ makes
// them equal, and nothing else becomes equal to them. With case that bit is 0: leaving the step out would gain
// nothing, as g++ 12 then keeps what it compares on the stack.
struct Probe {
    size_t offset;
    __m128i caseBit;
    __m128i character;

    Probe(const Char* pattern, size_t place, bool matchCase) : offset(place) {
        const bool folds = !matchCase && Text::IsAsciiLetter(pattern[offset]);
        caseBit = Fill(folds ? 0x20 : 0);
        character = Fill(folds ? Text::FoldCase(pattern[offset]) : pattern[offset]);
    }

    Matches At(const Char* text) const {
        return TestBlock(text + offset,
                         [this](__m128i block) { return _mm_cmpeq_epi16(_mm_or_si128(block, caseBit), character); });
    }
};

// The place of the rarest character of the pattern but for the one at `except`.
size_t RarestOffset(const Scan::Pattern& pattern, size_t except) {
    const auto commonness = [&](size_t place) { return CommonnessOf(pattern.text[place], pattern.matchCase); };
    size_t best = except == 0 && pattern.length > 1 ? 1 : 0;
    for (size_t i = 0; i < pattern.length; ++i)
        if (i != except && commonness(i) < commonness(best)) best = i;
    return best;
}

// A pattern with its two probes.
class Prepared {
public:
    explicit Prepared(const Scan::Pattern& wanted)
        : pattern(wanted), first(pattern.text, RarestOffset(pattern, Scan::NotFound), pattern.matchCase),
          second(pattern.text, RarestOffset(pattern, first.offset), pattern.matchCase) {}

    // One bit for each of the 32 positions at `text` where the pattern may match.
    uint32_t Candidates(const Char* text) const {
        const Matches one = first.At(text);
        const Matches two = second.At(text);
        const Matches both = {_mm_and_si128(one.a, two.a), _mm_and_si128(one.b, two.b), _mm_and_si128(one.c, two.c),
                              _mm_and_si128(one.d, two.d)};
        return both.Any() ? both.Mask() : 0;
    }

    bool MatchesAt(const Char* text) const {
        return pattern.matchCase ? Text::EqualCount(text, pattern.text, pattern.length)
                                 : Text::EqualCountNoCase(text, pattern.text, pattern.length);
    }

private:
    const Scan::Pattern pattern;
    Probe first;
    Probe second;
};

// False without a position at which the whole pattern fits into the text. What is left fits, so that no step of the
// loops below reads past the text.
bool KeepFitting(Scan::Positions& at, size_t count, const Scan::Pattern& pattern) {
    if (pattern.length > count) return false;
    at.end = std::min(at.end, count - pattern.length + 1);
    return at.start < at.end;
}

} // namespace

size_t Scan::FindForward(const Char* text, size_t count, Positions at, const Pattern& pattern) {
    if (!KeepFitting(at, count, pattern)) return NotFound;
    const Prepared prepared(pattern);
    size_t from = at.start;
    for (; at.end - from >= Block; from += Block) {
        for (uint32_t mask = prepared.Candidates(text + from); mask; mask &= mask - 1) {
            const size_t candidate = from + FirstBit(mask);
            if (prepared.MatchesAt(text + candidate)) return candidate;
        }
    }
    for (; from < at.end; ++from)
        if (prepared.MatchesAt(text + from)) return from;
    return NotFound;
}

size_t Scan::FindBackward(const Char* text, size_t count, Positions at, const Pattern& pattern) {
    if (!KeepFitting(at, count, pattern)) return NotFound;
    const Prepared prepared(pattern);
    size_t end = at.end;
    for (; end - at.start >= Block; end -= Block) {
        const size_t start = end - Block;
        uint32_t mask = prepared.Candidates(text + start);
        while (mask) {
            const size_t bit = LastBit(mask);
            if (prepared.MatchesAt(text + start + bit)) return start + bit;
            mask ^= uint32_t{1} << bit;
        }
    }
    while (end-- > at.start)
        if (prepared.MatchesAt(text + end)) return end;
    return NotFound;
}
