#include "base/Scan.h"

#include "base/ScanVector.h"

#include <algorithm>

// Every loop takes 64 or 32 bytes a step while so many are left and hands the rest to its plain
// version, so that nothing outside [0, count) is ever read.

using namespace Scan::Vector;

namespace {

// Where the first match of `test` (a vector to a vector of 0 or -1) is, or where fewer characters than
// a step takes are left.
template <class Test> size_t FindFirst(const Char* text, size_t count, Test test) {
    size_t at = 0;
    for (; at + Block <= count; at += Block) {
        const Matches matches = TestBlock(text + at, test);
        if (matches.Any()) return at + FirstBit(matches.Mask());
    }
    return at;
}

// As far as this, lines are looked for feed by feed.
constexpr size_t NearLines = 2048;

// Passes over line feeds in text[at, end) until `passed` has grown to `lines`. Returns the index after
// the last one, 0 when there was none.
size_t WalkLines(const Char* text, size_t at, size_t end, size_t lines, size_t& passed) {
    const __m128i lineFeed = Fill(u'\n');
    size_t lineStart = 0;
    for (; at + Block <= end && passed < lines; at += Block) {
        uint32_t mask = TestBlock(text + at, [=](__m128i v) { return _mm_cmpeq_epi16(v, lineFeed); }).Mask();
        for (; mask && passed < lines; mask &= mask - 1, ++passed) lineStart = at + FirstBit(mask) + 1;
    }
    size_t more = 0;
    const size_t offset = Scan::Reference::SkipLines(text + at, end - at, lines - passed, more);
    passed += more;
    return more ? at + offset : lineStart;
}

// Passes over line feeds in text[from, at) backwards and counts `wanted` down for each. Returns the index
// after the one that makes it 0; 0 when there are fewer.
size_t WalkLinesBack(const Char* text, size_t from, size_t at, size_t& wanted) {
    const __m128i lineFeed = Fill(u'\n');
    for (; at - from >= Block; at -= Block) {
        const Char* const block = text + at - Block;
        uint32_t mask = TestBlock(block, [=](__m128i v) { return _mm_cmpeq_epi16(v, lineFeed); }).Mask();
        for (; mask; mask &= ~(1u << LastBit(mask)))
            if (--wanted == 0) return at - Block + LastBit(mask) + 1;
    }
    for (; at > from; --at)
        if (text[at - 1] == u'\n' && --wanted == 0) return at;
    return 0;
}

__m128i AddLanes(__m128i sums) { return _mm_add_epi64(sums, _mm_unpackhi_epi64(sums, sums)); }

size_t LowQuad(__m128i value) { return static_cast<size_t>(_mm_cvtsi128_si64(value)); }

} // namespace

size_t Scan::CountLineFeeds(const Char* text, size_t count) {
    const __m128i lineFeed = Fill(u'\n');
    const __m128i zero = _mm_setzero_si128();
    // A step adds at most 2 to each byte of `counts`, so 127 steps fit before the bytes are summed up.
    constexpr size_t StepsPerSum = 127;
    __m128i sums = zero;
    size_t at = 0;
    while (at + Block <= count) {
        __m128i counts = zero;
        for (size_t step = std::min((count - at) / Block, StepsPerSum); step; --step, at += Block) {
            const Matches found = TestBlock(text + at, [=](__m128i v) { return _mm_cmpeq_epi16(v, lineFeed); });
            counts = _mm_sub_epi8(counts, _mm_packs_epi16(found.a, found.b));
            counts = _mm_sub_epi8(counts, _mm_packs_epi16(found.c, found.d));
        }
        sums = _mm_add_epi64(sums, _mm_sad_epu8(counts, zero));
    }
    return LowQuad(AddLanes(sums)) + Reference::CountLineFeeds(text + at, count - at);
}

size_t Scan::FindLineFeed(const Char* text, size_t count) {
    const __m128i lineFeed = Fill(u'\n');
    const size_t at = FindFirst(text, count, [=](__m128i v) { return _mm_cmpeq_epi16(v, lineFeed); });
    return at + Reference::FindLineFeed(text + at, count - at);
}

