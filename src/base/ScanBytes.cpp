#include "base/ScanBytes.h"

#include "base/Scan.h"
#include "base/ScanVector.h"
#include "base/Text.h"

#include <algorithm>
#include <cstring>

// There are two ways to pass over bytes at which a pattern cannot match.
//
// Probes: of the pattern two bytes are chosen that are rare in texts and programs. A step tests 128
// positions for the rarer one, and only where it matches are the other one and then the whole pattern
// looked at. This is best when the rarer byte hardly ever occurs.
//
// Grams, for long patterns of common bytes, such as words: wherever the pattern matches, one of every so
// many places in the text holds six bytes that follow each other in the pattern. Only those places are
// looked at, and the six bytes looked up in a table.

using namespace Scan::Vector;
using Scan::ByteFinder;
using Scan::ByteProbe;

namespace {

constexpr size_t Step = 128; // positions that probes test at once
constexpr size_t Group = 64; // positions in one mask

constexpr size_t GramSize = 6;
constexpr size_t LoadSize = sizeof(uint64_t); // a gram is loaded together with what follows it
constexpr size_t ShortestForGrams = 16;       // below, too many places would have to be looked at
constexpr size_t LongestForGrams = 64;        // above, too much of the table would be taken
constexpr size_t Places = 8;                  // looked at in one group

uint8_t Fold(uint8_t byte) { return static_cast<uint8_t>(Text::FoldCase(byte)); }

struct ByteTable {
    uint8_t of[256];
};

// A guess at how common bytes are that holds for programs, pictures and texts alike: zeros, ones and
// blanks, then letters in the order of English, then what else can be read, then the rest.
constexpr uint8_t CommonFromHere = 10;
constexpr ByteTable Commonness = [] {
    constexpr char Letters[] = "qjzxkvwybgpfmhudlcrsinoate";
    ByteTable table = {};
    for (unsigned byte = 0; byte < 256; ++byte) table.of[byte] = byte > ' ' && byte < 0x7F ? CommonFromHere : 5;
    for (uint8_t i = 0; i < 26; ++i) {
        const auto letter = static_cast<uint8_t>(Letters[i]);
        table.of[letter] = table.of[letter - 0x20] = static_cast<uint8_t>(CommonFromHere + i);
    }
    table.of[0] = table.of[0x20] = table.of[0xFF] = 40;
    return table;
}();

// Looks only so far into a long pattern: choosing must cost little against one search.
constexpr size_t ProbedBytes = 128;

size_t RarestOffset(const uint8_t* pattern, size_t n, size_t except) {
    n = std::min(n, ProbedBytes);
    size_t best = except == 0 && n > 1 ? 1 : 0;
    for (size_t i = 0; i < n; ++i)
        if (i != except && Commonness.of[pattern[i]] < Commonness.of[pattern[best]]) best = i;
    return best;
}

__m128i ProbeAt(const ByteProbe& probe, const uint8_t* bytes) {
    return _mm_cmpeq_epi8(_mm_or_si128(Load(bytes + probe.offset), probe.caseBit), probe.byte);
}

bool ProbeMatches(const ByteProbe& probe, const uint8_t* bytes) {
    const uint8_t byte = bytes[probe.offset];
    return (probe.folds ? Fold(byte) : byte) == probe.value;
}

// One bit for each position of a group at which the probe's byte is.
uint64_t InGroup(const ByteProbe& probe, const uint8_t* bytes) {
    const uint64_t low = ByteMask(ProbeAt(probe, bytes)) | ByteMask(ProbeAt(probe, bytes + 16)) << 16;
    const uint64_t high = ByteMask(ProbeAt(probe, bytes + 32)) | ByteMask(ProbeAt(probe, bytes + 48)) << 16;
    return low | high << 32;
}

template <bool folding> size_t Skip(const ByteProbe& probe, const uint8_t* step, ptrdiff_t stride, size_t count) {
    const __m128i bit = probe.caseBit; // locals, for the compiler to keep them in registers
    const __m128i wanted = probe.byte;
    const auto test = [=](const uint8_t* at) {
        return _mm_cmpeq_epi8(folding ? _mm_or_si128(Load(at), bit) : Load(at), wanted);
    };
    step += probe.offset;
    for (size_t passed = 0; passed < count; ++passed, step += stride) {
        __m128i any = test(step);
        for (size_t i = 16; i < Step; i += 16) any = _mm_or_si128(any, test(step + i));
        if (ByteMask(any)) return passed;
    }
    return count;
}

// How many of `count` steps pass without the probe's byte; each is `stride` from the one before.
size_t StepsWithout(const ByteProbe& probe, const uint8_t* step, ptrdiff_t stride, size_t count) {
    return probe.folds ? Skip<true>(probe, step, stride, count) : Skip<false>(probe, step, stride, count);
}

// The multiplication drops what follows the gram. Of its result the upper bits are the better mixed ones.
template <bool folding> uint64_t GramHash(const uint8_t* bytes, size_t loaded = LoadSize) {
    uint64_t gram = 0;
    std::memcpy(&gram, bytes, loaded);
    // That the case bit of other characters than letters is lost too only makes the table less exact.
    if (folding) gram |= 0x2020202020202020;
    return gram * (0x9E3779B97F4A7C15 << 8 * (LoadSize - GramSize));
}

size_t GramIndex(uint64_t hash) { return hash >> (64 - ByteFinder::GramBits); }

// Tells grams apart that fall on the same byte of the table.
uint8_t GramBit(uint64_t hash) { return static_cast<uint8_t>(1u << (hash >> (61 - ByteFinder::GramBits) & 7)); }

// How many of `count` places pass before one that holds a gram; each is `stride` from the one before.
template <bool folding> size_t PassPlaces(const uint8_t* grams, const uint8_t* place, ptrdiff_t stride, size_t count) {
    const auto at = [=](const uint8_t* bytes) -> unsigned { return grams[GramIndex(GramHash<folding>(bytes))]; };
    const auto atFour = [=](const uint8_t* bytes) {
        return at(bytes) | at(bytes + stride) | at(bytes + 2 * stride) | at(bytes + 3 * stride);
    };
    for (size_t passed = 0; passed < count;) {
        while (count - passed >= Places && !(atFour(place) | atFour(place + 4 * stride))) {
            passed += Places;
            place += ptrdiff_t{Places} * stride;
        }
        for (const size_t groupEnd = std::min(count, passed + Places); passed < groupEnd; ++passed, place += stride) {
            const uint64_t hash = GramHash<folding>(place);
            if (grams[GramIndex(hash)] & GramBit(hash)) return passed;
        }
    }
    return count;
}

} // namespace

