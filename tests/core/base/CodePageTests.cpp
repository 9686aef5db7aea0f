#include "base/CodePage.h"

#include "support/Random.h"

#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr CodePage AllPages[] = {CodePage::Ansi, CodePage::Windows1252, CodePage::Utf8};

std::u16string Decode(CodePage page, const std::string& bytes) {
    const auto* data = reinterpret_cast<const uint8_t*>(bytes.data());
    std::u16string out(MaxCharacters(page, bytes.size()), u'?');
    const size_t counted = ToUtf16(page, data, bytes.size(), nullptr, 0);
    const size_t written = ToUtf16(page, data, bytes.size(), out.data(), out.size());
    EXPECT_EQ(counted, written);
    out.resize(written);
    return out;
}

std::string Encode(CodePage page, const std::u16string& text) {
    std::string out(MaxBytes(page, text.size()), '?');
    auto* const data = reinterpret_cast<uint8_t*>(out.data());
    const size_t counted = FromUtf16(page, text.data(), text.size(), nullptr, 0);
    const size_t written = FromUtf16(page, text.data(), text.size(), data, out.size());
    EXPECT_EQ(counted, written);
    out.resize(written);
    return out;
}

std::u16string DecodeUtf8(const std::string& bytes) { return Decode(CodePage::Utf8, bytes); }

std::string EncodeUtf8(const std::u16string& text) { return Encode(CodePage::Utf8, text); }

} // namespace

TEST(CodePage, EveryAnsiByteSurvivesTheWayThereAndBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
    for (const CodePage page : {CodePage::Ansi, CodePage::Windows1252}) {
        const std::u16string text = Decode(page, all);
        EXPECT_EQ(text.size(), 256u);
        EXPECT_EQ(Encode(page, text), all);
    }
}

