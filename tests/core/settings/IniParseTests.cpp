#include "SettingsTestSupport.h"

namespace {

Model Parsed(const std::u16string& text, bool expected = true) {
    IniFile file;
    EXPECT_EQ(ParseText(file, text), expected);
    return ModelOf(file);
}

TEST(IniParse, EmptyTextIsASuccess) { EXPECT_EQ(Parsed(u""), Model{}); }

TEST(IniParse, OnlyBlanksCommentsAndBlankLinesIsASuccess) {
    EXPECT_EQ(Parsed(u" \t\n; note\n\n\t;[General]"), Model{});
}

TEST(IniParse, KeepsSectionsAndKeysInFileOrder) {
    const Model expected = {{u"B", {{u"z", u"1"}, {u"a", u"2"}}}, {u"A", {{u"m", u"3"}}}};
    EXPECT_EQ(Parsed(u"[B]\nz=1\na=2\n[A]\nm=3\n"), expected);
}

TEST(IniParse, BlanksBeforeEqualsBelongToTheNameAndBlanksAfterToTheValue) {
    const Model expected = {{u"S", {{u"key ", u" value"}}}};
    EXPECT_EQ(Parsed(u"[S]\nkey = value"), expected);
}

TEST(IniParse, BlanksBeforeAKeyAreSkippedAndTrailingBlanksOfAValueStay) {
    const Model expected = {{u"S", {{u"key", u"value \t"}}}};
    EXPECT_EQ(Parsed(u"[S]\n \tkey=value \t\n"), expected);
}

TEST(IniParse, OnlySpaceAndTabAreBlanks) {
    const Model expected = {{u"S", {{u"\u00A0key", u"1"}, {u"\vother", u"2"}}}};
    EXPECT_EQ(Parsed(u"[S]\n\u00A0key=1\n\vother=2"), expected);
}

TEST(IniParse, FirstCharacterOtherThanABracketLoadsNothing) {
    EXPECT_EQ(Parsed(u"key=1\n[S]\na=1\n", false), Model{});
    EXPECT_EQ(Parsed(u"\n \tx[S]\na=1\n", false), Model{});
}

TEST(IniParse, ByteOrderMarkIsAnOrdinaryCharacterAndStopsAtOnce) {
    EXPECT_EQ(Parsed(u"\uFEFF[S]\na=1\n", false), Model{});
}

TEST(IniParse, SemicolonIsACommentOnlyAtTheStartOfALine) {
    const Model expected = {{u"S;1", {{u"a;b", u"c;d"}}}};
    EXPECT_EQ(Parsed(u"; before\n[S;1] ; after\n  \t; inside\na;b=c;d\n;x=y"), expected);
}

TEST(IniParse, CommentLineWithoutLineFeedEndsTheText) {
    const Model expected = {{u"S", {}}};
    EXPECT_EQ(Parsed(u"[S]\n; the end"), expected);
}

TEST(IniParse, SectionNameIsTakenAsItIs) {
    const Model expected = {{u" a [b ", {}}};
    EXPECT_EQ(Parsed(u"[ a [b ]"), expected);
}

TEST(IniParse, SectionNameMayCrossLines) {
    const Model expected = {{u"one\ntwo", {{u"k", u"v"}}}};
    EXPECT_EQ(Parsed(u"[one\r\ntwo]\nk=v"), expected);
}

TEST(IniParse, RestOfAHeaderLineIsSkipped) {
    const Model expected = {{u"S", {{u"k", u"v"}}}};
    EXPECT_EQ(Parsed(u"[S] x=1 [T]\nk=v"), expected);
    const Model alone = {{u"S", {}}};
    EXPECT_EQ(Parsed(u"[S] x=1"), alone);
}

TEST(IniParse, HeaderWithoutClosingBracketKeepsTheSectionAndFails) {
    const Model expected = {{u"A", {{u"k", u"v"}}}, {u"Bxyz\nk=1\n", {}}};
    EXPECT_EQ(Parsed(u"[A]\nk=v\n[Bxyz\nk=1\n", false), expected);
    const Model empty = {{u"", {}}};
    EXPECT_EQ(Parsed(u"[", false), empty);
}

TEST(IniParse, BracketAfterBlanksStartsANewSection) {
    const Model expected = {{u"A", {{u"k", u"1"}}}, {u"B", {{u"k", u"2"}}}};
    EXPECT_EQ(Parsed(u"[A]\nk=1\n \t[B]\nk=2"), expected);
}

TEST(IniParse, BracketInsideALineIsOrdinaryText) {
    const Model expected = {{u"A", {{u"k[0]", u"[1]"}}}};
    EXPECT_EQ(Parsed(u"[A]\nk[0]=[1]"), expected);
}

TEST(IniParse, LineWithoutEqualsJoinsTheNextOne) {
    const Model expected = {{u"S", {{u"Foo\nBar", u"1"}}}};
    EXPECT_EQ(Parsed(u"[S]\nFoo\nBar=1\n"), expected);
}

TEST(IniParse, LineWithoutEqualsSwallowsAHeaderAndAComment) {
    const Model expected = {{u"S", {{u"Foo\n; note\n[T]\nk", u"v"}}}};
    EXPECT_EQ(Parsed(u"[S]\nFoo\n; note\n[T]\nk=v"), expected);
}

TEST(IniParse, KeyWithoutEqualsKeepsTheKeyWithAnEmptyValueAndFails) {
    const Model expected = {{u"S", {{u"a", u"1"}, {u"Foo\nBar\n", u""}}}};
    EXPECT_EQ(Parsed(u"[S]\na=1\nFoo\nBar\n", false), expected);
}

TEST(IniParse, ValueEndsAtTheLineFeedOrTheEndOfTheText) {
    const Model expected = {{u"S", {{u"a", u"1=2"}, {u"b", u""}, {u"", u"x"}, {u"c", u"end"}}}};
    EXPECT_EQ(Parsed(u"[S]\na=1=2\nb=\n=x\nc=end"), expected);
}

TEST(IniParse, DuplicatesAreKept) {
    const Model expected = {{u"S", {{u"k", u"1"}, {u"k", u"2"}}}, {u"S", {{u"k", u"3"}}}};
    EXPECT_EQ(Parsed(u"[S]\nk=1\nk=2\n[S]\nk=3"), expected);
}

TEST(IniParse, CarriageReturnsAloneEndLinesToo) {
    const std::u16string withLineFeeds = u"[S]\n; note\na=1\n\nb=2\n[T]\nc=3";
    std::u16string withReturns = withLineFeeds;
    for (Char& c : withReturns) {
        if (c == u'\n') c = u'\r';
    }
    EXPECT_EQ(Parsed(withReturns), Parsed(withLineFeeds));
    EXPECT_EQ(Parsed(withReturns).size(), 2u);
}

TEST(IniParse, CarriageReturnLineFeedIsOneLineEnd) {
    const Model expected = {{u"S", {{u"a", u"1"}, {u"b\n\nc", u"2"}}}};
    EXPECT_EQ(Parsed(u"[S]\r\na=1\r\nb\r\n\r\nc=2\r\n"), expected);
}

TEST(IniParse, TextEndsAtAnEmbeddedNul) {
    const Model expected = {{u"S", {{u"a", u"1"}}}};
    EXPECT_EQ(Parsed(std::u16string(u"[S]\na=1\0\nb=2", 12)), expected);
}

TEST(IniParse, AppendsToTheModel) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[A]\nk=1"));
    ASSERT_TRUE(ParseText(file, u"[A]\nk=2"));
    const Model expected = {{u"A", {{u"k", u"1"}}}, {u"A", {{u"k", u"2"}}}};
    EXPECT_EQ(ModelOf(file), expected);
    // The second text starts outside every section, whatever the first one ended in.
    EXPECT_FALSE(ParseText(file, u"k=3"));
    EXPECT_EQ(ModelOf(file), expected);
}

