#include "base/Text.h"

#include <cstring>

namespace {

template <bool Fold> int CompareText(const Char* left, const Char* right) {
    for (;; ++left, ++right) {
        const Char a = Fold ? Text::FoldCase(*left) : *left;
        const Char b = Fold ? Text::FoldCase(*right) : *right;
        if (a != b) return a < b ? -1 : 1;
        if (a == 0) return 0;
    }
}

} // namespace

uint32_t Text::Length(const Char* text) {
    // Not a job for Scan, which may read up to the count it is given, and here there is none.
    uint32_t length = 0;
    while (text[length]) ++length;
    return length;
}

int Text::Compare(const Char* left, const Char* right) { return CompareText<false>(left, right); }

bool Text::Equal(const Char* left, const Char* right) { return Compare(left, right) == 0; }

bool Text::EqualNoCase(const Char* left, const Char* right) { return CompareText<true>(left, right) == 0; }

bool Text::EqualCount(const Char* left, const Char* right, size_t count) {
    return count == 0 || std::memcmp(left, right, count * sizeof(Char)) == 0;
}

bool Text::EqualCountNoCase(const Char* left, const Char* right, size_t count) {
    for (size_t i = 0; i < count; ++i)
        if (FoldCase(left[i]) != FoldCase(right[i])) return false;
    return true;
}

uint32_t Text::ParseDecimal(const Char* text) {
    uint32_t value = 0;
    for (; IsDigit(*text); ++text) value = value * 10 + (*text - u'0');
    return value;
}
