#include "base/ScanBreaks.h"

#include <algorithm>
#include <bit>
#include <emmintrin.h>

// The vector loops take whole vectors while so many are left and hand the rest to the plain versions, so
// that nothing outside the input is read. A vector with something special in it is taken up to there,
// and the next step starts after it: unaligned loads cost nothing worth avoiding.

namespace {

using Scan::Copied;

constexpr size_t Bytes = 16;     // in a vector
constexpr size_t Characters = 8; // in a vector

__m128i Load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }

void Store(void* to, __m128i value) { _mm_storeu_si128(static_cast<__m128i*>(to), value); }

unsigned Mask(__m128i value) { return static_cast<unsigned>(_mm_movemask_epi8(value)); }

// Index of the first character whose lane a mask of bytes marks.
size_t FirstCharacter(unsigned mask) { return static_cast<size_t>(std::countr_zero(mask)) / 2; }

void CopyFew(const Char* from, size_t count, Char* to) {
    for (size_t i = 0; i < count; ++i) to[i] = from[i];
}

// Sums the bytes of vectors that are 0 or -1. A byte holds 255 of them, then they are added up.
class ByteSum {
public:
    void Add(__m128i marks) {
        counts = _mm_sub_epi8(counts, marks);
        if (++steps == 255) Flush();
    }
    size_t Total() {
        Flush();
        return static_cast<size_t>(_mm_cvtsi128_si64(_mm_add_epi64(sums, _mm_unpackhi_epi64(sums, sums))));
    }

private:
    void Flush() {
        sums = _mm_add_epi64(sums, _mm_sad_epu8(counts, _mm_setzero_si128()));
        counts = _mm_setzero_si128();
        steps = 0;
    }

    __m128i counts = _mm_setzero_si128();
    __m128i sums = _mm_setzero_si128();
    unsigned steps = 0;
};

void StoreWidened(Char* to, __m128i bytes) {
    const __m128i zero = _mm_setzero_si128();
    Store(to, _mm_unpacklo_epi8(bytes, zero));
    Store(to + Characters, _mm_unpackhi_epi8(bytes, zero));
}

// As far as this, the next CR LF is expected near the one before.
constexpr size_t NearPairs = 4096;

// WidenText where lines end in CR LF, a vector a step whatever is in it: stopping at each pair would cost a
// mispredicted branch per line. Goes on as far as NearPairs, up to a vector that holds anything special but pairs.
Copied WidenPairs(const uint8_t* bytes, size_t count, Char* out, Scan::BreakCounts& breaks) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i lineFeed = _mm_set1_epi8('\n');
    const __m128i carriageReturn = _mm_set1_epi8('\r');
    // What comes after a pair in the last byte is read as well.
    const uint8_t* const end = bytes + std::min(count, NearPairs + Bytes + 1);
    ByteSum lineFeeds; // those of pairs as well
    const uint8_t* at = bytes;
    Char* to = out;
    for (; end - at > static_cast<ptrdiff_t>(2 * Bytes); at += Bytes) {
        const __m128i block = Load(at);
        const __m128i returns = _mm_cmpeq_epi8(block, carriageReturn);
        const __m128i lone = _mm_andnot_si128(_mm_cmpeq_epi8(Load(at + 1), lineFeed), returns);
        if (Mask(_mm_or_si128(block, _mm_or_si128(_mm_cmpeq_epi8(block, zero), lone)))) break;
        lineFeeds.Add(_mm_cmpeq_epi8(block, lineFeed));
        // What comes after the first return moves down by one; without a return, a vector too many is written.
        unsigned dropped = Mask(returns);
        const auto first = static_cast<size_t>(std::countr_zero(dropped | 1u << Bytes));
        StoreWidened(to, block);
        StoreWidened(to + first, Load(at + first + 1));
        to += Bytes - 1 + first / Bytes; // compilers make no jump of this
        for (dropped &= dropped - 1; dropped; dropped &= dropped - 1) {
            const auto next = static_cast<size_t>(std::countr_zero(dropped));
            StoreWidened(to + next - Bytes, Load(at + next + 1));
            --to;
        }
    }
    const Copied done = {static_cast<size_t>(at - bytes), static_cast<size_t>(to - out)};
    const size_t pairs = done.taken - done.written;
    breaks.lineFeeds += lineFeeds.Total() - pairs;
    breaks.returns += pairs;
    return done;
}

} // namespace

