#include "support/FailureInjection.h"
#include "support/Random.h"
#include "support/ViewTest.h"
#include "view/LineLayout.h"

#include <vector>

namespace {

struct LineLayoutTest : ViewTest {
    static TextSpan Span(const std::u16string& text) { return {text.data(), static_cast<uint32_t>(text.size())}; }
    LineLayout Layout() { return {surface().metrics, surface().Widths()}; }
    // i is 3 and m is 12 pixels wide, all else 7, a space 4: tab stops of 4 spaces are 16 pixels apart.
    void UseProportionalFont() { surface().SetFont({16, 7, 4}, {{u'i', 3}, {u'm', 12}}); }
};

} // namespace

TEST_F(LineLayoutTest, FixedWidthsAddUp) {
    const std::u16string text = u"abc def";
    EXPECT_EQ(Layout().PositionOf(Span(text), 0), 0);
    EXPECT_EQ(Layout().PositionOf(Span(text), 3), 24);
    EXPECT_EQ(Layout().PositionOf(Span(text), 7), 56);
}

TEST_F(LineLayoutTest, ColumnsPastTheEndAreTheEnd) {
    const std::u16string text = u"abc";
    EXPECT_EQ(Layout().PositionOf(Span(text), 99), 24);
}

TEST_F(LineLayoutTest, TabsReachTheNextStop) {
    const std::u16string text = u"\ta\tabc\tabcd\t";
    // Stops every 32 pixels: 0 -> 32, a -> 40, tab -> 64, abc -> 88, tab -> 96, abcd -> 128, tab -> 160.
    EXPECT_EQ(Layout().PositionOf(Span(text), 1), 32);
    EXPECT_EQ(Layout().PositionOf(Span(text), 3), 64);
    EXPECT_EQ(Layout().PositionOf(Span(text), 7), 96);
    EXPECT_EQ(Layout().PositionOf(Span(text), 11), 128);
    EXPECT_EQ(Layout().PositionOf(Span(text), 12), 160);
}

TEST_F(LineLayoutTest, ProportionalWidthsAreMeasuredSingly) {
    UseProportionalFont();
    const std::u16string text = u"im a\tx";
    EXPECT_EQ(Layout().PositionOf(Span(text), 1), 3);
    EXPECT_EQ(Layout().PositionOf(Span(text), 2), 15);
    EXPECT_EQ(Layout().PositionOf(Span(text), 3), 19);
    EXPECT_EQ(Layout().PositionOf(Span(text), 4), 26);
    EXPECT_EQ(Layout().PositionOf(Span(text), 5), 32);
    EXPECT_EQ(Layout().PositionOf(Span(text), 6), 39);
}

TEST_F(LineLayoutTest, AControlThatReordersTextIsAsWideAsItsMark) {
    surface().SetFont({16, 7, 4}, {{u'<', 5}, {u'>', 6}, {0x202E, 0}});
    const std::u16string text = u"a\u202E\u2066b";
    EXPECT_EQ(Layout().PositionOf(Span(text), 2), 12);
    EXPECT_EQ(Layout().PositionOf(Span(text), 3), 18);
}

TEST_F(LineLayoutTest, TheRightHalfOfACharacterBelongsToTheNextColumn) {
    const std::u16string text = u"abc";
    // The second character covers [8, 16).
    EXPECT_EQ(Layout().ColumnAt(Span(text), 8), 1u);
    EXPECT_EQ(Layout().ColumnAt(Span(text), 11), 1u);
    EXPECT_EQ(Layout().ColumnAt(Span(text), 12), 2u);
    EXPECT_EQ(Layout().ColumnAt(Span(text), 15), 2u);
    EXPECT_EQ(Layout().ColumnAt(Span(text), 16), 2u);
}

TEST_F(LineLayoutTest, PointsOutsideTheLineGiveItsEnds) {
    const std::u16string text = u"abc";
    EXPECT_EQ(Layout().ColumnAt(Span(text), -5), 0u);
    EXPECT_EQ(Layout().ColumnAt(Span(text), 0), 0u);
    EXPECT_EQ(Layout().ColumnAt(Span(text), 1000), 3u);
}

