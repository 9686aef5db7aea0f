#include "base/ScanBytes.h"

#include "base/Scan.h"
#include "base/ScanVector.h"
#include "base/Text.h"

#include <algorithm>
#include <cstring>

// As the search over characters does, a step tests for two bytes of the pattern at many positions at
// once, and only where both stand is the whole pattern compared.

using namespace Scan::Vector;

namespace {

constexpr size_t Positions = 32; // tested in one step

uint8_t Fold(uint8_t byte) { return static_cast<uint8_t>(Text::FoldCase(byte)); }

bool StandsAt(const uint8_t* bytes, const uint8_t* pattern, size_t n, bool matchCase) {
    if (matchCase) return std::memcmp(bytes, pattern, n) == 0;
    for (size_t i = 0; i < n; ++i)
        if (Fold(bytes[i]) != Fold(pattern[i])) return false;
    return true;
}

// A guess that holds for programs, pictures and texts alike.
unsigned CommonnessOf(uint8_t byte) {
    if (byte == 0) return 5;
    if (byte == 0xFF || byte == ' ') return 4;
    if (Fold(byte) >= 'a' && Fold(byte) <= 'z') return 3;
    return byte >= 0x20 && byte < 0x7F ? 2 : 1;
}

// Looks only so far into a long pattern: choosing must cost little against one search.
constexpr size_t ProbedBytes = 128;

size_t RarestOffset(const uint8_t* pattern, size_t n, size_t except) {
    n = std::min(n, ProbedBytes);
    size_t best = except == 0 && n > 1 ? 1 : 0;
    for (size_t i = 0; i < n; ++i)
        if (i != except && CommonnessOf(pattern[i]) < CommonnessOf(pattern[best])) best = i;
    return best;
}

// One byte of the pattern to test for. Both cases of a letter become the same one by the bit that tells
// them apart, and nothing else does.
struct Probe {
    size_t offset;
    __m128i caseBit;
    __m128i byte;

    Probe(const uint8_t* pattern, size_t offset, bool matchCase) : offset(offset) {
        const bool folds = !matchCase && Text::IsAsciiLetter(pattern[offset]);
        caseBit = _mm_set1_epi8(folds ? 0x20 : 0);
        byte = _mm_set1_epi8(static_cast<char>(folds ? Fold(pattern[offset]) : pattern[offset]));
    }
    __m128i At(const uint8_t* bytes) const { return _mm_cmpeq_epi8(_mm_or_si128(Load(bytes + offset), caseBit), byte); }
};

class Pattern {
public:
    Pattern(const uint8_t* pattern, size_t n, bool matchCase)
        : pattern(pattern), n(n), matchCase(matchCase),
          first(pattern, RarestOffset(pattern, n, Scan::NotFound), matchCase),
          second(pattern, RarestOffset(pattern, n, first.offset), matchCase) {}

    // One bit for each position at `bytes` where the pattern may stand.
    uint32_t Candidates(const uint8_t* bytes) const {
        const __m128i low = _mm_and_si128(first.At(bytes), second.At(bytes));
        const __m128i high = _mm_and_si128(first.At(bytes + 16), second.At(bytes + 16));
        if (!ByteMask(_mm_or_si128(low, high))) return 0;
        return ByteMask(low) | ByteMask(high) << 16;
    }
    bool Stands(const uint8_t* bytes) const { return StandsAt(bytes, pattern, n, matchCase); }

private:
    const uint8_t* pattern;
    size_t n;
    bool matchCase;
    Probe first;
    Probe second;
};

} // namespace

// At every position below `end` the whole pattern fits into the bytes.

size_t Scan::FindBytes(const uint8_t* bytes, size_t count, const uint8_t* sought, size_t n, bool matchCase) {
    if (n > count) return NotFound;
    const size_t end = count - n + 1;
    const Pattern pattern(sought, n, matchCase);
    size_t at = 0;
    for (; at + Positions <= end; at += Positions) {
        for (uint32_t mask = pattern.Candidates(bytes + at); mask; mask &= mask - 1)
            if (pattern.Stands(bytes + at + FirstBit(mask))) return at + FirstBit(mask);
    }
    for (; at < end; ++at)
        if (pattern.Stands(bytes + at)) return at;
    return NotFound;
}

size_t Scan::FindLastBytes(const uint8_t* bytes, size_t count, const uint8_t* sought, size_t n, bool matchCase) {
    if (n > count) return NotFound;
    size_t end = count - n + 1;
    const Pattern pattern(sought, n, matchCase);
    for (; end >= Positions; end -= Positions) {
        const size_t start = end - Positions;
        uint32_t mask = pattern.Candidates(bytes + start);
        while (mask) {
            const size_t bit = LastBit(mask);
            if (pattern.Stands(bytes + start + bit)) return start + bit;
            mask ^= uint32_t{1} << bit;
        }
    }
    while (end--)
        if (pattern.Stands(bytes + end)) return end;
    return NotFound;
}

size_t Scan::Reference::FindBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n,
                                  bool matchCase) {
    for (size_t at = 0; at + n <= count; ++at)
        if (StandsAt(bytes + at, pattern, n, matchCase)) return at;
    return NotFound;
}

size_t Scan::Reference::FindLastBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n,
                                      bool matchCase) {
    for (size_t end = count; end >= n; --end)
        if (StandsAt(bytes + end - n, pattern, n, matchCase)) return end - n;
    return NotFound;
}
