#pragma once

#include "base/Types.h"

class WString;

// Small helpers over NUL-terminated or counted UTF-16 text. "NoCase" folds the ASCII letters A-Z
// and nothing else.
namespace Text {

constexpr bool IsDigit(Char c) { return c >= u'0' && c <= u'9'; }
constexpr bool IsAsciiLetter(Char c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
// Space and tab, nothing else.
constexpr bool IsBlank(Char c) { return c == u' ' || c == u'\t'; }
// Blanks or nothing up to the NUL.
constexpr bool IsBlankText(const Char* text) {
    while (IsBlank(*text)) ++text;
    return *text == 0;
}
// The word characters of searching, typing, keywords and caret moves.
constexpr bool IsWordChar(Char c) { return IsDigit(c) || IsAsciiLetter(c) || c == u'_' || c == u'#'; }
constexpr Char FoldCase(Char c) { return c >= u'A' && c <= u'Z' ? static_cast<Char>(c + 32) : c; }

// Characters before the terminator, at most 2^32 - 1.
uint32_t Length(const Char* text);
// Ordinal comparison: below 0, 0, above 0.
int Compare(const Char* left, const Char* right);
bool Equal(const Char* left, const Char* right);
bool EqualNoCase(const Char* left, const Char* right);
// Compares exactly `count` characters, NULs included.
bool EqualCount(const Char* left, const Char* right, size_t count);
bool EqualCountNoCase(const Char* left, const Char* right, size_t count);

// Reads leading ASCII digits and stops at the first other character: no sign, no blanks skipped.
// Nothing to read gives 0; overflow wraps modulo 2^32.
uint32_t ParseDecimal(const Char* text);

// One argument of AppendFormat.
struct FormatArgument {
    enum class Kind { Number, String } kind;
    uint32_t number = 0;
    const Char* string = nullptr;
    FormatArgument(uint32_t value) : kind(Kind::Number), number(value) {}
    FormatArgument(const Char* value) : kind(Kind::String), string(value) {}
};

// Appends `format` with its arguments filled in, in order. Understood: %s and %ls (text), %u and %d
// (unsigned decimal), %x and %X (hexadecimal), each with an optional zero flag and width, and %%.
// On failure the string is as it was.
bool AppendFormat(WString& out, const Char* format, const FormatArgument* arguments, size_t count);

template <class... Arguments> bool AppendFormat(WString& out, const Char* format, const Arguments&... arguments) {
    const FormatArgument list[] = {FormatArgument(arguments)...};
    return AppendFormat(out, format, list, sizeof...(arguments));
}

} // namespace Text
