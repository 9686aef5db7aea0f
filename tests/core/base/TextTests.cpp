#include "base/Text.h"

#include "base/TextFormat.h"
#include "base/WString.h"
#include "support/FailureInjection.h"

#include <gtest/gtest.h>
#include <string>

namespace {

std::u16string Content(const WString& string) { return {string.Text(), string.Length()}; }

template <class... Arguments> std::u16string Format(const Char* format, const Arguments&... arguments) {
    WString out;
    EXPECT_TRUE(Text::AppendFormat(out, format, arguments...));
    return Content(out);
}

} // namespace

TEST(Text, ClassesHoldTheAsciiCharactersNamed) {
    for (unsigned c = 0; c < 0x10000; ++c) {
        const auto unit = static_cast<Char>(c);
        const bool isDigit = c >= '0' && c <= '9';
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        ASSERT_EQ(Text::IsDigit(unit), isDigit) << c;
        ASSERT_EQ(Text::IsAsciiLetter(unit), isLetter) << c;
        ASSERT_EQ(Text::IsBlank(unit), c == ' ' || c == '\t') << c;
        const Char text[] = {u' ', unit, u'\t', 0};
        ASSERT_EQ(Text::IsBlankText(text), c == 0 || c == ' ' || c == '\t') << c;
        ASSERT_EQ(Text::IsWordChar(unit), isDigit || isLetter || c == '_' || c == '#') << c;
        ASSERT_EQ(Text::FoldCase(unit), c >= 'A' && c <= 'Z' ? c + 32 : c) << c;
    }
}

TEST(Text, LengthCountsUpToTheTerminator) {
    EXPECT_EQ(Text::Length(u""), 0u);
    EXPECT_EQ(Text::Length(u"abc"), 3u);
    EXPECT_EQ(Text::Length(u"ab\0c"), 2u);
}

TEST(Text, CompareIsOrdinal) {
    EXPECT_EQ(Text::Compare(u"abc", u"abc"), 0);
    EXPECT_LT(Text::Compare(u"ab", u"abc"), 0);
    EXPECT_GT(Text::Compare(u"abc", u"ab"), 0);
    EXPECT_LT(Text::Compare(u"Z", u"a"), 0);
    EXPECT_LT(Text::Compare(u"z", u"\u00E9"), 0);
    const Char surrogate[] = {0xD800, 0};
    EXPECT_GT(Text::Compare(u"\uFFFD", surrogate), 0);
    EXPECT_TRUE(Text::Equal(u"", u""));
    EXPECT_FALSE(Text::Equal(u"a", u"A"));
}

TEST(Text, EqualNoCaseFoldsAsciiLettersOnly) {
    EXPECT_TRUE(Text::EqualNoCase(u"HeLLo_1", u"hEllO_1"));
    EXPECT_FALSE(Text::EqualNoCase(u"\u00C4", u"\u00E4"));
    EXPECT_FALSE(Text::EqualNoCase(u"[", u"{"));
    EXPECT_FALSE(Text::EqualNoCase(u"@", u"`"));
}

TEST(Text, EqualCountComparesNulsToo) {
    EXPECT_TRUE(Text::EqualCount(u"ab\0cX", u"ab\0cY", 4));
    EXPECT_FALSE(Text::EqualCount(u"ab\0c", u"ab\0d", 4));
    EXPECT_TRUE(Text::EqualCount(u"a", u"b", 0));
    EXPECT_TRUE(Text::EqualCountNoCase(u"aB\0c", u"Ab\0C", 4));
    EXPECT_FALSE(Text::EqualCountNoCase(u"ab\0c", u"ab\0d", 4));
}

