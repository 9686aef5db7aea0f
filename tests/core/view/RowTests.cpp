#include "support/FailureInjection.h"
#include "support/Random.h"
#include "support/ViewTest.h"
#include "view/RowPlan.h"

#include <vector>

namespace {

constexpr Colour TextFg = 1;
constexpr Colour TextBg = 2;
constexpr Colour SelFg = 3;
constexpr Colour SelBg = 4;
constexpr Colour CommentFg = 5;
constexpr Colour CommentBg = 6;
constexpr Colour KeywordFg = 7;
constexpr Colour StringFg = 8;

// Gives each line the runs, fill and state that a test names.
struct RowTest : ViewTest {
    RowTest() {
        settings.TextFg = TextFg;
        settings.TextBg = settings.KeywordBg = settings.StringBg = settings.NumberBg = TextBg;
        settings.SelFg = SelFg;
        settings.SelBg = SelBg;
        settings.CommentFg = settings.LongCommentFg = CommentFg;
        settings.CommentBg = settings.LongCommentBg = CommentBg;
        settings.KeywordFg = KeywordFg;
        settings.StringFg = StringFg;
        settings.NumberFg = TextFg;
        settings.IndentGuide = 0;
        LoadEngineDefinitions(IniFile());
    }

    struct Row {
        RowPicture picture;
        std::string runs;
        std::string number;
        std::vector<int32_t> guides;
        // What `picture` points to, which goes with the next row.
        std::vector<DrawRun> draw;
        std::u16string text;
        std::vector<int32_t> advances;
    };

    static const char* Name(const DrawRun& run) {
        if (run.foreground == SelFg && run.background == SelBg) return "sel";
        if (run.background == CommentBg) return "comment";
        if (run.foreground == KeywordFg) return "key";
        if (run.foreground == StringFg) return "string";
        return run.foreground == TextFg && run.background == TextBg ? "text" : "?";
    }
    // "text(ab)@0+16" is two characters at x 0, 16 pixels wide; spaces shown by dots and tabs by arrows
    // read "dot" and "arrow".
    static std::string Describe(const RowPicture& row) {
        std::string out;
        for (uint32_t i = 0; i < row.runCount; ++i) {
            const DrawRun& run = row.runs[i];
            int32_t width = 0;
            for (uint32_t k = 0; k < run.count; ++k) width += row.advances[run.start + k];
            if (run.kind != RunKind::VisibleTab) {
                EXPECT_EQ(width, run.width) << "the advances do not add up";
            }
            if (!out.empty()) out += ' ';
            out += Name(run);
            if (run.kind == RunKind::VisibleSpace) out += "-dot";
            if (run.kind == RunKind::VisibleTab) out += "-arrow";
            out += '(' + Plain({row.text + run.start, run.count}) + ")@" + std::to_string(run.x) + '+' +
                   std::to_string(run.width);
        }
        return out;
    }
    std::vector<Row> Rows(int32_t top = 0, int32_t bottom = 0) {
        std::vector<Row> rows;
        EXPECT_TRUE(plan.Begin(view(), top, bottom));
        RowPicture picture;
        while (plan.Next(picture)) {
            Row row{picture, Describe(picture), "", {}, {}, {}, {}};
            row.draw.assign(picture.runs, picture.runs + picture.runCount);
            for (const DrawRun& run : row.draw) {
                row.text.append(picture.text + run.start, run.count);
                row.advances.insert(row.advances.end(), picture.advances + run.start,
                                    picture.advances + run.start + run.count);
            }
            if (picture.number) row.number = Plain({picture.number, picture.numberLength});
            row.guides.assign(picture.guides, picture.guides + picture.guideCount);
            rows.push_back(row);
        }
        return rows;
    }
    std::string FirstRow() { return Rows()[0].runs; }

    RowPlan plan;
};

using Guides = std::vector<int32_t>;

} // namespace

TEST_F(RowTest, APlainLineIsOneRunWithACellForTheLineEnd) {
    Fill(u"abc\nde");
    const auto rows = Rows();
    EXPECT_EQ(rows[0].runs, "text(abc )@0+32");
    EXPECT_EQ(rows[0].picture.fillLeft, 32);
    EXPECT_EQ(rows[0].picture.fill, TextBg);
    EXPECT_EQ(rows[1].runs, "text(de)@0+16"); // the terminator is not drawn
    EXPECT_EQ(rows[1].picture.top, 16);
}