Copied Scan::WidenText(const uint8_t* bytes, size_t count, Char* out, BreakCounts& breaks) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i space = _mm_set1_epi8(' ');
    const __m128i lineFeed = _mm_set1_epi8('\n');
    const __m128i carriageReturn = _mm_set1_epi8('\r');
    ByteSum lineFeeds;
    Copied done;
    while (done.taken + Bytes <= count) {
        __m128i block = Load(bytes + done.taken);
        // A byte beyond ASCII: the caller decodes from there. The plain version takes what is before it.
        if (Mask(block)) break;
        block = _mm_or_si128(block, _mm_and_si128(_mm_cmpeq_epi8(block, zero), space));
        // Fewer characters are written than bytes taken, so that whole vectors always have room.
        StoreWidened(out + done.written, block);
        const __m128i feeds = _mm_cmpeq_epi8(block, lineFeed);
        const unsigned returns = Mask(_mm_cmpeq_epi8(block, carriageReturn));
        if (!returns) {
            lineFeeds.Add(feeds);
            done.taken += Bytes;
            done.written += Bytes;
            continue;
        }
        const size_t before = static_cast<size_t>(std::countr_zero(returns));
        for (unsigned rest = Mask(feeds) & ((1u << before) - 1); rest; rest &= rest - 1) ++breaks.lineFeeds;
        ++breaks.returns;
        out[done.written + before] = u'\n';
        done.written += before + 1;
        done.taken += before + 1;
        if (done.taken == count || bytes[done.taken] != '\n') continue;
        ++done.taken;
        const Copied near = WidenPairs(bytes + done.taken, count - done.taken, out + done.written, breaks);
        done.taken += near.taken;
        done.written += near.written;
    }
    breaks.lineFeeds += lineFeeds.Total();
    const Copied rest = Reference::WidenText(bytes + done.taken, count - done.taken, out + done.written, breaks);
    return {done.taken + rest.taken, done.written + rest.written};
}

Copied Scan::CopyWithLineFeeds(const Char* text, size_t count, Char* out, BreakCounts& breaks) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i lineFeed = _mm_set1_epi16(u'\n');
    const __m128i carriageReturn = _mm_set1_epi16(u'\r');
    ByteSum lineFeedBytes;
    Copied done;
    while (done.taken + Characters <= count) {
        const __m128i block = Load(text + done.taken);
        const __m128i feeds = _mm_cmpeq_epi16(block, lineFeed);
        const unsigned stops = Mask(_mm_or_si128(_mm_cmpeq_epi16(block, carriageReturn), _mm_cmpeq_epi16(block, zero)));
        if (!stops) {
            Store(out + done.written, block);
            lineFeedBytes.Add(feeds);
            done.taken += Characters;
            done.written += Characters;
            continue;
        }
        // Only what comes before the stop is written: in place, the rest may be input still to come.
        const size_t before = FirstCharacter(stops);
        for (size_t i = 0; i < before; ++i) breaks.lineFeeds += text[done.taken + i] == u'\n';
        CopyFew(text + done.taken, before, out + done.written);
        done.taken += before;
        done.written += before;
        if (text[done.taken] == 0) break;
        ++breaks.returns;
        out[done.written++] = u'\n';
        ++done.taken;
        if (done.taken < count && text[done.taken] == u'\n') ++done.taken;
    }
    breaks.lineFeeds += lineFeedBytes.Total() / sizeof(Char);
    const Copied rest = Reference::CopyWithLineFeeds(text + done.taken, count - done.taken, out + done.written, breaks);
    return {done.taken + rest.taken, done.written + rest.written};
}