TEST(CodePage, WhatFollowsAHalfOfAPairIsACharacterOfItsOwn) {
    EXPECT_EQ(EncodeUtf8(u"\xD800\xDBFF\xE000\xDC00"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEE\x80\x80\xEF\xBF\xBD");
}

TEST(CodePage, AnAnsiCharacterOfTwoBytesIsWholeWithBoth) {
    if (Decode(CodePage::Ansi, "\x93\xFA") != u"\u65E5") GTEST_SKIP() << "the system's page is not the Japanese one";
    const std::string bytes = "a\x93\xFA\xB1\x93\x5C";
    const std::u16string text = Decode(CodePage::Ansi, bytes);
    EXPECT_EQ(text, u"a\u65E5\uFF71\u8CBC");
    EXPECT_EQ(Encode(CodePage::Ansi, text), bytes);
    EXPECT_EQ(MaxBytes(CodePage::Ansi, 3), 6u);
    const size_t whole[] = {0, 1, 1, 3, 4, 4, 6}; // of the first 0, 1, ... bytes
    for (size_t count = 0; count <= bytes.size(); ++count)
        EXPECT_EQ(WholeCharacters(CodePage::Ansi, reinterpret_cast<const uint8_t*>(bytes.data()), count), whole[count]);
}

TEST(CodePage, IsFoundByItsNumber) {
    EXPECT_EQ(FindCodePage(0), CodePage::Ansi);
    EXPECT_EQ(FindCodePage(1), CodePage::Oem);
    EXPECT_EQ(FindCodePage(1252), CodePage::Windows1252);
    EXPECT_EQ(FindCodePage(65001), CodePage::Utf8);
}

TEST(CodePage, ThatCannotBeReadInPiecesIsTheAnsiOne) {
    // No page, UTF-16, UTF-7, JIS with shift sequences, EBCDIC.
    for (const uint32_t number : {7u, 99999u, UINT32_MAX, 1200u, 1201u, 65000u, 50220u, 37u, 500u})
        EXPECT_EQ(FindCodePage(number), CodePage::Ansi) << number;
}

TEST(CodePage, OfTheConsoleHasAsciiAndKeepsItsBytes) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
    const std::u16string text = Decode(CodePage::Oem, all);
    EXPECT_EQ(text.substr(' ' - 1, 94), Decode(CodePage::Ansi, all).substr(' ' - 1, 94));
    if (text.size() == all.size()) {
        EXPECT_EQ(Encode(CodePage::Oem, text), all);
    }
}

TEST(CodePage, OfFourBytesIsCutBetweenItsCharactersOnly) {
    const CodePage page = FindCodePage(54936);
    if (page == CodePage::Ansi) GTEST_SKIP() << "the system does not have it";
    const std::string bytes = "a\xD6\xD0\x81\x30\x81\x30z";
    EXPECT_EQ(Decode(page, bytes), u"a\u4E2D\u0080z");
    const size_t whole[] = {0, 1, 1, 3, 3, 3, 3, 7, 8}; // of the first 0, 1, ... bytes
    for (size_t count = 0; count <= bytes.size(); ++count)
        EXPECT_EQ(WholeCharacters(page, reinterpret_cast<const uint8_t*>(bytes.data()), count), whole[count]) << count;
}

TEST(CodePage, Windows1252HasItsOwnCharactersFrom80To9F) {
    EXPECT_EQ(Decode(CodePage::Windows1252, "\x80\x82\x99\x9F"), u"\u20AC\u201A\u2122\u0178");
    EXPECT_EQ(Decode(CodePage::Windows1252, "\xA0\xE4\xFF"), u"\u00A0\u00E4\u00FF");
    EXPECT_EQ(Decode(CodePage::Windows1252, "\x81\x8D\x8F\x90\x9D"), u"\u0081\u008D\u008F\u0090\u009D");
}

TEST(CodePage, WhatWindows1252LacksBecomesItsBestFit) {
    EXPECT_EQ(Encode(CodePage::Windows1252, u"\uFF21\uFF5E\uFF01"), "A~!");
    EXPECT_EQ(Encode(CodePage::Windows1252, u"\u0100\u0107\u0110\u0142\u017C"), "Ac\xD0lz");
    EXPECT_EQ(Encode(CodePage::Windows1252, u"\u2032\u2212\u221E"), "'-8");
}

TEST(CodePage, TellsWhatAPageCanExpress) {
    const auto can = [](CodePage page, const std::u16string& text) {
        return CanExpress(page, text.data(), text.size());
    };
    for (const CodePage page : AllPages) {
        EXPECT_TRUE(can(page, u""));
        EXPECT_TRUE(can(page, u"is this one?"));
    }
    const std::u16string text(1000, u'x');
    EXPECT_TRUE(can(CodePage::Windows1252, text + u"\u00E9\u20AC\u0081"));
    EXPECT_TRUE(can(CodePage::Windows1252, text + u"\u0100\uFF21")); // both fit an A
    EXPECT_FALSE(can(CodePage::Windows1252, text + u"\u4E2D"));
    EXPECT_FALSE(can(CodePage::Windows1252, u"\u4E2D" + text));
    EXPECT_TRUE(can(CodePage::Utf8, text + u"\u4E2D"));
}

TEST(CodePage, WhatHasNoBestFitBecomesAQuestionMark) {
    EXPECT_EQ(Encode(CodePage::Windows1252, u"\u4E2D\u0416\uFFFD"), "???");
    EXPECT_EQ(Encode(CodePage::Windows1252, u"a\u4E2Db"), "a?b");
}

TEST(CodePage, CountingAndConvertingObeyTheSameRulesOnEveryPage) {
    const uint8_t bytes[] = {'a', 'b', 'c'};
    const Char text[] = {u'a', u'b', u'c'};
    for (const CodePage page : AllPages) {
        Char characters[4] = {u'x', u'x', u'x', u'x'};
        uint8_t out[4] = {'x', 'x', 'x', 'x'};
        EXPECT_EQ(ToUtf16(page, bytes, 0, characters, 4), 0u);
        EXPECT_EQ(ToUtf16(page, bytes, 3, characters, 2), 0u);
        EXPECT_EQ(ToUtf16(page, bytes, 3, characters, 0), 0u);
        EXPECT_EQ(ToUtf16(page, bytes, 3, characters, 3), 3u);
        EXPECT_EQ(characters[2], u'c');
        EXPECT_EQ(characters[3], u'x'); // no terminator
        EXPECT_EQ(FromUtf16(page, text, 0, out, 4), 0u);
        EXPECT_EQ(FromUtf16(page, text, 3, out, 2), 0u);
        EXPECT_EQ(FromUtf16(page, text, 3, out, 0), 0u);
        EXPECT_EQ(FromUtf16(page, text, 3, out, 3), 3u);
        EXPECT_EQ(out[2], 'c');
        EXPECT_EQ(out[3], 'x');
    }
}

TEST(CodePage, Utf8OfEveryLength) {
    const std::u16string text = u"A\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF";
    const std::string bytes = "A\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF";
    EXPECT_EQ(EncodeUtf8(text), bytes);
    EXPECT_EQ(DecodeUtf8(bytes), text);
}

TEST(CodePage, EveryCodePointSurvivesUtf8) {
    std::u16string text;
    for (uint32_t point = 0; point < 0x110000; ++point) {
        if (point >= 0xD800 && point < 0xE000) continue;
        if (point >= 0x10000) text.push_back(static_cast<Char>(0xD800 + ((point - 0x10000) >> 10)));
        text.push_back(static_cast<Char>(point < 0x10000 ? point : 0xDC00 + (point & 0x3FF)));
    }
    EXPECT_EQ(DecodeUtf8(EncodeUtf8(text)), text);
}

TEST(CodePage, InvalidUtf8BecomesOneReplacementForEachMaximalPart) {
    const std::pair<std::string, std::u16string> cases[] = {
        {"\x80", u"\uFFFD"},           // a byte that follows nothing
        {"\xBF\x80", u"\uFFFD\uFFFD"}, //
        {"\xC3", u"\uFFFD"},           // cut off
        {"\xE2\x82", u"\uFFFD"},       //
        {"\xF0\x9F\x98", u"\uFFFD"},   //
        {"\xE2\x82"
         "A",
         u"\uFFFDA"}, // cut short by the next character
        {"\xF0\x9F\x98"
         "A",
         u"\uFFFDA"},                                      //
        {"\xE2\xC3\xA4", u"\uFFFD\u00E4"},                 //
        {"\xC0\xAF", u"\uFFFD\uFFFD"},                     // overlong
        {"\xC1\xBF", u"\uFFFD\uFFFD"},                     //
        {"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},           //
        {"\xF0\x80\x80\xAF", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, //
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},           // a surrogate
        {"\xED\xBF\xBF", u"\uFFFD\uFFFD\uFFFD"},           //
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, // above the last code point
        {"\xF5\x80", u"\uFFFD\uFFFD"},                     // never in UTF-8
        {"\xFE\xFF", u"\uFFFD\uFFFD"},                     //
        {"a\xF1\x80\x80\xE1\x80\xC2"
         "b\x80"
         "c",
         u"a\uFFFD\uFFFD\uFFFDb\uFFFDc"},
    };
    for (const auto& [bytes, expected] : cases) EXPECT_EQ(DecodeUtf8(bytes), expected) << testing::PrintToString(bytes);
}

TEST(CodePage, LoneSurrogatesBecomeTheReplacementCharacter) {
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_EQ(EncodeUtf8(std::u16string(1, Char{0xD800})), replacement);
    EXPECT_EQ(EncodeUtf8(std::u16string{Char{0xDC00}, u'a'}), replacement + "a");
    EXPECT_EQ(EncodeUtf8(std::u16string{Char{0xD800}, u'a'}), replacement + "a");
    EXPECT_EQ(EncodeUtf8(std::u16string{Char{0xD800}, Char{0xD801}, Char{0xDC00}}), replacement + "\xF0\x90\x90\x80");
}

TEST(CodePage, AUtf8CapacityThatSplitsACharacterFails) {
    const std::string bytes = "ab\xF0\x9F\x98\x80";
    const std::u16string text = u"ab\U0001F600";
    Char characters[4];
    uint8_t out[6];
    const auto* data = reinterpret_cast<const uint8_t*>(bytes.data());
    EXPECT_EQ(ToUtf16(CodePage::Utf8, data, 6, characters, 3), 0u);
    EXPECT_EQ(ToUtf16(CodePage::Utf8, data, 6, characters, 4), 4u);
    EXPECT_EQ(FromUtf16(CodePage::Utf8, text.data(), 4, out, 5), 0u);
    EXPECT_EQ(FromUtf16(CodePage::Utf8, text.data(), 4, out, 6), 6u);
}

TEST(CodePage, RandomBytesStayWithinTheirBounds) {
    Random random(41);
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes;
        for (uint32_t i = random.Below(60); i; --i)
            bytes.push_back(static_cast<char>(random.Below(3) ? 0x80 + random.Below(0x80) : random.Below(0x80)));
        for (const CodePage page : AllPages) {
            const std::u16string text = Decode(page, bytes);
            EXPECT_LE(text.size(), MaxCharacters(page, bytes.size()));
            const std::string back = Encode(page, text);
            EXPECT_LE(back.size(), MaxBytes(page, text.size()));
            EXPECT_EQ(Decode(page, back), text);
        }
        if (HasFailure()) FAIL() << round;
    }
}

TEST(CodePage, LongAsciiBetweenOtherCharactersSurvives) {
    std::u16string text;
    for (size_t i = 0; i < 200; ++i) text += std::u16string(i, u'x') + u"\u20AC";
    for (const CodePage page : AllPages) EXPECT_EQ(Decode(page, Encode(page, text)), text);
}

TEST(CodePage, WholeCharactersLeaveOutWhatTheEndCutsOff) {
    const std::u16string text = u"a\u00E4\u20AC\U0001F600b\u00DF";
    const std::string bytes = EncodeUtf8(text);
    const std::set<size_t> borders = {0, 1, 3, 6, 10, 11, 13};
    for (size_t count = 0; count <= bytes.size(); ++count) {
        const auto* data = reinterpret_cast<const uint8_t*>(bytes.data());
        EXPECT_EQ(WholeCharacters(CodePage::Utf8, data, count), *std::prev(borders.upper_bound(count))) << count;
        EXPECT_EQ(WholeCharacters(CodePage::Windows1252, data, count), count);
    }
    const uint8_t strays[] = {0x80, 0x80, 0x80, 0x80};
    for (size_t count = 0; count <= 4; ++count) EXPECT_EQ(WholeCharacters(CodePage::Utf8, strays, count), count);
}
