#include "support/ViewTest.h"

namespace {

struct LayoutTest : ViewTest {
    static std::u16string Lines(int count) { return std::u16string(static_cast<size_t>(count - 1), u'\n'); }
    std::pair<uint32_t, uint32_t> At(int32_t x, int32_t y) const {
        const TextPosition place = view().Viewport().PositionAt({x, y});
        return {place.line, place.column};
    }
};

using Point = std::pair<uint32_t, uint32_t>;
using Strips = std::vector<std::pair<int32_t, int32_t>>;

} // namespace

TEST_F(LayoutTest, VisibleLinesAndColumnsAreWholeOnes) {
    surface().SetSize(100, 50);
    input().OnSize(false);
    EXPECT_EQ(view().VisibleLines(), 3);
    EXPECT_EQ(view().Viewport().VisibleColumns(), 12);
}

TEST_F(LayoutTest, GutterAndMarginNarrowTheTextArea) {
    settings.ShowLineNumbers = 1;
    settings.MarginWidth = 20;
    surface().SetSize(100, 50);
    input().OnSize(false);
    EXPECT_EQ(view().Viewport().GutterWidth(), 56);
    EXPECT_EQ(view().Viewport().TextLeft(), 76);
    EXPECT_EQ(view().Viewport().VisibleColumns(), 3);
}

TEST_F(LayoutTest, TheFixedGutterIsSevenDigitsWide) {
    settings.ShowLineNumbers = 1;
    EXPECT_EQ(view().Viewport().LineNumberDigits(), 7u);
    EXPECT_EQ(view().Viewport().GutterWidth(), 56);
}

TEST_F(LayoutTest, AnEmptyDocumentHasOneLineAndItsVariableGutterTwoColumns) {
    settings.ShowLineNumbers = settings.VarWidthLineNumbers = 1;
    Fill(u"");
    EXPECT_EQ(view().Text().LineCount(), 1u);
    EXPECT_EQ(view().Viewport().LineNumberDigits(), 2u);
    EXPECT_EQ(view().Viewport().GutterWidth(), 16);
}

TEST_F(LayoutTest, TheVariableGutterHasOneDigitToSpare) {
    settings.ShowLineNumbers = settings.VarWidthLineNumbers = 1;
    Fill(Lines(9));
    EXPECT_EQ(view().Viewport().LineNumberDigits(), 2u);
    Fill(Lines(10));
    EXPECT_EQ(view().Viewport().LineNumberDigits(), 3u);
    Fill(Lines(99));
    EXPECT_EQ(view().Viewport().LineNumberDigits(), 3u);
    Fill(Lines(100));
    EXPECT_EQ(view().Viewport().LineNumberDigits(), 4u);
}

TEST_F(LayoutTest, ANewDigitRepaintsTheWholeView) {
    settings.ShowLineNumbers = settings.VarWidthLineNumbers = 1;
    Fill(Lines(9));
    surface().ForgetCalls();
    EXPECT_TRUE(buffer().InsertText(0, u"\n", 1));
    EXPECT_EQ(view().Viewport().LineNumberDigits(), 3u);
    EXPECT_GE(surface().allInvalidations, 1);
}

TEST_F(LayoutTest, ZeroFontSizesGiveNoLinesAndUINT32_MAXs) {
    surface().SetFont({0, 0, 0});
    surface().SetSize(100, 100);
    input().OnSize(false);
    EXPECT_EQ(view().VisibleLines(), 0);
    EXPECT_EQ(view().Viewport().VisibleColumns(), 0);
    EXPECT_EQ(At(50, 50), (Point{0, 0}));
    Type(u"abc");
    Press(ViewKey::PageDown);
    EXPECT_EQ(Marked(), "abc|");
}

TEST_F(LayoutTest, MarginAndCaretGrowAsTheFontDoes) {
    settings.MarginWidth = 20;
    settings.CaretWidth = 3;
    surface().SetFont({16, 8, 8, 144});
    EXPECT_EQ(view().Viewport().TextLeft(), 30);
    EXPECT_EQ(CaretPixels(surface().Metrics()), 5); // halves up
    settings.CaretWidth = 4294967295u;
    EXPECT_EQ(CaretPixels(surface().Metrics()), 1500);
}

TEST_F(LayoutTest, AMarginWiderThanTheWindowKeepsTheViewStill) {
    settings.MarginWidth = 4294967295u;
    surface().SetSize(100, 100);
    input().OnSize(false);
    EXPECT_EQ(view().Viewport().VisibleColumns(), 0);
    EXPECT_EQ(view().Viewport().TextLeft(), static_cast<int32_t>(ViewLimits::MaxMarginWidth));
    view().UpdateCaret(true);
    EXPECT_EQ(view().Viewport().HorizontalScroll(), 0);
    Type(u"abc");
    const int32_t scroll = view().Viewport().HorizontalScroll();
    view().UpdateCaret(true);
    EXPECT_EQ(view().Viewport().HorizontalScroll(), scroll);
}

TEST_F(LayoutTest, WithoutAWindowLayoutDoesNothing) {
    const auto bars = surface().barsSet.size();
    surface().window = false;
    surface().SetSize(1000, 1000);
    input().OnSize(false);
    view().UpdateCaret(true);
    EXPECT_EQ(view().VisibleLines(), 10);
    EXPECT_EQ(surface().barsSet.size(), bars);
    Type(u"abc");
    EXPECT_EQ(Marked(), "abc|");
}