TEST_F(LineLayoutTest, ATabIsSplitInTheMiddleAsAnyCharacter) {
    const std::u16string text = u"a\tb";
    // The tab covers [8, 32).
    EXPECT_EQ(Layout().ColumnAt(Span(text), 19), 1u);
    EXPECT_EQ(Layout().ColumnAt(Span(text), 20), 2u);
}

TEST_F(LineLayoutTest, ANulEndsTheSearchForAPoint) {
    const std::u16string text(u"ab\0cd", 5);
    EXPECT_EQ(Layout().ColumnAt(Span(text), 1000), 2u);
}

TEST_F(LineLayoutTest, ColumnsWithinReachThePixelAskedFor) {
    const std::u16string text = u"abcdef";
    EXPECT_EQ(Layout().ColumnsWithin(Span(text), 0), 0u);
    EXPECT_EQ(Layout().ColumnsWithin(Span(text), 8), 1u);
    EXPECT_EQ(Layout().ColumnsWithin(Span(text), 9), 2u);
    EXPECT_EQ(Layout().ColumnsWithin(Span(text), 1000), 6u);
}

TEST_F(LineLayoutTest, OddTabSizesNeitherDivideByZeroNorOverflow) {
    const std::u16string text(1000, u'\t');
    settings.SpacesPerTab = 0;
    EXPECT_EQ(TabSize(), 1u);
    EXPECT_EQ(Layout().PositionOf(Span(text), 1000), 8000);
    settings.SpacesPerTab = 4294967295u;
    EXPECT_EQ(TabSize(), ViewLimits::MaxTabSize);
    EXPECT_EQ(Layout().PositionOf(Span(text), 1000), int64_t(1000) * 8 * ViewLimits::MaxTabSize);
    surface().SetFont({0, 0, 0});
    EXPECT_EQ(TabWidth(surface().metrics), 1);
    EXPECT_EQ(Layout().PositionOf(Span(text), 1000), 1000);
}

TEST_F(LineLayoutTest, AHundredThousandTabsAreOneWalk) {
    const std::u16string text(100000, u'\t');
    EXPECT_EQ(Layout().PositionOf(Span(text), 100000), 3200000);
    EXPECT_EQ(Layout().ColumnAt(Span(text), 1600000), 50000u);
}

// Against adding up one character after the other, in fonts that make the printable ones alike or not.
TEST_F(LineLayoutTest, LongLinesAreMeasuredAsIfCharacterByCharacter) {
    const Char others[] = {u'\t', u'i', u'm', 0x4E2D, 0x7F, u' ', 0xD83D, 0xDE00};
    Random random(7);
    for (int font = 0; font < 3; ++font) {
        if (font == 1) surface().SetFont({16, 7, 4}, {{u'i', 3}, {u'm', 12}});
        if (font == 2) surface().SetFont({16, 1, 1}, {{0x4E2D, 2}});
        for (int round = 0; round < 200; ++round) {
            std::u16string text(random.Below(300), u'a');
            for (Char& unit : text)
                if (random.OneIn(20)) unit = random.Pick(others);
            std::vector<int64_t> starts = {0};
            for (uint32_t i = 0; i < text.size(); ++i)
                starts.push_back(starts.back() + Layout().WidthAt(Span(text), i, starts.back()));
            const auto target = static_cast<int64_t>(random.Below(static_cast<uint32_t>(starts.back()) + 20));
            uint32_t within = 0;
            while (within < text.size() && starts[within] < target) ++within;
            uint32_t nearest = 0;
            while (nearest < text.size() && starts[nearest] < target &&
                   starts[nearest] + (starts[nearest + 1] - starts[nearest]) / 2 <= target)
                ++nearest;
            const auto column = random.Below(static_cast<uint32_t>(text.size()) + 1);
            ASSERT_EQ(Layout().PositionOf(Span(text), column), starts[column]);
            ASSERT_EQ(Layout().ColumnsWithin(Span(text), target), within);
            ASSERT_EQ(Layout().ColumnAt(Span(text), target), nearest);
        }
    }
}

