#pragma once

#include "base/Types.h"

#include <bit>
#include <emmintrin.h>

// The SSE2 words that the Scan files share.
namespace Scan::Vector {

constexpr size_t Characters = 8; // in one vector

inline __m128i Load(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }

inline void Store(void* to, __m128i value) { _mm_storeu_si128(static_cast<__m128i*>(to), value); }

inline __m128i Fill(Char character) { return _mm_set1_epi16(static_cast<short>(character)); }

// The top bit of each of 16 bytes.
inline uint32_t ByteMask(__m128i value) { return static_cast<uint32_t>(_mm_movemask_epi8(value)); }

// One bit for each of 16 characters in two vectors, each character 0 or -1.
inline uint32_t CharacterMask(__m128i low, __m128i high) { return ByteMask(_mm_packs_epi16(low, high)); }

// Four vectors of which each character is 0 or -1: the answer of a test on 32 characters.
struct Matches {
    __m128i a, b, c, d;

    bool Any() const { return ByteMask(_mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d))) != 0; }
    // Bit i for character i.
    uint32_t Mask() const { return CharacterMask(a, b) | CharacterMask(c, d) << 16; }
};

// Puts `test` (a vector to a vector of 0 or -1) to the 32 characters at `text`.
template <class Test> Matches TestBlock(const Char* text, Test test) {
    return {test(Load(text)), test(Load(text + 8)), test(Load(text + 16)), test(Load(text + 24))};
}

constexpr size_t Block = 4 * Characters;

inline size_t FirstBit(uint32_t mask) { return static_cast<size_t>(std::countr_zero(mask)); }
inline size_t LastBit(uint32_t mask) { return static_cast<size_t>(std::bit_width(mask) - 1); }

} // namespace Scan::Vector
