#include "base/Scan.h"

#include <bit>
#include <emmintrin.h>

// Every loop takes 64 or 32 bytes a step while so many are left and hands the rest to its plain
// version, so that nothing outside [0, count) is ever read.

namespace {

constexpr size_t PerVector = 8; // characters in one vector

__m128i Load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }

void Store(void* to, __m128i value) { _mm_storeu_si128(static_cast<__m128i*>(to), value); }

unsigned ByteMask(__m128i value) { return static_cast<unsigned>(_mm_movemask_epi8(value)); }

// One bit for each of 16 characters: those of two vectors that hold 0 or -1 in every character.
unsigned CharMask(__m128i low, __m128i high) { return ByteMask(_mm_packs_epi16(low, high)); }

size_t FirstBit(unsigned mask) { return static_cast<size_t>(std::countr_zero(mask)); }

size_t LastBit(unsigned mask) { return static_cast<size_t>(std::bit_width(mask) - 1); }

// The matches of `matches` (a vector of 0 or -1) in text[0, count), 32 characters a step.
// `count` is left as what remains for the plain version, at the end of the text.
template <class Matches> size_t FindFirst(const Char* text, size_t count, Matches matches) {
    size_t at = 0;
    for (; at + 4 * PerVector <= count; at += 4 * PerVector) {
        const __m128i a = matches(Load(text + at));
        const __m128i b = matches(Load(text + at + 8));
        const __m128i c = matches(Load(text + at + 16));
        const __m128i d = matches(Load(text + at + 24));
        if (ByteMask(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) == 0) continue;
        return at + FirstBit(CharMask(a, b) | CharMask(c, d) << 16);
    }
    return at;
}

__m128i AddLanes(__m128i sums) { return _mm_add_epi64(sums, _mm_unpackhi_epi64(sums, sums)); }

size_t LowQuad(__m128i value) { return static_cast<size_t>(_mm_cvtsi128_si64(value)); }

} // namespace

size_t Scan::CountLineFeeds(const Char* text, size_t count) {
    const __m128i lineFeed = _mm_set1_epi16(u'\n');
    const __m128i zero = _mm_setzero_si128();
    // A step adds at most 2 to each byte of `counts`, so 127 steps fit before the bytes are summed up.
    constexpr size_t StepsPerBlock = 127;
    __m128i sums = zero;
    size_t at = 0;
    while (at + 4 * PerVector <= count) {
        const size_t steps = (count - at) / (4 * PerVector);
        __m128i counts = zero;
        for (size_t step = steps < StepsPerBlock ? steps : StepsPerBlock; step; --step, at += 4 * PerVector) {
            const __m128i a = _mm_cmpeq_epi16(Load(text + at), lineFeed);
            const __m128i b = _mm_cmpeq_epi16(Load(text + at + 8), lineFeed);
            const __m128i c = _mm_cmpeq_epi16(Load(text + at + 16), lineFeed);
            const __m128i d = _mm_cmpeq_epi16(Load(text + at + 24), lineFeed);
            counts = _mm_sub_epi8(counts, _mm_packs_epi16(a, b));
            counts = _mm_sub_epi8(counts, _mm_packs_epi16(c, d));
        }
        sums = _mm_add_epi64(sums, _mm_sad_epu8(counts, zero));
    }
    return LowQuad(AddLanes(sums)) + Reference::CountLineFeeds(text + at, count - at);
}

size_t Scan::FindLineFeed(const Char* text, size_t count) {
    const __m128i lineFeed = _mm_set1_epi16(u'\n');
    const size_t at = FindFirst(text, count, [=](__m128i v) { return _mm_cmpeq_epi16(v, lineFeed); });
    return at + Reference::FindLineFeed(text + at, count - at);
}

size_t Scan::FindLineEnd(const Char* text, size_t count) {
    const __m128i lineFeed = _mm_set1_epi16(u'\n');
    const __m128i zero = _mm_setzero_si128();
    const size_t at = FindFirst(
        text, count, [=](__m128i v) { return _mm_or_si128(_mm_cmpeq_epi16(v, lineFeed), _mm_cmpeq_epi16(v, zero)); });
    return at + Reference::FindLineEnd(text + at, count - at);
}

size_t Scan::FindLineStart(const Char* text, size_t count) {
    const __m128i lineFeed = _mm_set1_epi16(u'\n');
    for (; count >= 4 * PerVector; count -= 4 * PerVector) {
        const Char* block = text + count - 4 * PerVector;
        const __m128i a = _mm_cmpeq_epi16(Load(block), lineFeed);
        const __m128i b = _mm_cmpeq_epi16(Load(block + 8), lineFeed);
        const __m128i c = _mm_cmpeq_epi16(Load(block + 16), lineFeed);
        const __m128i d = _mm_cmpeq_epi16(Load(block + 24), lineFeed);
        const unsigned mask = CharMask(a, b) | CharMask(c, d) << 16;
        if (mask) return count - 4 * PerVector + LastBit(mask) + 1;
    }
    return Reference::FindLineStart(text, count);
}

