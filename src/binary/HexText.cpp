#include "binary/HexText.h"

#include "base/Text.h"
#include "base/WString.h"
#include "binary/HexPattern.h"

uint32_t HexText::CountDigits(uint64_t number) {
    uint32_t count = 0;
    for (; number; number >>= 4) ++count;
    return count;
}

void HexText::PutDigits(Char* out, uint64_t number, uint32_t count) {
    static constexpr Char Digits[] = u"0123456789ABCDEF";
    for (uint32_t at = count; at--; number >>= 4) out[at] = Digits[number & 15];
}

bool HexText::AppendOffset(WString& out, uint64_t offset) {
    const uint32_t digits = CountDigits(offset);
    const uint32_t count = digits > MinOffsetDigits ? digits : MinOffsetDigits;
    Char text[MaxOffsetDigits];
    PutDigits(text, offset, count);
    return out.Append(text, count);
}

bool HexText::ParseOffset(const Char* text, uint32_t length, uint64_t& offset) {
    const Char* end = text + length;
    while (text < end && Text::IsBlank(*text)) ++text;
    while (text < end && Text::IsBlank(end[-1])) --end;
    if (end - text > 2 && text[0] == u'0' && Text::FoldCase(text[1]) == u'x') text += 2;
    if (text == end) return false;
    uint64_t read = 0;
    for (; text < end; ++text) {
        const uint32_t digit = HexPattern::DigitValue(*text);
        if (digit > 15) return false;
        read = read >> 60 ? UINT64_MAX : read << 4 | digit;
    }
    offset = read;
    return true;
}
