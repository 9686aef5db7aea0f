#include "syntax/CharSearchSet.h"

#include "base/Text.h"

#include <bit>
#include <emmintrin.h>

void CharSearchSet::Add(Char c, bool bothCases) {
    if (!Contains(c)) {
        for (Char& lane : members[count]) lane = c;
        ++count;
    }
    if (bothCases && Text::IsAsciiLetter(c)) Add(static_cast<Char>(c ^ 0x20));
}

bool CharSearchSet::Contains(Char c) const {
    for (uint32_t i = 0; i < count; ++i) {
        if (members[i][0] == c) return true;
    }
    return false;
}

const Char* CharSearchSet::Find(const Char* at, const Char* end) const {
    while (end - at >= static_cast<ptrdiff_t>(Lanes)) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        __m128i found = _mm_setzero_si128();
        for (uint32_t i = 0; i < count; ++i) {
            const __m128i member = _mm_loadu_si128(reinterpret_cast<const __m128i*>(members[i]));
            found = _mm_or_si128(found, _mm_cmpeq_epi16(block, member));
        }
        const auto mask = static_cast<uint32_t>(_mm_movemask_epi8(found));
        if (mask) return at + std::countr_zero(mask) / 2;
        at += Lanes;
    }
    while (at < end && !Contains(*at)) ++at;
    return at;
}
