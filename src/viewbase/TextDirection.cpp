#include "viewbase/TextDirection.h"

#include <algorithm>
#include <iterator>

namespace {

using TextDirection::Kind;

// From `first` up to the next row. Characters beyond U+FFFF count by their first half: those of U+10800 to U+10FFF
// and U+1E800 to U+1EFFF are letters.
struct CodeRange {
    Char first;
    Kind kind;
};

constexpr CodeRange CodeRanges[] = {
    {0x0000, Kind::Plain},     {0x0300, Kind::Combining}, {0x0370, Kind::Plain},     {0x0483, Kind::Combining},
    {0x048A, Kind::Plain},     {0x0590, Kind::Letter},    {0x0591, Kind::Combining}, {0x05BE, Kind::Letter},
    {0x05BF, Kind::Combining}, {0x05C0, Kind::Letter},    {0x05C1, Kind::Combining}, {0x05C3, Kind::Letter},
    {0x05C4, Kind::Combining}, {0x05C6, Kind::Letter},    {0x05C7, Kind::Combining}, {0x05C8, Kind::Letter},
    {0x0610, Kind::Combining}, {0x061B, Kind::Letter},    {0x064B, Kind::Combining}, {0x0660, Kind::Letter},
    {0x0670, Kind::Combining}, {0x0671, Kind::Letter},    {0x06D6, Kind::Combining}, {0x06DD, Kind::Letter},
    {0x06DF, Kind::Combining}, {0x06E5, Kind::Letter},    {0x06E7, Kind::Combining}, {0x06E9, Kind::Letter},
    {0x06EA, Kind::Combining}, {0x06EE, Kind::Letter},    {0x0711, Kind::Combining}, {0x0712, Kind::Letter},
    {0x0730, Kind::Combining}, {0x074B, Kind::Letter},    {0x07A6, Kind::Combining}, {0x07B1, Kind::Letter},
    {0x07EB, Kind::Combining}, {0x07F4, Kind::Letter},    {0x07FD, Kind::Combining}, {0x07FE, Kind::Letter},
    {0x0816, Kind::Combining}, {0x081A, Kind::Letter},    {0x081B, Kind::Combining}, {0x0824, Kind::Letter},
    {0x0825, Kind::Combining}, {0x0828, Kind::Letter},    {0x0829, Kind::Combining}, {0x082E, Kind::Letter},
    {0x0859, Kind::Combining}, {0x085C, Kind::Letter},    {0x0898, Kind::Combining}, {0x08A0, Kind::Letter},
    {0x08CA, Kind::Combining}, {0x08E2, Kind::Letter},    {0x08E3, Kind::Combining}, {0x0900, Kind::Plain},
    {0x1AB0, Kind::Combining}, {0x1B00, Kind::Plain},     {0x1DC0, Kind::Combining}, {0x1E00, Kind::Plain},
    {0x200F, Kind::Letter},    {0x2010, Kind::Plain},     {0x202A, Kind::Control},   {0x202F, Kind::Plain},
    {0x2066, Kind::Control},   {0x206A, Kind::Plain},     {0x20D0, Kind::Combining}, {0x2100, Kind::Plain},
    {0xD802, Kind::Letter},    {0xD804, Kind::Plain},     {0xD83A, Kind::Letter},    {0xD83C, Kind::Plain},
    {0xDC00, Kind::Combining}, {0xE000, Kind::Plain},     {0xFB1D, Kind::Letter},    {0xFB1E, Kind::Combining},
    {0xFB1F, Kind::Letter},    {0xFE00, Kind::Combining}, {0xFE10, Kind::Plain},     {0xFE20, Kind::Combining},
    {0xFE30, Kind::Plain},     {0xFE70, Kind::Letter},    {0xFEFF, Kind::Plain},
};

static_assert(std::is_sorted(std::begin(CodeRanges), std::end(CodeRanges),
                             [](const CodeRange& a, const CodeRange& b) { return a.first < b.first; }));

} // namespace

TextDirection::Kind TextDirection::Find(Char character) {
    const auto next = std::upper_bound(std::begin(CodeRanges), std::end(CodeRanges), character,
                                       [](Char wanted, const CodeRange& range) { return wanted < range.first; });
    return next[-1].kind;
}

Char TextDirection::MarkOf(Char control) {
    switch (control) {
    case 0x202A: // left-to-right: embedding, override, isolate
    case 0x202D:
    case 0x2066:
        return u'>';
    case 0x202B: // the same right to left
    case 0x202E:
    case 0x2067:
        return u'<';
    case 0x2068: // whichever way its first letter runs
        return u'?';
    default: // ends the one before
        return u'|';
    }
}