TEST_F(RowTest, TheEnginesSpansBecomeRuns) {
    Fill(u"int x; \"s\"", u"cpp");
    EXPECT_EQ(FirstRow(), "key(int)@0+24 text( x; )@24+32 string(\"s\")@56+24");
}

TEST_F(RowTest, ARightToLeftLetterIsARunOfItsOwnWithWhatIsDrawnOverIt) {
    // Hebrew with a vowel, Arabic digits, and a letter beyond U+FFFF.
    Fill(u"ab\u05D0\u05B8\u05D1 12\u0663\u0664c\U00010800\u0301e\u0301");
    EXPECT_EQ(FirstRow(), "text(ab)@0+16 text(?\?)@16+16 text(?)@32+8 text( 12)@40+24 text(?)@64+8 text(?)@72+8 "
                          "text(c)@80+8 text(?\?\?)@88+24 text(e?)@112+16");
}

TEST_F(RowTest, WhatReordersTextIsShownAsAMarkInReversedColours) {
    Fill(u"a\u202Eb\u2068c\u2069\u2066");
    EXPECT_EQ(FirstRow(), "text(a)@0+8 ?(<)@8+8 text(b)@16+8 ?(?)@24+8 text(c)@32+8 ?(|>)@40+16");
    const DrawRun mark = Rows()[0].draw[1];
    EXPECT_EQ(mark.foreground, TextBg);
    EXPECT_EQ(mark.background, TextFg);
}

TEST_F(RowTest, EveryCharacterIsDrawnWhereTheCaretLooksForIt) {
    constexpr Char Some[] = u"ab \u05D0\u05B8\u0645\u0661\u202E\u2069\u4E00\u0301\u200F\xD83D\xDE00\xD802";
    Random random(7);
    for (int i = 0; i < 200; ++i) {
        std::u16string text;
        for (int k = 0; k < 30; ++k) text += Some[random.Below(std::size(Some) - 1)];
        Fill(text);
        surface().SetFont({16, 8, 8},
                          {{0x05B8, 0}, {0x4E00, 16}, {u'<', 5}, {u'|', 3}, {u'b', 6}, {0x0645, 11}, {0x1F600, 17}});
        view().SelectRange({random.Below(30), random.Below(30)});
        const Row row = Rows()[0];
        const LineLayout layout(surface().metrics, surface().Widths());
        uint32_t column = 0;
        for (const DrawRun& run : row.draw) {
            int32_t x = run.x;
            for (uint32_t k = 0; k < run.count; ++k, ++column) {
                ASSERT_EQ(x, layout.PositionOf({text.data(), 30}, column)) << "text " << i << " column " << column;
                x += row.advances[column];
            }
        }
        ASSERT_EQ(column, 30u);
    }
}

TEST_F(RowTest, APairOfSurrogatesIsDrawnWholeOrNotAtAll) {
    Fill(u"abcd\U0001F600e");
    surface().SetFont({16, 8, 8}, {{0x1F600, 16}});
    surface().SetSize(36, 160); // the pair is seen by 4 pixels
    EXPECT_EQ(FirstRow(), "text(abcd?\?)@0+48");
    view().Viewport().SetHorizontalScroll(32 + 12);
    EXPECT_EQ(FirstRow(), "text(?\?e)@-12+24");
    view().Viewport().SetHorizontalScroll(32 + 16);
    EXPECT_EQ(FirstRow(), "text(e)@0+8");
}

TEST_F(RowTest, APairOfSurrogatesHasTheColoursOfItsFirstHalf) {
    Fill(u"a\U0001F600b");
    view().SelectRange({0, 2});
    EXPECT_EQ(FirstRow(), "sel(a?\?)@0+24 text(b)@24+8");
    view().SelectRange({2, 4});
    EXPECT_EQ(FirstRow(), "text(a?\?)@0+24 sel(b)@24+8");
}

