#include "syntax/TokenStartScanner.h"

#include <algorithm>
#include <emmintrin.h>

namespace {

constexpr uint32_t HalfBlock = 8;
constexpr uint32_t Block = 16;

__m128i Load(const void* at) { return _mm_loadu_si128(static_cast<const __m128i*>(at)); }

// All ones in the bytes from `first` to `first` + `last`: unsigned subtraction makes all others larger.
__m128i InRange(__m128i bytes, uint8_t first, uint8_t last) {
    const __m128i fromFirst = _mm_sub_epi8(bytes, _mm_set1_epi8(static_cast<char>(first)));
    return _mm_cmpeq_epi8(_mm_min_epu8(fromFirst, _mm_set1_epi8(static_cast<char>(last))), fromFirst);
}

__m128i IsWord(__m128i bytes) {
    const __m128i letters = InRange(_mm_or_si128(bytes, _mm_set1_epi8(0x20)), u'a', u'z' - u'a');
    const __m128i digits = InRange(bytes, u'0', u'9' - u'0');
    const __m128i others =
        _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('_')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('#')));
    return _mm_or_si128(_mm_or_si128(letters, digits), others);
}

} // namespace

// Gathers the bits of one map. Adding a character twice does no harm.
class TokenStartScanner::Bits {
public:
    explicit Bits(const TokenStartScanner& owner) : scanner(owner) {}

    void AddBlock(const Char* at, uint32_t shift) {
        const Masks found = Find(Load(at), Load(at + HalfBlock));
        words |= uint64_t{found.words} << shift;
        stops |= uint64_t{found.stops} << shift;
    }

    // From one half block up to one block, read as two halves that may overlap.
    void AddHalves(const Char* at, uint32_t count) {
        const uint32_t shift = count - HalfBlock;
        const Masks found = Find(Load(at), Load(at + shift));
        words = (found.words & 0xFF) | (found.words >> HalfBlock) << shift;
        stops = (found.stops & 0xFF) | (found.stops >> HalfBlock) << shift;
    }

    void AddFew(const Char* at, uint32_t count) {
        Char padded[HalfBlock] = {};
        std::copy_n(at, count, padded);
        AddHalves(padded, HalfBlock);
    }

    uint64_t words = 0;
    uint64_t stops = 0;

private:
    struct Masks {
        uint32_t words;
        uint32_t stops;
    };

    Masks Find(__m128i low, __m128i high) const {
        // Characters beyond a byte become 255 or 0: never a word character, never a stop.
        const __m128i bytes = _mm_packus_epi16(low, high);
        __m128i stopBytes = _mm_setzero_si128();
        for (uint32_t i = 0; i < MaxStops; ++i) {
            stopBytes = _mm_or_si128(stopBytes, _mm_cmpeq_epi8(bytes, Load(scanner.stops[i])));
        }
        return {static_cast<uint32_t>(_mm_movemask_epi8(IsWord(bytes))),
                static_cast<uint32_t>(_mm_movemask_epi8(stopBytes))};
    }

    const TokenStartScanner& scanner;
};

void TokenStartScanner::AddStop(Char c) {
    if (stopCount == MaxStops) {
        everywhere = true;
        return;
    }
    for (uint32_t i = stopCount; i < MaxStops; ++i) std::fill_n(stops[i], Lanes, static_cast<uint8_t>(c));
    ++stopCount;
}

void TokenStartScanner::Map(const Char* at, const Char* end, bool allStops, TokenMap& map) const {
    const auto count = static_cast<uint32_t>(std::min<size_t>(static_cast<size_t>(end - at), Span));
    Bits bits(*this);
    if (count >= Block) {
        // Always the same number of blocks, which costs less than deciding on it. The last ones overlap
        // the ones before, so that nothing beyond the end is read.
        const uint32_t last = count - Block;
        for (uint32_t i = 0; i < Span; i += Block) bits.AddBlock(at + std::min(i, last), std::min(i, last));
    } else if (count >= HalfBlock) {
        bits.AddHalves(at, count);
    } else {
        bits.AddFew(at, count);
    }
    if (everywhere || allStops) {
        const uint64_t all = count < Span ? (uint64_t{1} << count) - 1 : ~uint64_t{0};
        bits.stops = ~bits.words & all;
    }
    map.start = at;
    map.end = at + count;
    map.words = bits.words;
    map.stops = bits.stops;
}
