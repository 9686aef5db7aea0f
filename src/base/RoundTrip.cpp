#include "base/RoundTrip.h"

#include "base/Scan.h"
#include "base/ScanUtf8.h"
#include "base/Surrogates.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t PieceCharacters = 4096;
constexpr size_t PieceBytes = PieceCharacters * MaxCharacterBytes;
constexpr size_t LongestSequence = 4; // of UTF-8, in bytes

// The next piece ends between two characters.
size_t PieceLength(const Char* text, size_t left) {
    if (left <= PieceCharacters) return left;
    return PieceCharacters - (Surrogates::SplitsPair(text, left, PieceCharacters) ? 1 : 0);
}

} // namespace

bool KeepsText(CodePage page, const Char* text, size_t count) {
    uint8_t bytes[PieceBytes];
    Char back[PieceCharacters];
    while (count) {
        const size_t piece = PieceLength(text, count);
        if (Scan::NarrowAscii(text, piece, bytes) < piece) {
            const size_t converted = FromUtf16(page, text, piece, bytes, PieceBytes);
            const size_t returned = converted ? ToUtf16(page, bytes, converted, back, PieceCharacters) : 0;
            if (returned != piece || !std::equal(back, back + piece, text)) return false;
        }
        text += piece;
        count -= piece;
    }
    return true;
}

bool GivesBytes(CodePage page, const Char* text, size_t count, const uint8_t* bytes, size_t byteCount) {
    uint8_t made[PieceBytes];
    while (count) {
        const size_t piece = PieceLength(text, count);
        const size_t converted = FromUtf16(page, text, piece, made, PieceBytes);
        if (!converted || converted > byteCount || std::memcmp(made, bytes, converted) != 0) return false;
        text += piece;
        count -= piece;
        bytes += converted;
        byteCount -= converted;
    }
    return byteCount == 0;
}

bool LooksLikeUtf8(CodePage page, const Char* text, size_t count) {
    constexpr uint8_t TwoBytes[] = {0xC3, 0xA9};
    if (GivesBytes(page, u"\u00E9", 1, TwoBytes, sizeof(TwoBytes))) return false;
    uint8_t bytes[LongestSequence + PieceBytes];
    size_t waiting = 0; // bytes of a sequence that the piece before has begun
    bool isBeyondAscii = false;
    while (count) {
        const size_t piece = PieceLength(text, count);
        uint8_t* const made = bytes + waiting;
        size_t converted = Scan::NarrowAscii(text, piece, made);
        if (converted < piece) {
            converted = FromUtf16(page, text, piece, made, PieceBytes);
            isBeyondAscii = isBeyondAscii || std::any_of(made, made + converted, [](uint8_t b) { return b > 0x7F; });
        }
        const size_t total = waiting + converted;
        const size_t valid = Scan::ValidUtf8(bytes, total);
        waiting = total - valid;
        if (waiting >= LongestSequence) return false;
        std::copy(bytes + valid, bytes + total, bytes);
        text += piece;
        count -= piece;
    }
    return isBeyondAscii && waiting == 0;
}

bool KeepsEveryByte(CodePage page) {
    constexpr size_t Count = 255; // the NUL needs no asking
    uint8_t bytes[Count];
    Char text[Count];
    for (size_t i = 0; i < Count; ++i) bytes[i] = static_cast<uint8_t>(i + 1);
    return MaxBytes(page, 1) == 1 && ToUtf16(page, bytes, Count, text, Count) == Count &&
           GivesBytes(page, text, Count, bytes, Count);
}