TEST_F(RowTest, TheLongestRunEndsBeforeAPairOfSurrogatesThatWouldNotFit) {
    Fill(std::u16string(LineRuns::MaxRun - 1, u'a') + u"\U0001F600b");
    surface().SetFont({16, 1, 1});
    surface().SetSize(5000, 160);
    const Row row = Rows()[0];
    ASSERT_EQ(row.draw.size(), 2u);
    EXPECT_EQ(row.draw[0].count, LineRuns::MaxRun - 1);
    EXPECT_EQ(row.draw[1].count, 3u);
}

TEST_F(RowTest, TheEnginesFillCoversTheRestOfTheRow) {
    Fill(u"a // b\n/* c\nd", u"cpp");
    const auto rows = Rows();
    EXPECT_EQ(rows[0].picture.fill, CommentBg);
    EXPECT_EQ(rows[1].picture.fill, CommentBg);
    EXPECT_EQ(rows[2].runs, "comment(d)@0+8");
    EXPECT_EQ(rows[3].picture.fill, TextBg);
}

TEST_F(RowTest, RunsOfEqualColoursAreMerged) {
    settings.NumberFg = TextFg;
    Fill(u"a 1 b", u"cpp");
    EXPECT_EQ(FirstRow(), "text(a 1 b)@0+40");
}

TEST_F(RowTest, ARunHasAtMost2048Characters) {
    Fill(std::u16string(5000, u'x'));
    surface().SetSize(8 * 5000, 160);
    const auto rows = Rows();
    ASSERT_EQ(rows[0].picture.runCount, 3u);
    EXPECT_EQ(rows[0].draw[0].count, 2048u);
    EXPECT_EQ(rows[0].draw[1].x, 2048 * 8);
    EXPECT_EQ(rows[0].draw[2].count, 5000u - 4096);
}

// Selection.

TEST_F(RowTest, TheSelectionCutsASpanIntoThreePieces) {
    Show(u"ab^cd|ef");
    EXPECT_EQ(FirstRow(), "text(ab)@0+16 sel(cd)@16+16 text(ef)@32+16");
    Show(u"int |x^yz", u"cpp");
    EXPECT_EQ(FirstRow(), "key(int)@0+24 text( )@24+8 sel(x)@32+8 text(yz)@40+16");
}

TEST_F(RowTest, ASelectedLineEndShowsAsOneCell) {
    Show(u"a^b\n\nc|d");
    const auto rows = Rows();
    EXPECT_EQ(rows[0].runs, "text(a)@0+8 sel(b )@8+16");
    EXPECT_EQ(rows[1].runs, "sel( )@0+8");
    EXPECT_EQ(rows[2].runs, "sel(c)@0+8 text(d)@8+8");
}

TEST_F(RowTest, SpansInsideTheSelectionMerge) {
    Show(u"^int x|", u"cpp");
    EXPECT_EQ(FirstRow(), "sel(int x)@0+40");
}

// Tabs and whitespace.

TEST_F(RowTest, ATabAfterThreeCharactersIsOneSpaceAndAfterFourFour) {
    Fill(u"abc\tx\nabcd\tx");
    const auto rows = Rows();
    EXPECT_EQ(rows[0].runs, "text(abc)@0+24 text( x )@24+24");
    EXPECT_EQ(rows[1].runs, "text(abcd)@0+32 text(    x)@32+40");
}

TEST_F(RowTest, WithoutMarksATabIsPlainBackground) {
    Fill(u"\t");
    EXPECT_EQ(FirstRow(), "text(    )@0+32");
}

TEST_F(RowTest, WithMarksATabIsAnArrowAndASpaceADot) {
    settings.ShowWhitespace = 1;
    Fill(u"a b\tc\n");
    EXPECT_EQ(FirstRow(), "text(a)@0+8 text-dot( )@8+8 text(b)@16+8 text-arrow()@24+8 text(c )@32+16");
}

TEST_F(RowTest, MarkedSpacesAreNeverMerged) {
    settings.ShowWhitespace = 1;
    Fill(u"  \t\t");
    EXPECT_EQ(FirstRow(), "text-dot( )@0+8 text-dot( )@8+8 text-arrow()@16+16 text-arrow()@32+32");
}

TEST_F(RowTest, ALineEndHasNoDot) {
    settings.ShowWhitespace = 1;
    Show(u"^a\n|");
    EXPECT_EQ(FirstRow(), "sel(a )@0+16");
}

