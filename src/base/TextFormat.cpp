#include "base/TextFormat.h"

#include "base/Text.h"
#include "base/WString.h"

namespace {

// What is between the per cent sign and the end of a conversion.
struct Conversion {
    bool zeroFill = false;
    uint32_t width = 0;
    Char letter = 0; // 0 when this is no conversion after all
};

// Parses the conversion at `at` (after its per cent sign); returns what follows it.
const Char* ParseConversion(const Char* at, Conversion& conversion) {
    if (*at == u'0') {
        conversion.zeroFill = true;
        ++at;
    }
    for (; Text::IsDigit(*at); ++at) conversion.width = conversion.width * 10 + (*at - u'0');
    if (*at == u'l') ++at;
    static constexpr Char Known[] = u"sudxX%";
    for (const Char* known = Known; *known; ++known)
        if (*at == *known) conversion.letter = *at;
    return conversion.letter ? at + 1 : at;
}

bool AppendPadded(WString& out, const Char* text, uint32_t length, const Conversion& conversion) {
    for (uint32_t i = length; i < conversion.width; ++i)
        if (!out.AppendChar(conversion.zeroFill ? u'0' : u' ')) return false;
    return out.Append(text, length);
}

bool AppendNumber(WString& out, uint32_t number, const Conversion& conversion) {
    const bool isHexadecimal = conversion.letter == u'x' || conversion.letter == u'X';
    const uint32_t base = isHexadecimal ? 16 : 10;
    const Char* digits = conversion.letter == u'X' ? u"0123456789ABCDEF" : u"0123456789abcdef";
    Char text[10];
    uint32_t first = 10;
    do {
        text[--first] = digits[number % base];
        number /= base;
    } while (number);
    return AppendPadded(out, text + first, 10 - first, conversion);
}

bool AppendArgument(WString& out, const Conversion& conversion, const Text::FormatArgument& argument) {
    if (argument.kind == Text::FormatArgument::Kind::Number) return AppendNumber(out, argument.number, conversion);
    const Char* text = argument.string ? argument.string : u"";
    return AppendPadded(out, text, Text::Length(text), conversion);
}

bool AppendAll(WString& out, const Char* format, const Text::FormatArgument* arguments, size_t count) {
    const Text::FormatArgument* const end = arguments + count;
    while (*format) {
        if (*format != u'%') {
            if (!out.AppendChar(*format++)) return false;
            continue;
        }
        Conversion conversion;
        const Char* const rest = ParseConversion(format + 1, conversion);
        bool done = true;
        if (conversion.letter == 0)
            done = out.Append(format, rest - format);
        else if (conversion.letter == u'%')
            done = out.AppendChar(u'%');
        else if (arguments != end) // without one left the conversion is left out
            done = AppendArgument(out, conversion, *arguments++);
        if (!done) return false;
        format = rest;
    }
    return true;
}

} // namespace

bool Text::AppendFormat(WString& out, const Char* format, const FormatArgument* arguments, size_t count) {
    const uint32_t before = out.Length();
    if (AppendAll(out, format, arguments, count)) return true;
    out.Truncate(before);
    return false;
}