TEST_F(LayoutTest, AResizeRenewsTheCaret) {
    surface().renewals = 0;
    input().OnSize(false);
    EXPECT_EQ(surface().renewals, 1);
}

// Clicking.

TEST_F(LayoutTest, TheRightHalfOfACharacterPutsTheCaretAfterIt) {
    settings.ShowLineNumbers = 1;
    settings.MarginWidth = 20;
    Fill(u"abcdef");
    // The text starts at 76; c covers [92, 100).
    EXPECT_EQ(At(95, 0), (Point{0, 2}));
    EXPECT_EQ(At(96, 0), (Point{0, 3}));
    EXPECT_EQ(At(99, 0), (Point{0, 3}));
}

TEST_F(LayoutTest, PointsInGutterAndMarginGiveColumnZero) {
    settings.ShowLineNumbers = 1;
    settings.MarginWidth = 20;
    Fill(u"abcdef");
    EXPECT_EQ(At(0, 0), (Point{0, 0}));
    EXPECT_EQ(At(75, 0), (Point{0, 0}));
}

TEST_F(LayoutTest, LinesAreCountedFromTheTopLine) {
    Fill(Lines(40));
    view().SetTopLine(5);
    EXPECT_EQ(At(0, 0), (Point{5, 0}));
    EXPECT_EQ(At(0, 15), (Point{5, 0}));
    EXPECT_EQ(At(0, 16), (Point{6, 0}));
    // Negative heights divide towards zero.
    EXPECT_EQ(At(0, -15), (Point{5, 0}));
    EXPECT_EQ(At(0, -16), (Point{4, 0}));
    EXPECT_EQ(At(0, -1000), (Point{0, 0}));
}

TEST_F(LayoutTest, ALinePastTheLastIsNotClamped) {
    Fill(u"ab\ncd");
    EXPECT_EQ(At(0, 160).first, 10u);
}

TEST_F(LayoutTest, TheHorizontalScrollMovesThePoint) {
    Fill(u"abcdefghij");
    view().Viewport().SetHorizontalScroll(24);
    EXPECT_EQ(At(0, 0), (Point{0, 3}));
    EXPECT_EQ(At(8, 0), (Point{0, 4}));
}

TEST_F(LayoutTest, TheOpenLineIsReadInItsEditedForm) {
    Show(u"ab|\ncd");
    Type(u"xyz");
    ASSERT_TRUE(buffer().HasPendingEdit());
    EXPECT_EQ(At(1000, 0), (Point{0, 5}));
    EXPECT_EQ(view().Text().LineStart(1), 6u);
    EXPECT_EQ(view().Text().Length(), 8u);
}

// Repainting.

TEST_F(LayoutTest, LinesInViewAreRepaintedAsAStrip) {
    Fill(Lines(40));
    view().SetTopLine(5);
    surface().ForgetCalls();
    view().InvalidateLines({7, 8});
    view().InvalidateLines({9, 6}); // in either order
    EXPECT_EQ(surface().strips, (Strips{{32, 64}, {16, 80}}));
    EXPECT_EQ(surface().allInvalidations, 0);
}

TEST_F(LayoutTest, StripsEndAtTheWindow) {
    Fill(Lines(40));
    view().SetTopLine(5);
    surface().ForgetCalls();
    view().InvalidateLines({0, 5});
    view().InvalidateLines({14, 4000000000u});
    EXPECT_EQ(surface().strips, (Strips{{0, 16}, {144, 176}}));
}

TEST_F(LayoutTest, LinesOutOfViewAreNotRepainted) {
    Fill(Lines(40));
    view().SetTopLine(5);
    surface().ForgetCalls();
    view().InvalidateLines({0, 4});
    view().InvalidateLines({16, 20});
    EXPECT_TRUE(surface().strips.empty());
    view().InvalidateLines({15, 15}); // the row that is partly seen
    EXPECT_EQ(surface().strips.size(), 1u);
}

TEST_F(LayoutTest, WhileSuspendedRepaintingAndTheCaretWait) {
    Show(u"|abc\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\nx");
    view().SuspendRedraw();
    view().Invalidate();
    view().InvalidateLines({0, 0});
    view().MoveCaret({16, 1});
    EXPECT_EQ(surface().allInvalidations, 0);
    EXPECT_TRUE(surface().strips.empty());
    EXPECT_EQ(view().TopLine(), 0u);
    view().ResumeRedraw();
    EXPECT_GE(surface().allInvalidations, 1);
    EXPECT_EQ(view().TopLine(), 7u);
    EXPECT_EQ(surface().caretY, 144);
}

TEST_F(LayoutTest, SuspensionsNest) {
    view().SuspendRedraw();
    view().SuspendRedraw();
    view().Invalidate();
    view().ResumeRedraw();
    EXPECT_EQ(surface().allInvalidations, 0);
    view().ResumeRedraw();
    EXPECT_EQ(surface().allInvalidations, 1);
    view().ResumeRedraw(); // one too many is harmless
    view().Invalidate();
    EXPECT_EQ(surface().allInvalidations, 2);
}

TEST_F(LayoutTest, NothingPendingNothingRepainted) {
    view().SuspendRedraw();
    view().ResumeRedraw();
    EXPECT_EQ(surface().allInvalidations, 0);
}