TEST(NormaliseLineEnds, TurnsEveryStyleIntoLineFeeds) {
    const std::pair<std::u16string, std::u16string> cases[] = {
        {u"", u""},
        {u"a", u"a"},
        {u"\r", u"\n"},
        {u"\n", u"\n"},
        {u"\r\n", u"\n"},
        {u"\n\r", u"\n\n"},
        {u"\r\r\n", u"\n\n"},
        {u"a\rb\r\nc\nd", u"a\nb\nc\nd"},
        {u"\r\n\r\n", u"\n\n"},
        {u"a\r", u"a\n"},
    };
    for (const auto& [before, after] : cases) {
        std::u16string text = before;
        const uint32_t length = NormaliseLineEnds(text.data());
        EXPECT_EQ(text.substr(0, length), after);
        EXPECT_EQ(text.c_str()[length], 0);
    }
}

std::vector<std::u16string> LinesOf(std::u16string text) {
    NormaliseLineEnds(text.data());
    std::vector<std::u16string> lines;
    WString line;
    uint32_t position = 0;
    while (NextLine(text.c_str(), position, line)) lines.push_back(Str(line));
    return lines;
}

TEST(NextLine, SplitsAtEveryStyleOfLineEnd) {
    const std::vector<std::u16string> expected = {u"one", u"two", u"three", u"four"};
    EXPECT_EQ(LinesOf(u"one\ntwo\r\nthree\rfour"), expected);
}

TEST(NextLine, GivesEmptyLinesButNoneAfterTheLastLineEnd) {
    const std::vector<std::u16string> expected = {u"", u"a", u"", u"b"};
    EXPECT_EQ(LinesOf(u"\na\n\nb\n"), expected);
    EXPECT_TRUE(LinesOf(u"").empty());
    EXPECT_EQ(LinesOf(u"\n").size(), 1u);
}

TEST(NextLine, StopsAtTheTerminatorAndPastALineFeed) {
    WString line;
    uint32_t position = 0;
    EXPECT_TRUE(NextLine(u"ab\ncd", position, line));
    EXPECT_EQ(position, 3u);
    EXPECT_TRUE(NextLine(u"ab\ncd", position, line));
    EXPECT_EQ(position, 5u);
    EXPECT_FALSE(NextLine(u"ab\ncd", position, line));
    EXPECT_EQ(position, 5u);
    EXPECT_EQ(Str(line), u"cd");
}

} // namespace
