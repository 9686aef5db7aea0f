#pragma once

#include "base/Types.h"

#include <emmintrin.h>

// The plain way to make characters of bytes and back: what the product is measured against.
namespace Bench {

inline void WidenPlain(const uint8_t* bytes, size_t count, Char* out) {
    size_t at = 0;
    for (; at + 16 <= count; at += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + at));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + at), _mm_unpacklo_epi8(block, _mm_setzero_si128()));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + at + 8), _mm_unpackhi_epi8(block, _mm_setzero_si128()));
    }
    for (; at < count; ++at) out[at] = bytes[at];
}

inline void NarrowPlain(const Char* text, size_t count, uint8_t* out) {
    size_t at = 0;
    for (; at + 16 <= count; at += 16) {
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
        const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at + 8));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(out + at), _mm_packus_epi16(low, high));
    }
    for (; at < count; ++at) out[at] = static_cast<uint8_t>(text[at]);
}

inline size_t CountLineFeedsPlain(const Char* text, size_t count) {
    const __m128i lineFeed = _mm_set1_epi16('\n');
    size_t found = 0;
    size_t at = 0;
    while (at + 8 <= count) {
        __m128i counts = _mm_setzero_si128();
        for (size_t step = 0; step < 0x7FFF && at + 8 <= count; ++step, at += 8) {
            const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
            counts = _mm_sub_epi16(counts, _mm_cmpeq_epi16(block, lineFeed));
        }
        alignas(16) uint16_t lanes[8];
        _mm_store_si128(reinterpret_cast<__m128i*>(lanes), counts);
        for (const uint16_t lane : lanes) found += lane;
    }
    for (; at < count; ++at) found += text[at] == u'\n';
    return found;
}

} // namespace Bench