TEST_F(RowTest, SelectedMarksHaveTheSelectionsColours) {
    settings.ShowWhitespace = 1;
    Show(u"^\t |x");
    EXPECT_EQ(FirstRow(), "sel-arrow()@0+32 sel-dot( )@32+8 text(x)@40+8");
}

TEST_F(RowTest, InAProportionalFontATabIsPaddedInWholeSpaces) {
    Fill(u"im\tx");
    surface().SetFont({16, 7, 4}, {{u'i', 3}, {u'm', 12}});
    // 15 pixels are 3 whole spaces: one more to the stop of 4.
    EXPECT_EQ(FirstRow(), "text(im)@0+15 text( x)@15+11");
}

TEST_F(RowTest, OddTabSizesArePaintedSensibly) {
    Fill(u"\tx");
    settings.SpacesPerTab = 0;
    EXPECT_EQ(FirstRow(), "text( x)@0+16");
    settings.SpacesPerTab = 4294967295u;
    EXPECT_EQ(Rows()[0].picture.fillLeft, 640);
    EXPECT_EQ(Rows()[0].draw[0].count, 80u);
}

TEST_F(RowTest, ANulEndsItsPiece) {
    std::u16string text(u"ab\0cd", 5);
    Fill(text);
    EXPECT_EQ(FirstRow(), "text(ab)@0+16");
}

// The window's edges.

TEST_F(RowTest, OnlyCharactersInTheWindowAreDrawn) {
    Fill(std::u16string(1000, u'x'));
    Resize(10, 3);
    view().Viewport().SetHorizontalScroll(20);
    // 80 pixels from 20 on: the third character is half covered, the 13th half out.
    EXPECT_EQ(FirstRow(), "text(xxxxxxxxxxx)@-4+88");
    EXPECT_EQ(Rows()[0].picture.fillLeft, 80);
}

TEST_F(RowTest, TextScrolledOutLeavesTheRowToTheFill) {
    settings.ShowLineNumbers = 1;
    settings.MarginWidth = 20;
    Fill(u"abc\n");
    view().Viewport().SetHorizontalScroll(1000);
    EXPECT_EQ(FirstRow(), "");
    EXPECT_EQ(Rows()[0].picture.fillLeft, 76);
}

TEST_F(RowTest, AnArrowThatReachesInFromTheLeftIsKeptWhole) {
    settings.ShowWhitespace = 1;
    Fill(u"\tx");
    view().Viewport().SetHorizontalScroll(8);
    EXPECT_EQ(FirstRow(), "text-arrow()@-8+32 text(x)@24+8");
}

TEST_F(RowTest, GutterAndMarginMoveTheText) {
    settings.ShowLineNumbers = 1;
    settings.MarginWidth = 20;
    Fill(u"ab");
    EXPECT_EQ(FirstRow(), "text(ab)@76+16");
    EXPECT_EQ(plan.GutterWidth(), 56);
    EXPECT_EQ(plan.MarginRight(), 76);
}

TEST_F(RowTest, ClippingNeverChangesTheVisiblePicture) {
    Random random(3);
    const std::u16string letters = u"ab \t/*\"1\n";
    settings.ShowWhitespace = 1;
    for (int round = 0; round < 300; ++round) {
        std::u16string text;
        for (uint32_t i = random.Below(200); i; --i) text += random.Pick(letters);
        Fill(text, u"cpp");
        surface().SetFont({16, 7, 5}, {{u'a', 3}, {u'b', 11}});
        const auto end = static_cast<uint32_t>(text.size());
        view().SelectRange({random.Below(end + 1), random.Below(end + 1)});
        const auto pixels = [&](int32_t scroll, int32_t width) {
            surface().SetSize(width, 48);
            input().OnSize(false);
            view().Viewport().SetHorizontalScroll(scroll);
            // Each pixel column gets the run that covers it, with where its character begins.
            std::vector<std::string> columns(static_cast<size_t>(width));
            const Row row = Rows()[0];
            for (const DrawRun& run : row.draw) {
                const bool tab = run.kind == RunKind::VisibleTab;
                int32_t x = run.x;
                for (uint32_t k = 0; k < (tab ? 1 : run.count); ++k) {
                    const int32_t advance = tab ? run.width : row.advances[run.start + k];
                    std::string shownAs = Name(run);
                    shownAs += tab ? '\t' : static_cast<char>(row.text[run.start + k]);
                    shownAs += static_cast<char>('0' + static_cast<int>(run.kind));
                    for (int32_t p = x < 0 ? 0 : x; p < x + advance && p < width; ++p)
                        columns[static_cast<size_t>(p)] = shownAs + std::to_string(p - x);
                    x += advance;
                }
            }
            return columns;
        };
        const auto whole = pixels(0, 3000);
        const int32_t scroll = static_cast<int32_t>(random.Below(600));
        const int32_t width = 1 + static_cast<int32_t>(random.Below(300));
        const auto part = pixels(scroll, width);
        for (int32_t i = 0; i < width; ++i)
            ASSERT_EQ(part[static_cast<size_t>(i)], whole[static_cast<size_t>(scroll + i)])
                << "round " << round << " pixel " << i;
    }
}