TEST(Text, ParseDecimalStopsAtTheFirstOtherCharacter) {
    EXPECT_EQ(Text::ParseDecimal(u"123"), 123u);
    EXPECT_EQ(Text::ParseDecimal(u"12x3"), 12u);
    EXPECT_EQ(Text::ParseDecimal(u""), 0u);
    EXPECT_EQ(Text::ParseDecimal(u"x1"), 0u);
    EXPECT_EQ(Text::ParseDecimal(u" 1"), 0u);
    EXPECT_EQ(Text::ParseDecimal(u"-1"), 0u);
    EXPECT_EQ(Text::ParseDecimal(u"+1"), 0u);
    EXPECT_EQ(Text::ParseDecimal(u"007"), 7u);
    EXPECT_EQ(Text::ParseDecimal(u"\u0661"), 0u);
}

TEST(Text, ParseDecimalWrapsModuloTwoToTheThirtyTwo) {
    EXPECT_EQ(Text::ParseDecimal(u"4294967295"), 4294967295u);
    EXPECT_EQ(Text::ParseDecimal(u"4294967296"), 0u);
    EXPECT_EQ(Text::ParseDecimal(u"4294967301"), 5u);
    EXPECT_EQ(Text::ParseDecimal(u"10000000000000000000000"), 2990538752u);
}

TEST(Text, FormatFillsInTextsAndNumbersInOrder) {
    EXPECT_EQ(Format(u"Create file %s?", u"C:\\a b.txt"), u"Create file C:\\a b.txt?");
    EXPECT_EQ(Format(u"%ls:%u (%d)", u"x", 12u, 7u), u"x:12 (7)");
    EXPECT_EQ(Format(u"%u", 4294967295u), u"4294967295");
    EXPECT_EQ(Format(u"%u", 0u), u"0");
    EXPECT_EQ(Format(u"nothing"), u"nothing");
    EXPECT_EQ(Format(u"100%% %s", u"sure"), u"100% sure");
}

TEST(Text, FormatWritesHexadecimalsInBothCases) {
    EXPECT_EQ(Format(u"#%02x%02x%02x", 0u, 10u, 255u), u"#000aff");
    EXPECT_EQ(Format(u"%08X", 0xBEEFu), u"0000BEEF");
    EXPECT_EQ(Format(u"%x", 0xFFFFFFFFu), u"ffffffff");
}

TEST(Text, FormatPadsToTheWidth) {
    EXPECT_EQ(Format(u"[%5u]", 42u), u"[   42]");
    EXPECT_EQ(Format(u"[%05u]", 42u), u"[00042]");
    EXPECT_EQ(Format(u"[%1u]", 42u), u"[42]");
    EXPECT_EQ(Format(u"[%4s]", u"ab"), u"[  ab]");
}

TEST(Text, FormatDoesNotReadItsArgumentsAsFormats) { EXPECT_EQ(Format(u"%s|%s", u"%s%u%n", u"%%"), u"%s%u%n|%%"); }

TEST(Text, FormatKeepsWhatItDoesNotKnow) {
    EXPECT_EQ(Format(u"50% of it"), u"50% of it");
    EXPECT_EQ(Format(u"%"), u"%");
    EXPECT_EQ(Format(u"%5"), u"%5");
    EXPECT_EQ(Format(u"%q%s", u"x"), u"%qx");
}

TEST(Text, FormatNeverReadsPastItsArguments) {
    EXPECT_EQ(Format(u"%s-%s-%u", u"x"), u"x--");
    const Char* const none = nullptr;
    EXPECT_EQ(Format(u"[%s]", none), u"[]");
}

TEST(Text, AFailingFormatLeavesTheStringAsItWas) {
    const uint64_t failures = FailEachAllocation([] {
        WString out;
        {
            const FailurePause pause;
            EXPECT_TRUE(out.Assign(u"before"));
        }
        const bool done = Text::AppendFormat(out, u" %s %u %08x", u"a text that makes it grow", 123456u, 5u);
        EXPECT_EQ(Content(out), done ? u"before a text that makes it grow 123456 00000005" : u"before");
        return done;
    });
    EXPECT_GE(failures, 1u);
}
