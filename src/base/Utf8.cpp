#include "base/Utf8.h"

#include "base/Scan.h"
#include "base/Surrogates.h"

namespace {

constexpr uint32_t Replacement = 0xFFFD;

// One code point and how many units of input it was decoded from.
struct Decoded {
    uint32_t codePoint;
    size_t taken;
};

// What a lead byte announces: the bytes that follow it and the range of the first of them. That range
// alone keeps out overlong forms, surrogates and values above U+10FFFF.
struct Lead {
    uint8_t following;
    uint8_t lowest;
    uint8_t highest;
};

Lead LeadOf(uint8_t byte) {
    if (byte < 0xC2 || byte > 0xF4) return {0, 0, 0};
    if (byte < 0xE0) return {1, 0x80, 0xBF};
    if (byte < 0xF0)
        return {2, static_cast<uint8_t>(byte == 0xE0 ? 0xA0 : 0x80), static_cast<uint8_t>(byte == 0xED ? 0x9F : 0xBF)};
    return {3, static_cast<uint8_t>(byte == 0xF0 ? 0x90 : 0x80), static_cast<uint8_t>(byte == 0xF4 ? 0x8F : 0xBF)};
}

Decoded DecodeUtf8(const uint8_t* bytes, size_t count) {
    if (bytes[0] < 0x80) return {bytes[0], 1};
    Lead lead = LeadOf(bytes[0]);
    if (lead.following == 0) return {Replacement, 1};
    // What the lead byte has of it: 5, 4 or 3 bits, the fewer the more bytes follow.
    uint32_t codePoint = bytes[0] & (0x3Fu >> lead.following);
    for (size_t i = 1; i <= lead.following; ++i) {
        // As far as a sequence is good it is replaced as a whole; what follows is looked at again.
        if (i == count || bytes[i] < lead.lowest || bytes[i] > lead.highest) return {Replacement, i};
        codePoint = codePoint << 6 | (bytes[i] & 0x3F);
        lead.lowest = 0x80;
        lead.highest = 0xBF;
    }
    return {codePoint, lead.following + size_t{1}};
}

Decoded DecodeUtf16(const Char* text, size_t count) {
    if (!Surrogates::IsHalf(text[0])) return {text[0], 1};
    if (count == 1 || !Surrogates::IsPair(text[0], text[1])) return {Replacement, 1};
    return {Surrogates::CodePoint(text[0], text[1]), 2};
}

size_t EncodeUtf16(uint32_t codePoint, Char (&units)[2]) {
    if (codePoint < 0x10000) {
        units[0] = static_cast<Char>(codePoint);
        return 1;
    }
    units[0] = Surrogates::FirstOf(codePoint);
    units[1] = Surrogates::SecondOf(codePoint);
    return 2;
}

size_t EncodeUtf8(uint32_t codePoint, uint8_t (&bytes)[4]) {
    const size_t length = codePoint < 0x80 ? 1 : codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
    static constexpr uint8_t LeadBits[] = {0, 0x00, 0xC0, 0xE0, 0xF0};
    for (size_t i = length - 1; i > 0; --i, codePoint >>= 6) bytes[i] = static_cast<uint8_t>(0x80 | (codePoint & 0x3F));
    bytes[0] = static_cast<uint8_t>(LeadBits[length] | codePoint);
    return length;
}

// What the two directions differ in. CopyAscii takes a leading run of ASCII at once.
struct Utf8ToUtf16 {
    static constexpr size_t MaxUnits = 2;
    static constexpr auto Decode = DecodeUtf8;
    static constexpr auto Encode = EncodeUtf16;
    static constexpr auto CopyAscii = Scan::WidenAscii;
};
struct Utf16ToUtf8 {
    static constexpr size_t MaxUnits = 4;
    static constexpr auto Decode = DecodeUtf16;
    static constexpr auto Encode = EncodeUtf8;
    static constexpr auto CopyAscii = Scan::NarrowAscii;
};

// Counts only, with a null `out`.
template <class Direction, class In, class Out> size_t Convert(const In* in, size_t count, Out* out, size_t capacity) {
    size_t written = 0;
    for (size_t at = 0; at < count;) {
        if (out && in[at] < 0x80) {
            const size_t room = capacity - written;
            const size_t run = Direction::CopyAscii(in + at, count - at < room ? count - at : room, out + written);
            at += run;
            written += run;
            if (run) continue;
        }
        Out units[Direction::MaxUnits];
        const Decoded decoded = Direction::Decode(in + at, count - at);
        const size_t length = Direction::Encode(decoded.codePoint, units);
        if (out) {
            if (length > capacity - written) return 0;
            for (size_t i = 0; i < length; ++i) out[written + i] = units[i];
        }
        at += decoded.taken;
        written += length;
    }
    return written;
}

} // namespace

size_t Utf8::ToUtf16(const uint8_t* bytes, size_t count, Char* out, size_t capacity) {
    return Convert<Utf8ToUtf16>(bytes, count, out, capacity);
}

size_t Utf8::FromUtf16(const Char* text, size_t count, uint8_t* out, size_t capacity) {
    return Convert<Utf16ToUtf8>(text, count, out, capacity);
}

size_t Utf8::WholeCharacters(const uint8_t* bytes, size_t count) {
    // Back to the lead byte of the last sequence, which is at most three bytes away.
    size_t start = count;
    while (start > 0 && count - start < 3 && (bytes[start - 1] & 0xC0) == 0x80) --start;
    if (start == 0 || bytes[start - 1] < 0xC0) return count;
    const uint8_t lead = bytes[--start];
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    return start + length > count ? start : count;
}
