#include "base/SystemCodePage.h"

#include "base/CodePage.h"
#include "base/Surrogates.h"

#include "base/Utf8.h"
#include "base/win32/Windows.h"

#include <algorithm>

// The system's conversions count in `int`, so long input goes through them in pieces.

namespace {

constexpr size_t LargestPiece = size_t{1} << 29;

constexpr UINT Gb18030 = 54936;

UINT Number(CodePage page) { return static_cast<UINT>(page); }

// With the number of the page that the system has for a name.
UINT RealNumber(CodePage page) {
    if (page == CodePage::Ansi) return GetACP();
    return page == CodePage::Oem ? GetOEMCP() : Number(page);
}

// How many bytes the character takes that begins there; the first two say. More than `left` when they are cut off.
size_t CharacterLength(UINT number, const uint8_t* bytes, size_t left) {
    if (number != Gb18030) return IsDBCSLeadByteEx(number, bytes[0]) ? 2 : 1;
    if (bytes[0] < 0x81) return 1;
    return left > 1 && bytes[1] >= '0' && bytes[1] <= '9' ? 4 : 2;
}

int Clamp(size_t count) { return static_cast<int>(std::min<size_t>(count, INT_MAX)); }

// The length of the next piece. It ends after a byte below 0x30, which is a character of its own in
// every page that a system can have, so that no character of several bytes is split.
size_t PieceLength(const uint8_t* bytes, size_t count) {
    if (count <= LargestPiece) return count;
    size_t length = LargestPiece;
    while (length && bytes[length - 1] >= 0x30) --length;
    return length ? length : LargestPiece;
}

size_t PieceLength(const Char* text, size_t count) {
    if (count <= LargestPiece) return count;
    return LargestPiece - (Surrogates::IsFirst(text[LargestPiece - 1]) ? 1 : 0);
}

int ConvertPiece(UINT page, const uint8_t* bytes, size_t count, Char* out, size_t room) {
    return MultiByteToWideChar(page, 0, reinterpret_cast<const char*>(bytes), static_cast<int>(count), Wide(out),
                               out ? Clamp(room) : 0);
}

int ConvertPiece(UINT page, const Char* text, size_t count, uint8_t* out, size_t room) {
    return WideCharToMultiByte(page, 0, Wide(text), static_cast<int>(count), reinterpret_cast<char*>(out),
                               out ? Clamp(room) : 0, nullptr, nullptr);
}

template <class In, class Out> size_t Convert(UINT page, const In* in, size_t count, Out* out, size_t capacity) {
    // A room of 0 would make the system count instead of fail.
    if (out && capacity == 0) return 0;
    size_t written = 0;
    while (count) {
        const size_t piece = PieceLength(in, count);
        if (out && written == capacity) return 0;
        const int converted = ConvertPiece(page, in, piece, out ? out + written : nullptr, capacity - written);
        if (converted <= 0) return 0;
        written += static_cast<size_t>(converted);
        in += piece;
        count -= piece;
    }
    return written;
}

} // namespace

bool SystemCodePage::IsKnown(CodePage page) {
    CPINFO info{};
    const UINT number = RealNumber(page);
    return number == CP_UTF8 || (GetCPInfo(number, &info) && (info.MaxCharSize <= 2 || number == Gb18030));
}

size_t SystemCodePage::MaxBytesPerCharacter(CodePage page) {
    CPINFO info{};
    return GetCPInfo(Number(page), &info) ? info.MaxCharSize : 1;
}

size_t SystemCodePage::ToUtf16(CodePage page, const uint8_t* bytes, size_t count, Char* out, size_t capacity) {
    return Convert(Number(page), bytes, count, out, out ? capacity : 0);
}

size_t SystemCodePage::FromUtf16(CodePage page, const Char* text, size_t count, uint8_t* out, size_t capacity) {
    return Convert(Number(page), text, count, out, out ? capacity : 0);
}

bool SystemCodePage::CanExpress(CodePage page, const Char* text, size_t count) {
    const UINT number = RealNumber(page);
    if (number == CP_UTF8) return true; // the system does not say for it
    constexpr size_t Piece = 256;
    while (count) {
        const size_t piece = std::min(count, Piece);
        char bytes[Piece * MaxCharacterBytes];
        BOOL replaced = FALSE;
        const int length = WideCharToMultiByte(number, 0, Wide(text), static_cast<int>(piece), bytes, sizeof(bytes),
                                               nullptr, &replaced);
        if (length <= 0 || replaced) return false;
        text += piece;
        count -= piece;
    }
    return true;
}

size_t SystemCodePage::WholeCharacters(CodePage page, const uint8_t* bytes, size_t count) {
    const UINT number = RealNumber(page);
    // The user may have chosen UTF-8 as the system's page.
    if (number == CP_UTF8) return Utf8::WholeCharacters(bytes, count);
    if (MaxBytesPerCharacter(page) == 1) return count;
    size_t at = 0;
    while (at < count) {
        const size_t length = CharacterLength(number, bytes + at, count - at);
        if (at + length > count) break;
        at += length;
    }
    return at;
}
