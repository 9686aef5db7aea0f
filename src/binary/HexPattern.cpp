#include "binary/HexPattern.h"

#include "base/Text.h"

uint32_t HexPattern::DigitValue(Char character) {
    const Char c = Text::FoldCase(character);
    if (Text::IsDigit(c)) return static_cast<uint32_t>(c - u'0');
    if (c >= u'a' && c <= u'f') return static_cast<uint32_t>(c - u'a' + 10);
    return NoDigit;
}

HexPattern::Result HexPattern::Parse(const Char* text, uint32_t length, Array<uint8_t>& out) {
    out.Clear();
    for (uint32_t at = 0; at < length;) {
        if (Text::IsBlank(text[at])) {
            ++at;
            continue;
        }
        const uint32_t high = DigitValue(text[at]);
        const uint32_t low = at + 1 < length ? DigitValue(text[at + 1]) : NoDigit;
        const bool isPair = high < 16 && low < 16;
        if (isPair && out.Append(static_cast<uint8_t>(high << 4 | low))) {
            at += 2;
            continue;
        }
        out.Clear();
        return isPair ? Result::OutOfMemory : Result::Invalid;
    }
    return Result::Bytes;
}