Copied Scan::CopyWithReturns(const Char* text, size_t count, Char* out, size_t capacity) {
    const __m128i lineFeed = _mm_set1_epi16(u'\n');
    Copied done;
    // One place more than the block has: its line feed becomes two characters.
    while (done.taken + Characters <= count && done.written + Characters < capacity) {
        const __m128i block = Load(text + done.taken);
        Store(out + done.written, block);
        const unsigned feeds = Mask(_mm_cmpeq_epi16(block, lineFeed));
        if (!feeds) {
            done.taken += Characters;
            done.written += Characters;
            continue;
        }
        // More was stored than counts, which the next step writes over.
        const size_t before = FirstCharacter(feeds);
        out[done.written + before] = u'\r';
        out[done.written + before + 1] = u'\n';
        done.taken += before + 1;
        done.written += before + 2;
    }
    const Copied rest =
        Reference::CopyWithReturns(text + done.taken, count - done.taken, out + done.written, capacity - done.written);
    return {done.taken + rest.taken, done.written + rest.written};
}

size_t Scan::DropReturns(uint8_t* bytes, size_t count) {
    const __m128i carriageReturn = _mm_set1_epi8('\r');
    size_t kept = 0;
    size_t at = 0;
    for (; at + Bytes <= count; at += Bytes) {
        const __m128i block = Load(bytes + at);
        // `kept` is never ahead of `at`, so that only bytes are written over that were read.
        if (!Mask(_mm_cmpeq_epi8(block, carriageReturn))) {
            Store(bytes + kept, block);
            kept += Bytes;
            continue;
        }
        for (size_t i = at; i < at + Bytes; ++i) {
            bytes[kept] = bytes[i];
            kept += bytes[i] != '\r';
        }
    }
    for (; at < count; ++at)
        if (bytes[at] != '\r') bytes[kept++] = bytes[at];
    return kept;
}

Copied Scan::Reference::WidenText(const uint8_t* bytes, size_t count, Char* out, BreakCounts& breaks) {
    Copied done;
    while (done.taken < count && bytes[done.taken] < 0x80) {
        const uint8_t byte = bytes[done.taken++];
        breaks.lineFeeds += byte == '\n';
        breaks.returns += byte == '\r';
        if (byte == '\r' && done.taken < count && bytes[done.taken] == '\n') ++done.taken;
        out[done.written++] = byte == '\r' ? u'\n' : byte == 0 ? u' ' : Char{byte};
    }
    return done;
}

Copied Scan::Reference::CopyWithLineFeeds(const Char* text, size_t count, Char* out, BreakCounts& breaks) {
    Copied done;
    while (done.taken < count && text[done.taken] != 0) {
        const Char c = text[done.taken++];
        breaks.lineFeeds += c == u'\n';
        breaks.returns += c == u'\r';
        if (c == u'\r' && done.taken < count && text[done.taken] == u'\n') ++done.taken;
        out[done.written++] = c == u'\r' ? u'\n' : c;
    }
    return done;
}

Copied Scan::Reference::CopyWithReturns(const Char* text, size_t count, Char* out, size_t capacity) {
    Copied done;
    for (; done.taken < count; ++done.taken) {
        const Char c = text[done.taken];
        if (done.written + (c == u'\n' ? 2 : 1) > capacity) break;
        if (c == u'\n') out[done.written++] = u'\r';
        out[done.written++] = c;
    }
    return done;
}

size_t Scan::Reference::DropReturns(uint8_t* bytes, size_t count) {
    size_t kept = 0;
    for (size_t at = 0; at < count; ++at)
        if (bytes[at] != '\r') bytes[kept++] = bytes[at];
    return kept;
}
