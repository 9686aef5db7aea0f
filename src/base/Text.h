#pragma once

#include "base/Types.h"

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

} // namespace Text
