#include "base/SystemCodePage.h"

#include "base/CodePage.h"

#include "base/Scan.h"
#include "base/posix/BestFit1252.h"

#include <algorithm>
#include <iterator>

// Windows-1252 as Windows converts it; the three pages that are known are this one here.

namespace {

// Bytes 80 to 9F. The five that the page leaves undefined are the control characters of the same
// number, so that every byte survives the way there and back.
constexpr Char HighControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

Char CharacterOf(uint8_t byte) { return byte >= 0x80 && byte < 0xA0 ? HighControls[byte - 0x80] : Char{byte}; }

// False when there is neither a byte for it nor a best fit.
bool FindByte(Char c, uint8_t& byte) {
    byte = static_cast<uint8_t>(c);
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return true;
    for (uint8_t i = 0; i < 32; ++i) {
        byte = static_cast<uint8_t>(0x80 + i);
        if (HighControls[i] == c) return true;
    }
    byte = static_cast<uint8_t>(c - 0xFF01 + '!');
    if (c >= 0xFF01 && c <= 0xFF5E) return true;
    const BestFit* const end = std::end(BestFits);
    const BestFit* const found = std::lower_bound(
        BestFits, end, c, [](const BestFit& fit, Char character) { return fit.character < character; });
    const bool fits = found != end && found->character == c;
    byte = fits ? found->byte : '?';
    return fits;
}

} // namespace

bool SystemCodePage::IsKnown(CodePage page) {
    return page == CodePage::Ansi || page == CodePage::Oem || page == CodePage::Windows1252;
}

size_t SystemCodePage::MaxBytesPerCharacter(CodePage) { return 1; }

size_t SystemCodePage::ToUtf16(CodePage, const uint8_t* bytes, size_t count, Char* out, size_t capacity) {
    if (!out) return count;
    if (count > capacity) return 0;
    for (size_t at = 0; at < count; ++at) {
        at += Scan::WidenAscii(bytes + at, count - at, out + at);
        if (at < count) out[at] = CharacterOf(bytes[at]);
    }
    return count;
}

size_t SystemCodePage::FromUtf16(CodePage, const Char* text, size_t count, uint8_t* out, size_t capacity) {
    if (!out) return count;
    if (count > capacity) return 0;
    for (size_t at = 0; at < count; ++at) {
        at += Scan::NarrowAscii(text + at, count - at, out + at);
        if (at < count) FindByte(text[at], out[at]);
    }
    return count;
}

bool SystemCodePage::CanExpress(CodePage, const Char* text, size_t count) {
    uint8_t byte = 0;
    return std::all_of(text, text + count, [&](Char c) { return FindByte(c, byte); });
}

size_t SystemCodePage::WholeCharacters(CodePage, const uint8_t*, size_t count) { return count; }