size_t Scan::FindUnprintable(const Char* text, size_t count) {
    const __m128i first = Fill(u' ');
    const __m128i span = Fill(u'~' - u' ');
    const __m128i zero = _mm_setzero_si128();
    // Counted from the first printable one, only the others are left with something above the span.
    const size_t at = FindFirst(text, count, [=](__m128i v) {
        const __m128i above = _mm_subs_epu16(_mm_sub_epi16(v, first), span);
        return _mm_xor_si128(_mm_cmpeq_epi16(above, zero), _mm_set1_epi16(-1));
    });
    return at + Reference::FindUnprintable(text + at, count - at);
}

size_t Scan::FindLineStart(const Char* text, size_t count) {
    const __m128i lineFeed = Fill(u'\n');
    for (; count >= Block; count -= Block) {
        const Char* const block = text + count - Block;
        const Matches found = TestBlock(block, [=](__m128i v) { return _mm_cmpeq_epi16(v, lineFeed); });
        if (found.Any()) return count - Block + LastBit(found.Mask()) + 1;
    }
    return Reference::FindLineStart(text, count);
}

size_t Scan::SkipLines(const Char* text, size_t count, size_t lines, size_t& passed) {
    // A near line is found feed by feed. On the way to a far one whole stretches are counted, which is
    // twice as fast, and only the one with the last feed is walked.
    constexpr size_t Stretch = 4096;
    passed = 0;
    size_t at = std::min(count, NearLines);
    size_t lineStart = WalkLines(text, 0, at, lines, passed);
    if (passed == lines) return lineStart;
    for (; count - at >= Stretch; at += Stretch) {
        const size_t lineFeeds = CountLineFeeds(text + at, Stretch);
        if (lineFeeds >= lines - passed) break;
        passed += lineFeeds;
    }
    lineStart = WalkLines(text, at, std::min(count, at + Stretch), lines, passed);
    // Without a feed in the stretch walked last, the last one passed lies before `at`.
    return lineStart || passed == 0 ? lineStart : FindLineStart(text, at);
}

size_t Scan::SkipLinesBack(const Char* text, size_t count, size_t lines, size_t& passed) {
    // As in SkipLines, on the way to a far line whole stretches are counted. They get longer, for only long
    // ones keep the memory streaming downwards, and shorter again where one would go too far.
    constexpr size_t Shortest = 1u << 12;
    constexpr size_t Longest = 1u << 18;
    size_t wanted = lines + 1; // the line reached starts after this one
    size_t at = count > NearLines ? count - NearLines : 0;
    passed = lines;
    if (const size_t start = WalkLinesBack(text, at, count, wanted)) return start;
    for (size_t stretch = Shortest; stretch >= Shortest;) {
        const size_t lineFeeds = at >= stretch ? CountLineFeeds(text + at - stretch, stretch) : wanted;
        if (lineFeeds >= wanted) {
            stretch /= 2;
            continue;
        }
        wanted -= lineFeeds;
        at -= stretch;
        stretch = std::min(2 * stretch, Longest);
    }
    if (const size_t start = WalkLinesBack(text, 0, at, wanted)) return start;
    passed = lines + 1 - wanted;
    return 0;
}

size_t Scan::FindZeroByte(const uint8_t* bytes, size_t count) {
    const __m128i zero = _mm_setzero_si128();
    size_t at = 0;
    // The smallest of four bytes each is a zero when one of them is.
    for (; at + 64 <= count; at += 64) {
        const __m128i low = _mm_min_epu8(Load(bytes + at), Load(bytes + at + 16));
        const __m128i high = _mm_min_epu8(Load(bytes + at + 32), Load(bytes + at + 48));
        if (ByteMask(_mm_cmpeq_epi8(_mm_min_epu8(low, high), zero))) break;
    }
    return at + Reference::FindZeroByte(bytes + at, count - at);
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
    const __m128i notAscii = Fill(0xFF80);
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
    for (; at + Characters <= count; at += Characters) {
        const __m128i block = Load(in + at);
        Store(out + at, _mm_or_si128(_mm_slli_epi16(block, 8), _mm_srli_epi16(block, 8)));
    }
    Reference::SwapBytes(in + at, count - at, out + at);
}