size_t Scan::SkipLines(const Char* text, size_t count, size_t lines, size_t& passed) {
    const __m128i lineFeed = _mm_set1_epi16(u'\n');
    size_t behind = 0;
    size_t at = 0;
    passed = 0;
    for (; at + 2 * PerVector <= count && passed < lines; at += 2 * PerVector) {
        const __m128i a = _mm_cmpeq_epi16(Load(text + at), lineFeed);
        const __m128i b = _mm_cmpeq_epi16(Load(text + at + 8), lineFeed);
        unsigned mask = CharMask(a, b);
        for (; mask && passed < lines; mask &= mask - 1, ++passed) behind = at + FirstBit(mask) + 1;
    }
    size_t more = 0;
    const size_t offset = Reference::SkipLines(text + at, count - at, lines - passed, more);
    passed += more;
    return more ? at + offset : behind;
}

size_t Scan::FindNul(const Char* text, size_t count) {
    const __m128i zero = _mm_setzero_si128();
    const size_t at = FindFirst(text, count, [=](__m128i v) { return _mm_cmpeq_epi16(v, zero); });
    return at + Reference::FindNul(text + at, count - at);
}

size_t Scan::FindZeroByte(const uint8_t* bytes, size_t count) {
    const __m128i zero = _mm_setzero_si128();
    size_t at = 0;
    for (; at + 32 <= count; at += 32) {
        const __m128i a = _mm_cmpeq_epi8(Load(bytes + at), zero);
        const __m128i b = _mm_cmpeq_epi8(Load(bytes + at + 16), zero);
        const unsigned mask = ByteMask(a) | ByteMask(b) << 16;
        if (mask) return at + FirstBit(mask);
    }
    return at + Reference::FindZeroByte(bytes + at, count - at);
}

size_t Scan::WidenPlain(const uint8_t* bytes, size_t count, Char* out, size_t& lineFeeds) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i lineFeed = _mm_set1_epi8('\n');
    const __m128i carriageReturn = _mm_set1_epi8('\r');
    size_t at = 0;
    for (; at + 16 <= count; at += 16) {
        const __m128i block = Load(bytes + at);
        const __m128i stops = _mm_or_si128(_mm_cmpeq_epi8(block, zero), _mm_cmpeq_epi8(block, carriageReturn));
        if (ByteMask(_mm_or_si128(stops, block))) break;
        Store(out + at, _mm_unpacklo_epi8(block, zero));
        Store(out + at + 8, _mm_unpackhi_epi8(block, zero));
        lineFeeds += static_cast<size_t>(std::popcount(ByteMask(_mm_cmpeq_epi8(block, lineFeed))));
    }
    return at + Reference::WidenPlain(bytes + at, count - at, out + at, lineFeeds);
}

size_t Scan::WidenAscii(const uint8_t* bytes, size_t count, Char* out) {
    const __m128i zero = _mm_setzero_si128();
    size_t at = 0;
    for (; at + 16 <= count; at += 16) {
        const __m128i block = Load(bytes + at);
        if (ByteMask(block)) break;
        Store(out + at, _mm_unpacklo_epi8(block, zero));
        Store(out + at + 8, _mm_unpackhi_epi8(block, zero));
    }
    return at + Reference::WidenAscii(bytes + at, count - at, out + at);
}

size_t Scan::NarrowAscii(const Char* text, size_t count, uint8_t* out) {
    const __m128i notAscii = _mm_set1_epi16(static_cast<short>(0xFF80));
    const __m128i zero = _mm_setzero_si128();
    size_t at = 0;
    for (; at + 16 <= count; at += 16) {
        const __m128i low = Load(text + at);
        const __m128i high = Load(text + at + 8);
        const __m128i others = _mm_and_si128(_mm_or_si128(low, high), notAscii);
        if (ByteMask(_mm_cmpeq_epi16(others, zero)) != 0xFFFF) break;
        Store(out + at, _mm_packus_epi16(low, high));
    }
    return at + Reference::NarrowAscii(text + at, count - at, out + at);
}

void Scan::SwapBytes(const Char* in, size_t count, Char* out) {
    size_t at = 0;
    for (; at + PerVector <= count; at += PerVector) {
        const __m128i block = Load(in + at);
        Store(out + at, _mm_or_si128(_mm_slli_epi16(block, 8), _mm_srli_epi16(block, 8)));
    }
    Reference::SwapBytes(in + at, count - at, out + at);
}