TEST_F(RowTest, AVeryLongLineIsColouredAsFarAsItIsSeen) {
    std::u16string text = u"int /* ";
    text += std::u16string(1 << 20, u'y') + u"\n*/ int";
    Fill(text, u"cpp");
    const auto rows = Rows();
    EXPECT_EQ(rows[0].picture.fillLeft, 640);
    EXPECT_EQ(rows[0].picture.runCount, 3u);
    EXPECT_EQ(rows[1].runs, "comment(*/)@0+16 text( )@16+8 key(int)@24+24"); // the comment goes on
    Press(ViewKey::End);
    const auto atEnd = Rows();
    EXPECT_EQ(atEnd[0].picture.fill, CommentBg);
    EXPECT_EQ(atEnd[0].draw.back().x + atEnd[0].draw.back().width, 640);
}

TEST_F(RowTest, CharactersWithoutWidthDoNotPileUp) {
    Fill(std::u16string(1 << 20, u'\x01'));
    surface().SetFont({16, 8, 8}, {{1, 0}});
    uint32_t characters = 0;
    const auto rows = Rows();
    for (const DrawRun& run : rows[0].draw) characters += run.count;
    EXPECT_EQ(characters, 1u << 16);
}

// Rows.

TEST_F(RowTest, AFullPaintGoesOneRowBeyondTheWholeLines) {
    Fill(std::u16string(40, u'\n'));
    view().SetTopLine(3);
    const auto rows = Rows();
    ASSERT_EQ(rows.size(), 11u);
    EXPECT_EQ(rows.front().picture.line, 3u);
    EXPECT_EQ(rows.back().picture.line, 13u);
    EXPECT_EQ(rows.back().picture.top, 160);
}

TEST_F(RowTest, AnUpdateAreaGivesTheRowsItTouches) {
    Fill(std::u16string(40, u'\n'));
    view().SetTopLine(3);
    const auto rows = Rows(16, 32);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].picture.line, 4u);
    EXPECT_EQ(rows[0].picture.top, 16);
    const auto more = Rows(15, 33);
    ASSERT_EQ(more.size(), 3u);
    EXPECT_EQ(more[0].picture.line, 3u);
}

TEST_F(RowTest, BelowTheLastLineThereIsNoNumberButTheGuide) {
    settings.ShowLineNumbers = 1;
    settings.ColumnGuide = 5;
    Fill(u"a\nb");
    const auto rows = Rows();
    EXPECT_EQ(rows[1].number, "      2");
    EXPECT_TRUE(rows[2].picture.pastEnd);
    EXPECT_EQ(rows[2].number, "");
    EXPECT_EQ(rows[2].picture.fillLeft, 0);
    EXPECT_EQ(rows[2].picture.fill, TextBg);
    EXPECT_TRUE(rows[2].picture.columnGuide);
    EXPECT_EQ(rows[2].picture.columnGuideX, 5 * 8 + 56);
}

TEST_F(RowTest, NumbersAreRightAlignedInTheirDigits) {
    settings.ShowLineNumbers = settings.VarWidthLineNumbers = 1;
    Fill(std::u16string(11, u'\n'));
    const auto rows = Rows();
    EXPECT_EQ(rows[0].number, "  1");
    EXPECT_EQ(rows[9].number, " 10");
}

