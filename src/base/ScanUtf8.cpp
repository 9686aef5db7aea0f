#include "base/ScanUtf8.h"

#include "base/ScanVector.h"
#include "base/Surrogates.h"

using namespace Scan::Vector;

namespace {

constexpr size_t Bytes = 16; // in one vector
constexpr size_t Step = 4 * Bytes;

__m128i FillBytes(unsigned byte) { return _mm_set1_epi8(static_cast<char>(byte)); }

__m128i Equal(__m128i bytes, unsigned byte) { return _mm_cmpeq_epi8(bytes, FillBytes(byte)); }

// Bytes of at least `least`, unsigned.
__m128i AtLeast(__m128i bytes, unsigned least) { return _mm_cmpeq_epi8(_mm_max_epu8(bytes, FillBytes(least)), bytes); }

// Bytes from 80 up to, not including, `end`: the only ones that are negative and below it.
__m128i Below(__m128i bytes, unsigned end) { return _mm_cmplt_epi8(bytes, FillBytes(end)); }

__m128i Either(__m128i a, __m128i b) { return _mm_or_si128(a, b); }

// Marks bytes that cannot be where they are: `before[i]` is what comes i + 1 bytes earlier. A sequence that goes on
// after the vector is not marked.
__m128i Misplaced(__m128i bytes, const __m128i (&before)[3]) {
    // A byte continues a sequence just when one of the three before it says so.
    const __m128i continues = Below(bytes, 0xC0);
    const __m128i isDue = Either(AtLeast(before[0], 0xC0), Either(AtLeast(before[1], 0xE0), AtLeast(before[2], 0xF0)));
    const __m128i misplaced = _mm_xor_si128(continues, isDue);
    // These bytes begin no sequence: the first two only overlong ones, the others what is above U+10FFFF.
    const __m128i never = Either(Equal(_mm_and_si128(bytes, FillBytes(0xFE)), 0xC0), AtLeast(bytes, 0xF5));
    // After four bytes the next one has a smaller range: else it is overlong, a surrogate, or above U+10FFFF.
    const __m128i belowA0 = Below(bytes, 0xA0);
    const __m128i below90 = Below(bytes, 0x90);
    const __m128i overlong =
        Either(_mm_and_si128(Equal(before[0], 0xE0), belowA0), _mm_and_si128(Equal(before[0], 0xF0), below90));
    const __m128i tooHigh =
        Either(_mm_andnot_si128(belowA0, Equal(before[0], 0xED)), _mm_andnot_si128(below90, Equal(before[0], 0xF4)));
    return Either(Either(misplaced, never), Either(overlong, tooHigh));
}

// The same for the bytes at `at`, of which those before it are looked at as well.
__m128i MisplacedAt(const uint8_t* at) { return Misplaced(Load(at), {Load(at - 1), Load(at - 2), Load(at - 3)}); }

// At the start of the text nothing comes before.
__m128i MisplacedFirst(const uint8_t* at) {
    const __m128i bytes = Load(at);
    return Misplaced(bytes, {_mm_slli_si128(bytes, 1), _mm_slli_si128(bytes, 2), _mm_slli_si128(bytes, 3)});
}

bool IsStepAscii(const uint8_t* at) {
    return !ByteMask(Either(Either(Load(at), Load(at + Bytes)), Either(Load(at + 2 * Bytes), Load(at + 3 * Bytes))));
}

bool IsStepValid(const uint8_t* at, bool isFirst) {
    const __m128i first = isFirst ? MisplacedFirst(at) : MisplacedAt(at);
    const __m128i misplaced = Either(Either(first, MisplacedAt(at + Bytes)),
                                     Either(MisplacedAt(at + 2 * Bytes), MisplacedAt(at + 3 * Bytes)));
    return !ByteMask(misplaced);
}

// The length of the sequence that begins there; 0 when none does or it is cut off.
size_t SequenceLength(const uint8_t* bytes, size_t count) {
    const uint8_t lead = bytes[0];
    if (lead < 0x80) return 1;
    const size_t length = lead < 0xC0 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF8 ? 4 : 0;
    if (length == 0 || length > count) return 0;
    uint32_t codePoint = lead & (0x7Fu >> length);
    for (size_t i = 1; i < length; ++i) {
        if ((bytes[i] & 0xC0) != 0x80) return 0;
        codePoint = codePoint << 6 | (bytes[i] & 0x3Fu);
    }
    static constexpr uint32_t Smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = codePoint >= 0xD800 && codePoint < 0xE000;
    return codePoint < Smallest[length] || codePoint > 0x10FFFF || isSurrogate ? 0 : length;
}

// Where the last sequence of these bytes begins, whole or not.
size_t LastSequence(const uint8_t* bytes, size_t count) {
    size_t start = count;
    while (start > 0 && count - start < 3 && (bytes[start - 1] & 0xC0) == 0x80) --start;
    return start > 0 && bytes[start - 1] >= 0xC0 ? start - 1 : count;
}

// Converts one valid sequence of more than one byte and moves past it and what it has become.
void WidenSequence(const uint8_t*& at, Char*& out) {
    const uint32_t lead = at[0];
    const uint32_t second = at[1] & 0x3Fu;
    if (lead < 0xE0) {
        *out++ = static_cast<Char>((lead & 0x1F) << 6 | second);
        at += 2;
        return;
    }
    const uint32_t third = at[2] & 0x3Fu;
    if (lead < 0xF0) {
        *out++ = static_cast<Char>((lead & 0x0F) << 12 | second << 6 | third);
        at += 3;
        return;
    }
    const uint32_t codePoint = (lead & 0x07) << 18 | second << 12 | third << 6 | (at[3] & 0x3Fu);
    *out++ = Surrogates::FirstOf(codePoint);
    *out++ = Surrogates::SecondOf(codePoint);
    at += 4;
}

} // namespace

size_t Scan::ValidUtf8(const uint8_t* bytes, size_t count) {
    size_t at = 0;
    // Only a byte that is not ASCII may belong to a sequence that goes on.
    for (; at + Step <= count; at += Step) {
        const bool goesOn = at > 0 && bytes[at - 1] >= 0x80;
        if ((goesOn || !IsStepAscii(bytes + at)) && !IsStepValid(bytes + at, at == 0)) break;
    }
    // The plain version takes the sequence that the last good step may have cut, and finds the exact place of an error.
    at = LastSequence(bytes, at);
    return at + Reference::ValidUtf8(bytes + at, count - at);
}

Scan::Copied Scan::WidenUtf8(const uint8_t* bytes, size_t count, Char* out, BreakCounts& breaks) {
    const uint8_t* at = bytes;
    const uint8_t* const end = bytes + count;
    Char* next = out;
    while (at < end) {
        if (*at < 0x80) {
            const Copied plain = WidenText(at, static_cast<size_t>(end - at), next, breaks);
            at += plain.taken;
            next += plain.written;
        }
        while (at < end && *at >= 0x80) WidenSequence(at, next);
    }
    return {count, static_cast<size_t>(next - out)};
}

size_t Scan::Reference::ValidUtf8(const uint8_t* bytes, size_t count) {
    size_t at = 0;
    while (at < count) {
        const size_t length = SequenceLength(bytes + at, count - at);
        if (length == 0) break;
        at += length;
    }
    return at;
}