bool Scan::EqualBytes(const uint8_t* left, const uint8_t* right, size_t count, bool matchCase) {
    if (matchCase) return std::memcmp(left, right, count) == 0;
    for (size_t i = 0; i < count; ++i)
        if (Fold(left[i]) != Fold(right[i])) return false;
    return true;
}

ByteProbe::ByteProbe(const uint8_t* pattern, size_t place, bool matchCase)
    : offset(place), folds(!matchCase && Text::IsAsciiLetter(pattern[place])),
      value(folds ? Fold(pattern[place]) : pattern[place]), caseBit(_mm_set1_epi8(folds ? 0x20 : 0)),
      byte(_mm_set1_epi8(static_cast<char>(value))) {}

ByteFinder::ByteFinder(const uint8_t* wanted, size_t length, bool withCase)
    : pattern(wanted), n(length), matchCase(withCase), first(pattern, RarestOffset(pattern, n, NotFound), matchCase),
      second(pattern, RarestOffset(pattern, n, first.offset), matchCase) {
    if (n >= ShortestForGrams && Commonness.of[pattern[first.offset]] >= CommonFromHere) CollectGrams();
}

// At every position below `end` the whole pattern fits into the bytes.

size_t ByteFinder::First(const uint8_t* bytes, size_t count) const {
    if (n > count) return NotFound;
    const size_t end = count - n + 1;
    if (stride) return FirstByGrams(bytes, end);
    return end < Step ? FirstIn(bytes, 0, end) : FirstByProbes(bytes, end);
}

size_t ByteFinder::Last(const uint8_t* bytes, size_t count) const {
    if (n > count) return NotFound;
    const size_t end = count - n + 1;
    if (stride) return LastByGrams(bytes, end);
    return end < Step ? LastIn(bytes, 0, end) : LastByProbes(bytes, end);
}

bool ByteFinder::MatchesAt(const uint8_t* bytes) const {
    return ProbeMatches(first, bytes) && ProbeMatches(second, bytes) && Scan::EqualBytes(bytes, pattern, n, matchCase);
}

size_t ByteFinder::FirstIn(const uint8_t* bytes, size_t from, size_t end) const {
    for (; from < end; ++from)
        if (MatchesAt(bytes + from)) return from;
    return NotFound;
}

size_t ByteFinder::LastIn(const uint8_t* bytes, size_t from, size_t end) const {
    while (end > from)
        if (MatchesAt(bytes + --end)) return end;
    return NotFound;
}

// Probes. What is left of the positions beside whole steps is tested as one more step, which reaches over
// positions known to be none.

// From 1 to Step: a position from which on the probe loads whole cache lines.
size_t ByteFinder::AlignedStep(const uint8_t* bytes) const {
    return Step - reinterpret_cast<uintptr_t>(bytes + first.offset) % Step;
}