TEST_F(RowTest, TheOpenLineIsDrawnInItsEditedForm) {
    Show(u"int |\nint x;\n/*\na", u"cpp");
    Type(u"y /*");
    ASSERT_TRUE(buffer().HasPendingEdit());
    const auto rows = Rows();
    EXPECT_EQ(rows[0].runs, "key(int)@0+24 text( y )@24+24 comment(/* )@48+24");
    EXPECT_EQ(rows[1].runs, "comment(int x; )@0+56");
    // Started below the open line, the state is the same.
    view().SetTopLine(0);
    EXPECT_EQ(Rows(16, 32)[0].runs, rows[1].runs);
}

TEST_F(RowTest, OffsetsAfterAPendingEditAreTheUsers) {
    Show(u"a|\nbcd");
    Type(u"xyz");
    TestView* second = TestView::Create(buffer());
    second->surface.SetSize(640, 160);
    second->input.OnSize(false);
    second->editor.SelectRange({6, 7}); // the "c" of "axyz\nbcd"
    RowPlan other;
    ASSERT_TRUE(other.Begin(second->editor, 0, 0));
    RowPicture row;
    ASSERT_TRUE(other.Next(row));
    ASSERT_TRUE(other.Next(row));
    EXPECT_EQ(Describe(row), "text(b)@0+8 sel(c)@8+8 text(d)@16+8");
}

TEST_F(RowTest, BookmarksFallOnTheirRows) {
    Fill(std::u16string(40, u'\n'));
    for (const uint32_t line : {2u, 4u, 5u, 30u}) view().ToggleBookmark(line);
    view().SetTopLine(3);
    std::vector<uint32_t> marked;
    for (const Row& row : Rows()) {
        if (row.picture.bookmark) marked.push_back(row.picture.line);
    }
    EXPECT_EQ(marked, (std::vector<uint32_t>{4, 5}));
}

TEST_F(RowTest, TheColumnGuideScrollsWithTheText) {
    settings.ColumnGuide = 10;
    Fill(u"abc");
    EXPECT_EQ(Rows()[0].picture.columnGuideX, 80);
    view().Viewport().SetHorizontalScroll(24);
    EXPECT_EQ(Rows()[0].picture.columnGuideX, 56);
    view().Viewport().SetHorizontalScroll(200);
    EXPECT_FALSE(Rows()[0].picture.columnGuide);
    settings.ColumnGuide = 4294967295u;
    EXPECT_FALSE(Rows()[0].picture.columnGuide);
    settings.ColumnGuide = 0;
    EXPECT_FALSE(Rows()[0].picture.columnGuide);
}

// Indentation guides.

TEST_F(RowTest, OneTabHasNoGuideTwoTabsHaveOne) {
    settings.IndentGuide = 1;
    Fill(u"\tx\n\t\tx\n\t\t\tx\n");
    const auto rows = Rows();
    EXPECT_EQ(rows[0].guides, Guides{});
    EXPECT_EQ(rows[1].guides, (Guides{4 + 32}));
    EXPECT_EQ(rows[2].guides, (Guides{4 + 32, 4 + 64}));
}

TEST_F(RowTest, SpacesNeedOneMoreThanATabWidth) {
    settings.IndentGuide = 1;
    Fill(u"    x\n     x\n        x\n         x");
    const auto rows = Rows();
    EXPECT_EQ(rows[0].guides, Guides{});
    EXPECT_EQ(rows[1].guides, (Guides{36}));
    EXPECT_EQ(rows[2].guides, (Guides{36}));
    EXPECT_EQ(rows[3].guides, (Guides{36, 68}));
}

TEST_F(RowTest, GuidesUnderTheMarginAreLeftOut) {
    settings.IndentGuide = 1;
    settings.MarginWidth = 20;
    Fill(u"\t\t\tx");
    view().Viewport().SetHorizontalScroll(36);
    EXPECT_EQ(Rows()[0].guides, (Guides{4 + 64 - 36 + 20}));
    settings.IndentGuide = 0;
    EXPECT_EQ(Rows()[0].guides, Guides{});
}

TEST_F(RowTest, AHundredThousandTabsHaveTheGuidesOfTheWindow) {
    settings.IndentGuide = 1;
    Fill(std::u16string(100000, u'\t') + u"x");
    EXPECT_EQ(Rows()[0].guides.size(), 19u); // every 32 pixels of 640, but for the first
}

