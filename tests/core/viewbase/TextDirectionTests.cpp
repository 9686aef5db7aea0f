#include "viewbase/TextDirection.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using TextDirection::Kind;
using TextDirection::KindOf;
using TextDirection::MarkOf;

void ExpectAll(const std::u16string& characters, Kind kind) {
    for (const Char c : characters) EXPECT_EQ(KindOf(c), kind) << std::hex << uint32_t{c};
}

} // namespace

TEST(TextDirection, LettersThatRunFromRightToLeft) {
    ExpectAll(u"\u05D0\u05EA\u0627\u064A\u0710\u0780\u07CA\u0800\u0840\u08A0\uFB1D\uFB2A\uFB50\uFDFC\uFE8D\uFEFC",
              Kind::Letter);
    // Digits that are ordered with them, and marks that act like them.
    ExpectAll(u"\u0660\u0669\u06F0\u06F9\u060C\u200F\u061C", Kind::Letter);
    ExpectAll({0xD802, 0xD803, 0xD83A, 0xD83B}, Kind::Letter);
}

TEST(TextDirection, WhatIsDrawnOverALetterBelongsToIt) {
    ExpectAll(u"\u0301\u05B8\u05C7\u064E\u0670\u06D6\u0711\u07A6\u07EB\u0816\u08E4\u20D7\uFB1E\uFE0F\uFE20",
              Kind::Combining);
    ExpectAll({0xDC00, 0xDFFF}, Kind::Combining);
}

TEST(TextDirection, EverythingElseIsPlain) {
    ExpectAll(u"\t\n aZ0~\u00E9\u02FF\u0370\u03B1\u0416\u058F\u0900\u0E01\u2010\u2029\u202F\u2065\u206A\u4E00\uAC00"
              u"\uE000\uFE10\uFEFF\uFFFD",
              Kind::Plain);
    ExpectAll({0xD800, 0xD804, 0xD83C, 0xDBFF}, Kind::Plain); // emoji
}

TEST(TextDirection, TheControlsThatReorderTextHaveMarks) {
    const std::u16string controls = u"\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069";
    ExpectAll(controls, Kind::Control);
    std::u16string marks;
    for (const Char c : controls) marks += MarkOf(c);
    EXPECT_EQ(marks, u"><|><><?|");
}

TEST(TextDirection, NothingElseIsAControl) {
    int controls = 0;
    for (uint32_t c = 0; c < 0x10000; ++c) controls += KindOf(static_cast<Char>(c)) == Kind::Control;
    EXPECT_EQ(controls, 9);
}