size_t ByteFinder::FirstByProbes(const uint8_t* bytes, size_t end) const {
    size_t found = FirstInStep(bytes);
    if (found != NotFound) return found;
    for (size_t at = AlignedStep(bytes); at + Step <= end; at += Step) {
        at += Step * StepsWithout(first, bytes + at, Step, (end - at) / Step);
        if (at + Step > end) break;
        found = FirstInStep(bytes + at);
        if (found != NotFound) return at + found;
    }
    found = FirstInStep(bytes + end - Step);
    return found == NotFound ? NotFound : end - Step + found;
}

size_t ByteFinder::LastByProbes(const uint8_t* bytes, size_t end) const {
    size_t found = LastInStep(bytes + end - Step);
    if (found != NotFound) return end - Step + found;
    const size_t aligned = AlignedStep(bytes);
    end = aligned > end ? 0 : end - (end - aligned) % Step; // back to where an aligned step ends
    while (end >= Step) {
        end -= Step * StepsWithout(first, bytes + end - Step, -ptrdiff_t{Step}, end / Step);
        if (end < Step) break;
        found = LastInStep(bytes + end - Step);
        if (found != NotFound) return end - Step + found;
        end -= Step;
    }
    return LastInStep(bytes);
}

// Steps with the first byte alone are frequent enough to be passed without a branch for each byte.
bool ByteFinder::MayMatchIn(const uint8_t* step) const {
    __m128i any = _mm_setzero_si128();
    for (size_t i = 0; i < Step; i += 16)
        any = _mm_or_si128(any, _mm_and_si128(ProbeAt(first, step + i), ProbeAt(second, step + i)));
    return ByteMask(any) != 0;
}

size_t ByteFinder::FirstInStep(const uint8_t* step) const {
    if (!MayMatchIn(step)) return NotFound;
    for (size_t group = 0; group < Step; group += Group) {
        for (uint64_t mask = InGroup(first, step + group); mask; mask &= mask - 1) {
            const size_t at = group + static_cast<size_t>(std::countr_zero(mask));
            if (MatchesAt(step + at)) return at;
        }
    }
    return NotFound;
}

size_t ByteFinder::LastInStep(const uint8_t* step) const {
    if (!MayMatchIn(step)) return NotFound;
    for (size_t group = Step; group; group -= Group) {
        uint64_t mask = InGroup(first, step + group - Group);
        while (mask) {
            const auto bit = static_cast<size_t>(std::bit_width(mask) - 1);
            if (MatchesAt(step + group - Group + bit)) return group - Group + bit;
            mask ^= uint64_t{1} << bit;
        }
    }
    return NotFound;
}

// Grams. Of the positions [place - stride + 1, place] each has its gram at `place` inside the pattern.

void ByteFinder::CollectGrams() {
    const size_t used = std::min(n, LongestForGrams);
    for (size_t i = 0; i + GramSize <= used; ++i) {
        const uint8_t* gram = pattern + i;
        const uint64_t hash = matchCase ? GramHash<false>(gram, GramSize) : GramHash<true>(gram, GramSize);
        grams[GramIndex(hash)] |= GramBit(hash);
    }
    stride = used - GramSize + 1;
}

size_t ByteFinder::PlacesWithout(const uint8_t* place, ptrdiff_t distance, size_t count) const {
    return matchCase ? PassPlaces<false>(grams, place, distance, count)
                     : PassPlaces<true>(grams, place, distance, count);
}

size_t ByteFinder::FirstByGrams(const uint8_t* bytes, size_t end) const {
    const auto distance = static_cast<ptrdiff_t>(stride);
    const size_t places = end / stride; // the rest is too near to the end to be loaded from
    for (size_t i = 0;; ++i) {
        if (i < places) i += PlacesWithout(bytes + (i + 1) * stride - 1, distance, places - i);
        const size_t found = FirstIn(bytes, i * stride, std::min(end, (i + 1) * stride));
        if (found != NotFound || i >= places) return found;
    }
}

size_t ByteFinder::LastByGrams(const uint8_t* bytes, size_t end) const {
    const auto distance = -static_cast<ptrdiff_t>(stride);
    const size_t places = (end + stride - 1) / stride;
    for (size_t i = 0; i < places; ++i) {
        i += PlacesWithout(bytes + end - i * stride - 1, distance, places - i);
        if (i == places) break;
        const size_t above = end - i * stride;
        const size_t found = LastIn(bytes, above > stride ? above - stride : 0, above);
        if (found != NotFound) return found;
    }
    return NotFound;
}

size_t Scan::Reference::FindBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n,
                                  bool matchCase) {
    for (size_t at = 0; at + n <= count; ++at)
        if (EqualBytes(bytes + at, pattern, n, matchCase)) return at;
    return NotFound;
}

size_t Scan::Reference::FindLastBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n,
                                      bool matchCase) {
    for (size_t end = count; end >= n; --end)
        if (EqualBytes(bytes + end - n, pattern, n, matchCase)) return end - n;
    return NotFound;
}