// The way to a line.

TEST_F(RowTest, HowAPlaceWasReachedDoesNotShow) {
    // Markup with whole tags only: within one the engine also goes by what it coloured before.
    const std::vector<std::u16string> code = {u"/*", u"*/",    u"int x;", u"\"", u"'",  u"// ",
                                              u"\\", u"\"s\"", u"don't",  u"\n", u"\n", u" "};
    const std::vector<std::u16string> markup = {u"<!--", u"-->",   u"<a b='c'>", u"<script>", u"</script>", u"<?php ",
                                                u" ?>",  u"it's ", u"text ",     u"\n",       u"\n",        u"/*"};
    Random random(23);
    for (int round = 0; round < 60; ++round) {
        const bool isCode = random.OneIn(2);
        std::u16string text;
        for (uint32_t n = 300; n > 0; --n) text += isCode ? random.Pick(code) : random.Pick(markup);
        Fill(text, isCode ? u"cpp" : u"html");
        for (int step = 0; step < 12; ++step) {
            if (random.OneIn(3)) view().MoveCaret({random.Below(buffer().GetLineCount()), random.Below(5)});
            if (random.OneIn(3)) Type(random.OneIn(2) ? u"/*" : u"\"");
            if (random.OneIn(3)) view().SetTopLine(random.Below(buffer().GetLineCount()));
            Rows(0, 16 * static_cast<int32_t>(random.Below(10))); // or not down to the window's end
        }
        const uint32_t top = view().TopLine();
        std::vector<std::string> shownRows;
        for (const Row& row : Rows()) shownRows.push_back(row.runs);
        // The same text in a document of its own, painted from its first line to its last.
        Fill(Text(), isCode ? u"cpp" : u"html");
        Resize(80, static_cast<int32_t>(buffer().GetLineCount()) + 20);
        const auto all = Rows();
        for (size_t i = 0; i < shownRows.size(); ++i)
            ASSERT_EQ(shownRows[i], all[top + i].runs) << "round " << round << " line " << top + i;
    }
}

// Limits.

TEST_F(RowTest, WithoutFontOrTextNothingIsPainted) {
    Fill(u"abc");
    surface().SetFont({0, 0, 0});
    EXPECT_FALSE(plan.Begin(view(), 0, 0));
    FakeTextSurface alone;
    TextEditor editor(alone, alone);
    EXPECT_FALSE(plan.Begin(editor, 0, 0));
}

TEST_F(RowTest, AMarginWiderThanTheWindowLeavesNoText) {
    settings.MarginWidth = 5000;
    Fill(u"abc");
    surface().SetSize(100, 100);
    input().OnSize(false);
    const auto rows = Rows();
    EXPECT_EQ(rows[0].runs, "");
    EXPECT_EQ(rows[0].picture.fillLeft, 5000);
}

TEST_F(RowTest, AWarmPaintAllocatesNothing) {
    settings.ShowLineNumbers = settings.IndentGuide = settings.ShowWhitespace = 1;
    Fill(u"\t\tint x; // y\n/*\n*/ \"s\"", u"cpp");
    Rows();
    static int allocations;
    allocations = 0;
    Heap::SetFailureHook([] {
        ++allocations;
        return false;
    });
    EXPECT_TRUE(plan.Begin(view(), 0, 0));
    RowPicture row;
    while (plan.Next(row)) {
    }
    Heap::SetFailureHook(nullptr);
    EXPECT_EQ(allocations, 0);
}

TEST_F(RowTest, WithoutMemoryARowIsCutShort) {
    FailEachAllocation([&] {
        {
            FailurePause pause;
            Fill(u"\tint x; // y\nabc", u"cpp");
            settings.IndentGuide = 1;
        }
        RowPlan fresh;
        bool complete = fresh.Begin(view(), 0, 0);
        RowPicture row;
        uint32_t rows = 0;
        std::string runs;
        while (fresh.Next(row)) {
            FailurePause pause;
            runs += Describe(row);
            ++rows;
        }
        EXPECT_EQ(rows, 11u);
        complete = complete && runs.find("abc") != runs.npos && runs.find("// y") != runs.npos;
        return complete;
    });
}
