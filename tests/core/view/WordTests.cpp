#include "view/Brackets.h"
#include "view/FilePosition.h"
#include "view/Words.h"

#include <gtest/gtest.h>
#include <string>

namespace {

TextSpan Span(const std::u16string& text) { return {text.data(), static_cast<uint32_t>(text.size())}; }

uint32_t StartBefore(const std::u16string& text, uint32_t column) { return Words::StartBefore(Span(text), column); }
uint32_t EndAfter(const std::u16string& text, uint32_t column) { return Words::EndAfter(Span(text), column); }

std::pair<uint32_t, uint32_t> WordAt(const std::u16string& text, uint32_t column) {
    const ColumnRange word = Words::WordAt(Span(text), column);
    return {word.start, word.end};
}

using Range = std::pair<uint32_t, uint32_t>;

uint32_t Partner(const std::u16string& text, uint32_t offset, const Char* pairs = u"{}()[]") {
    Bracket bracket;
    EXPECT_TRUE(Brackets::Identify(pairs, text[offset], bracket));
    return Brackets::FindPartner(text.data(), static_cast<uint32_t>(text.size()), offset, bracket);
}

std::pair<std::u16string, uint32_t> Position(const std::u16string& text) {
    FilePosition position;
    if (!position.Parse(Span(text))) return {u"(none)", 0};
    return {position.path.Text(), position.line};
}

using Parsed = std::pair<std::u16string, uint32_t>;

} // namespace

TEST(WordsTest, StartOfAWordIsAfterTheLastOtherCharacter) {
    EXPECT_EQ(StartBefore(u"foo bar", 7), 4u);
    EXPECT_EQ(StartBefore(u"foo bar", 5), 4u);
    EXPECT_EQ(StartBefore(u"foo", 2), 0u);
}

TEST(WordsTest, AfterAGapTheStartIsTheEndOfTheWordBeforeIt) {
    EXPECT_EQ(StartBefore(u"foo, bar", 5), 3u);
    EXPECT_EQ(StartBefore(u"  x", 2), 0u);
}

TEST(WordsTest, EndOfAWordIsItsFirstOtherCharacter) {
    EXPECT_EQ(EndAfter(u"foo bar", 0), 3u);
    EXPECT_EQ(EndAfter(u"foo bar", 4), 7u);
    EXPECT_EQ(EndAfter(u"foo", 3), 3u);
}

TEST(WordsTest, AtAGapTheEndIsTheStartOfTheNextWord) {
    EXPECT_EQ(EndAfter(u"foo, bar", 3), 5u);
    EXPECT_EQ(EndAfter(u"foo  ", 3), 5u);
}

TEST(WordsTest, UnderscoresDigitsAndNumberSignsAreWordCharactersLettersBeyondAsciiAreNot) {
    EXPECT_EQ(EndAfter(u"#a_1 x", 0), 4u);
    EXPECT_EQ(EndAfter(u"stra\u00DFe", 0), 4u);
    EXPECT_EQ(StartBefore(u"\u00E4b", 2), 1u);
}

TEST(WordsTest, AWordIsTakenFromItsStartWhereverTheCaretIsInIt) {
    EXPECT_EQ(WordAt(u"a word b", 2), (Range{2, 6}));
    EXPECT_EQ(WordAt(u"a word b", 4), (Range{2, 6}));
    EXPECT_EQ(WordAt(u"a word b", 6), (Range{2, 6}));
    EXPECT_EQ(WordAt(u"word", 4), (Range{0, 4}));
}

TEST(WordsTest, BetweenWordsTheGapIsTakenAndAtTheEndNothing) {
    EXPECT_EQ(WordAt(u"  word", 0), (Range{0, 2}));
    EXPECT_EQ(WordAt(u"a +", 3), (Range{3, 3}));
    EXPECT_EQ(WordAt(u"", 0), (Range{0, 0}));
}

TEST(WordsTest, FirstNonBlankPassesSpacesAndTabsOnly) {
    EXPECT_EQ(Words::FirstNonBlank(Span(u"    x")), 4u);
    EXPECT_EQ(Words::FirstNonBlank(Span(u" \t x")), 3u);
    EXPECT_EQ(Words::FirstNonBlank(Span(u"\u00A0x")), 0u);
    EXPECT_EQ(Words::FirstNonBlank(Span(u"  ")), 2u);
}

TEST(BracketsTest, EachOpenerHasTheNextCharacterAsPartner) {
    Bracket bracket;
    ASSERT_TRUE(Brackets::Identify(u"{}()", u'(', bracket));
    EXPECT_TRUE(bracket.opens);
    EXPECT_EQ(bracket.partner, u')');
    ASSERT_TRUE(Brackets::Identify(u"{}()", u'}', bracket));
    EXPECT_FALSE(bracket.opens);
    EXPECT_EQ(bracket.partner, u'{');
    EXPECT_FALSE(Brackets::Identify(u"{}()", u'[', bracket));
    EXPECT_FALSE(Brackets::Identify(u"{}()", 0, bracket));
}

