#include "view/FilePosition.h"

#include "base/Text.h"

bool FilePosition::Parse(TextSpan text) {
    uint32_t at = 0;
    const auto charAt = [&](uint32_t index) { return index < text.length ? text.text[index] : Char(0); };
    while (Text::IsBlank(charAt(at))) ++at;
    // Parallel builds number the lines of their output: "1>".
    if (Text::IsDigit(charAt(at)) && charAt(at + 1) == u'>') at += 2;

    const uint32_t start = at;
    if (Text::IsAsciiLetter(charAt(at)) && charAt(at + 1) == u':' && charAt(at + 2) == u'\\') at += 3;
    while (at < text.length && charAt(at) != u':' && charAt(at) != u'(') ++at;
    if (at == start || !path.Assign(text.text + start, at - start)) return false;

    uint64_t number = 0;
    uint32_t digits = 0;
    for (++at; Text::IsDigit(charAt(at)); ++at, ++digits) {
        number = number * 10 + (charAt(at) - u'0');
        // A larger one is beyond the end of any text, too.
        if (number > UINT32_MAX) number = UINT32_MAX;
    }
    line = digits ? static_cast<uint32_t>(number - 1) : NoLine;
    return true;
}