TEST_F(LineLayoutTest, LoneSurrogatesAndControlCharactersHaveWidthsOfTheirOwn) {
    surface().SetFont({16, 8, 8}, {{0xD800, 5}, {0xDC00, 6}, {1, 0}});
    const std::u16string text = {0xDC00, 0xD800, 1, u'a'};
    EXPECT_EQ(Layout().PositionOf(Span(text), 4), 5 + 6 + 0 + 8);
}

TEST_F(LineLayoutTest, APairOfSurrogatesIsAsWideAsWhatItShows) {
    surface().SetFont({16, 8, 8}, {{0xD83D, 5}, {0xDE00, 6}, {0x1F600, 21}});
    const std::u16string text = u"a\U0001F600b\xD83D";
    EXPECT_EQ(Layout().PositionOf(Span(text), 2), 8 + 11); // half of it, rounded up
    EXPECT_EQ(Layout().PositionOf(Span(text), 3), 8 + 21);
    EXPECT_EQ(Layout().PositionOf(Span(text), 5), 8 + 21 + 8 + 5);
    EXPECT_EQ(Layout().PositionOf({text.data(), 2}, 2), 8 + 5) << "a line that ends between the halves";
    EXPECT_EQ(Layout().ColumnAt(Span(text), 8 + 21), 3u);
    EXPECT_EQ(Layout().ColumnsWithin(Span(text), 8 + 21), 3u);
}

TEST(CharWidthsTest, FetchesAPageOnceAndKeepsIt) {
    struct Source {
        std::vector<uint32_t> fetched;
    } source;
    CharWidths widths;
    widths.SetSource(
        [](void* context, uint32_t first, int32_t* out) {
            static_cast<Source*>(context)->fetched.push_back(first);
            for (uint32_t i = 0; i < CharWidths::PageSize; ++i) out[i] = static_cast<int32_t>(first / 256 + i);
            return true;
        },
        &source);
    EXPECT_EQ(widths.Of(u'A'), 65);
    EXPECT_EQ(widths.Of(u'B'), 66);
    EXPECT_EQ(widths.Of(0x0103), 4);
    EXPECT_EQ(widths.Of(0xFFFF), 255 + 255);
    EXPECT_EQ(source.fetched, (std::vector<uint32_t>{0, 0x100, 0xFF00}));
}

TEST(CharWidthsTest, AnotherSourceForgetsTheOldWidths) {
    CharWidths widths;
    const auto constant = [](void* context, uint32_t, int32_t* out) {
        for (uint32_t i = 0; i < CharWidths::PageSize; ++i) out[i] = *static_cast<int32_t*>(context);
        return true;
    };
    int32_t narrow = 5;
    int32_t wide = 9;
    widths.SetSource(constant, &narrow);
    EXPECT_EQ(widths.Of(u'x'), 5);
    widths.SetSource(constant, &wide);
    EXPECT_EQ(widths.Of(u'x'), 9);
}

TEST(CharWidthsTest, WidthsThatNoPictureCanHaveAreHeldWithinBounds) {
    CharWidths widths;
    EXPECT_EQ(widths.Of(u'x'), 0); // no source yet
    widths.SetSource(
        [](void*, uint32_t, int32_t* out) {
            out[u'a'] = -3;
            out[u'b'] = 1 << 20;
            return true;
        },
        nullptr);
    EXPECT_EQ(widths.Of(u'a'), 0);
    EXPECT_EQ(widths.Of(u'b'), 0xFFFF);
    widths.SetSource([](void*, uint32_t, int32_t*) { return false; }, nullptr);
    EXPECT_EQ(widths.Of(u'a'), 0);
}

TEST(CharWidthsTest, WithoutMemoryEveryLookUpStillAnswers) {
    int fetches = 0;
    const uint64_t failures = FailEachAllocation([&] {
        CharWidths widths;
        widths.SetSource(
            [](void* context, uint32_t, int32_t* out) {
                ++*static_cast<int*>(context);
                for (uint32_t i = 0; i < CharWidths::PageSize; ++i) out[i] = 7;
                return true;
            },
            &fetches);
        EXPECT_EQ(widths.Of(u'a'), 7);
        EXPECT_EQ(widths.Of(u'a'), 7);
        return true;
    });
    EXPECT_EQ(failures, 1u);
    EXPECT_EQ(fetches, 2 + 1); // twice while the first page could not be kept, once in the run that could
}