TEST(BracketsTest, DepthIsCountedInBothDirections) {
    const std::u16string text = u"a(b(c)d)e";
    EXPECT_EQ(Partner(text, 1), 7u);
    EXPECT_EQ(Partner(text, 3), 5u);
    EXPECT_EQ(Partner(text, 7), 1u);
    EXPECT_EQ(Partner(text, 5), 3u);
}

TEST(BracketsTest, OnlyTheOneKindOfBracketCounts) {
    EXPECT_EQ(Partner(u"(a[b)c]", 0), 4u);
    EXPECT_EQ(Partner(u"(a[b)c]", 6), 2u);
}

TEST(BracketsTest, StringsAndLinesAreNotSkipped) {
    EXPECT_EQ(Partner(u"(\")\"\n)", 0), 2u);
    EXPECT_EQ(Partner(u"(\n\n)", 0), 3u);
}

TEST(BracketsTest, WithoutABalanceOrAfterANulThereIsNoMatch) {
    EXPECT_EQ(Partner(u"((a)", 0), NoOffset);
    EXPECT_EQ(Partner(u"a))", 2), NoOffset);
    EXPECT_EQ(Partner(u"a)", 1), NoOffset);
    EXPECT_EQ(Partner(std::u16string(u"(\0)", 3), 0), NoOffset);
    EXPECT_EQ(Partner(std::u16string(u"(\0)", 3), 2), NoOffset);
}

TEST(FilePositionTest, ACompilerMessageWithItsBuildNumber) {
    EXPECT_EQ(Position(u"1>C:\\src\\a.cpp(12): error"), (Parsed{u"C:\\src\\a.cpp", 11}));
}

TEST(FilePositionTest, BlanksBeforeThePathAreSkipped) {
    EXPECT_EQ(Position(u" \t a.cpp:3: note"), (Parsed{u"a.cpp", 2}));
}

TEST(FilePositionTest, ADriveLetterNeedsColonAndBackslash) {
    EXPECT_EQ(Position(u"c:\\x\\y.h(7)"), (Parsed{u"c:\\x\\y.h", 6}));
    EXPECT_EQ(Position(u"c:7"), (Parsed{u"c", 6}));
}

TEST(FilePositionTest, WithoutDigitsThereIsNoLine) {
    EXPECT_EQ(Position(u"readme.txt"), (Parsed{u"readme.txt", NoLine}));
    EXPECT_EQ(Position(u"a.cpp: In function"), (Parsed{u"a.cpp", NoLine}));
    EXPECT_EQ(Position(u"a.cpp("), (Parsed{u"a.cpp", NoLine}));
    EXPECT_EQ(Position(u"a.cpp(0)"), (Parsed{u"a.cpp", NoLine}));
}

TEST(FilePositionTest, OnlyOneDigitIsABuildNumber) {
    EXPECT_EQ(Position(u"12>a.cpp(3)"), (Parsed{u"12>a.cpp", 2}));
    EXPECT_EQ(Position(u"2>a.cpp(3)"), (Parsed{u"a.cpp", 2}));
}

TEST(FilePositionTest, ALineNumberThatNoTextReachesStaysBeyondItsEnd) {
    EXPECT_EQ(Position(u"a.cpp(2147483649)"), (Parsed{u"a.cpp", 0x80000000}));
    EXPECT_EQ(Position(u"a.cpp(4294967295)"), (Parsed{u"a.cpp", 0xFFFFFFFE}));
    EXPECT_EQ(Position(u"a.cpp(4294967296)"), (Parsed{u"a.cpp", 0xFFFFFFFE}));
    EXPECT_EQ(Position(u"a.cpp(4294967297)"), (Parsed{u"a.cpp", 0xFFFFFFFE}));
    EXPECT_EQ(Position(u"a.cpp:18446744073709551617: far"), (Parsed{u"a.cpp", 0xFFFFFFFE}));
    EXPECT_EQ(Position(u"a.cpp:99999999999999999999999999999999"), (Parsed{u"a.cpp", 0xFFFFFFFE}));
}

TEST(FilePositionTest, WithoutAPathThereIsNoPosition) {
    EXPECT_EQ(Position(u""), (Parsed{u"(none)", 0}));
    EXPECT_EQ(Position(u"   "), (Parsed{u"(none)", 0}));
    EXPECT_EQ(Position(u"1>"), (Parsed{u"(none)", 0}));
    EXPECT_EQ(Position(u"(12)"), (Parsed{u"(none)", 0}));
    EXPECT_EQ(Position(u":5"), (Parsed{u"(none)", 0}));
}
