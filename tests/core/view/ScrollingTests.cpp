#include "support/ViewTest.h"

namespace {

// 100 lines in a window of 10 lines and 80 columns.
struct ScrollingTest : ViewTest {
    ScrollingTest() { Fill(std::u16string(99, u'\n')); }
    const ScrollBar& Vertical() const { return surface().bars[0]; }
    const ScrollBar& Horizontal() const { return surface().bars[1]; }
    uint32_t Scroll(ScrollRequest request, int32_t track = 0) {
        input().OnScroll(ScrollAxis::Vertical, request, track);
        return view().TopLine();
    }
    int32_t ScrollSideways(ScrollRequest request, int32_t track = 0) {
        input().OnScroll(ScrollAxis::Horizontal, request, track);
        return view().Viewport().HorizontalScroll();
    }
    void LoseWindow() { surface().window = surface().focus = false; }
    void GetWindow() {
        surface().window = true;
        input().OnSize(false);
        input().OnAttached();
    }
    int32_t TiltWheel(int32_t delta, int32_t columns = 3) {
        input().OnSidewaysWheel(delta, columns);
        return view().Viewport().HorizontalScroll();
    }
    uint32_t Wheel(int32_t delta, int32_t lines = 3) {
        input().OnWheel({delta, lines, false});
        return view().TopLine();
    }
};

} // namespace

TEST_F(ScrollingTest, TheBarsShowLinesAndPixels) {
    EXPECT_EQ(Vertical(), (ScrollBar{100, 10, 0}));
    EXPECT_EQ(Horizontal(), (ScrollBar{16384, 640, 0}));
    view().SetTopLine(7);
    view().Viewport().SetHorizontalScroll(24);
    view().UpdateCaret(false);
    EXPECT_EQ(Vertical(), (ScrollBar{100, 10, 7}));
    EXPECT_EQ(Horizontal(), (ScrollBar{16384, 640, 24}));
}

TEST_F(ScrollingTest, TheBarsAreSetOnlyWhenAValueChanged) {
    surface().ForgetCalls();
    view().UpdateCaret(true);
    Press(ViewKey::Right);
    Press(ViewKey::Down);
    Type(u"x");
    EXPECT_TRUE(surface().barsSet.empty());
    EXPECT_TRUE(buffer().InsertText(0, u"\n", 1));
    EXPECT_EQ(surface().barsSet, std::vector<ScrollAxis>{ScrollAxis::Vertical});
}

TEST_F(ScrollingTest, AnotherWindowGetsItsBarsSet) {
    surface().ForgetCalls();
    input().OnAttached();
    EXPECT_EQ(surface().barsSet.size(), 2u);
}

TEST_F(ScrollingTest, LineAndPageRequestsStepByLineAndPage) {
    EXPECT_EQ(Scroll(ScrollRequest::LineForward), 1u);
    EXPECT_EQ(Scroll(ScrollRequest::PageForward), 11u);
    EXPECT_EQ(Scroll(ScrollRequest::LineBack), 10u);
    EXPECT_EQ(Scroll(ScrollRequest::PageBack), 0u);
    EXPECT_EQ(Scroll(ScrollRequest::LineBack), 0u);
}

TEST_F(ScrollingTest, SidewaysALineIsAnAverageCharacter) {
    EXPECT_EQ(ScrollSideways(ScrollRequest::LineForward), 8);
    EXPECT_EQ(ScrollSideways(ScrollRequest::PageForward), 648);
    EXPECT_EQ(ScrollSideways(ScrollRequest::LineBack), 640);
    EXPECT_EQ(ScrollSideways(ScrollRequest::Minimum), 0);
}

TEST_F(ScrollingTest, TheEndOfABarIsItsLastPage) {
    EXPECT_EQ(Scroll(ScrollRequest::Maximum), 91u);
    EXPECT_EQ(Scroll(ScrollRequest::LineForward), 91u);
    EXPECT_EQ(Scroll(ScrollRequest::Minimum), 0u);
    EXPECT_EQ(ScrollSideways(ScrollRequest::Maximum), 16384 - 639);
}

TEST_F(ScrollingTest, TheThumbGoesWhereItIsPut) {
    EXPECT_EQ(Scroll(ScrollRequest::Track, 42), 42u);
    EXPECT_EQ(Scroll(ScrollRequest::Track, 1000), 91u);
    EXPECT_EQ(Scroll(ScrollRequest::Track, -5), 0u);
    EXPECT_EQ(ScrollSideways(ScrollRequest::Track, 100), 100);
}

TEST_F(ScrollingTest, ScrollingDoesNotFollowTheCaret) {
    Scroll(ScrollRequest::Track, 50);
    EXPECT_EQ(view().TopLine(), 50u);
    EXPECT_EQ(view().CaretLine(), 0u);
    EXPECT_EQ(surface().caretY, -800);
}

TEST_F(ScrollingTest, TheWheelMovesTheSystemsLinesANotch) {
    EXPECT_EQ(Wheel(-120), 3u);
    EXPECT_EQ(Wheel(-240, 5), 13u);
    EXPECT_EQ(Wheel(120), 10u);
    EXPECT_EQ(Wheel(1200), 0u);
}

TEST_F(ScrollingTest, PartsOfANotchAddUp) {
    EXPECT_EQ(Wheel(-50), 0u);
    EXPECT_EQ(Wheel(-50), 0u);
    EXPECT_EQ(Wheel(-50), 3u); // 150: one notch, 30 kept
    EXPECT_EQ(Wheel(-90), 6u);
    EXPECT_EQ(Wheel(119), 6u);
    EXPECT_EQ(Wheel(1), 3u);
}

TEST_F(ScrollingTest, NearTheEndTheWheelLeavesTheLastLineAtTheBottom) {
    view().SetTopLine(90);
    EXPECT_EQ(Wheel(-120), 91u);
    EXPECT_EQ(Wheel(-120), 91u);
}

TEST_F(ScrollingTest, ATextShorterThanTheWindowDoesNotScroll) {
    Fill(u"a\nb");
    EXPECT_EQ(Wheel(-120), 0u);
}

TEST_F(ScrollingTest, WhereTheSystemScrollsByNoLinesTheWheelDoesNothing) {
    EXPECT_EQ(Wheel(-120, 0), 0u);
    EXPECT_EQ(Wheel(INT32_MIN, 3), 91u);
}

TEST_F(ScrollingTest, WithCtrlTheWheelChangesTheFontSize) {
    settings.FontSize = 10;
    input().OnWheel({-120, 3, true});
    EXPECT_EQ(settings.FontSize, 11u);
    EXPECT_EQ(Status(StatusField::Message), "Font Size: 11");
    EXPECT_EQ(host().applied, std::vector{SettingsEffect::Layout});
    input().OnWheel({240, 3, true}); // two notches are still one step
    EXPECT_EQ(settings.FontSize, 10u);
    EXPECT_EQ(view().TopLine(), 0u);
}

TEST_F(ScrollingTest, CtrlWheelNeverReducesTheFontSizeBelowOne) {
    settings.FontSize = 2;
    input().OnWheel({120, 3, true});
    EXPECT_EQ(settings.FontSize, 1u);
    input().OnWheel({120, 3, true});
    EXPECT_EQ(settings.FontSize, 1u);
    settings.FontSize = 4294967295u;
    input().OnWheel({-120, 3, true});
    EXPECT_EQ(settings.FontSize, 4294967295u);
}

TEST_F(ScrollingTest, OneLineMovesThePictureInsteadOfRepaintingIt) {
    surface().ForgetCalls();
    Scroll(ScrollRequest::LineForward);
    EXPECT_EQ(surface().scrolls, std::vector<int32_t>{-16});
    Scroll(ScrollRequest::LineBack);
    EXPECT_EQ(surface().scrolls, (std::vector<int32_t>{-16, 16}));
    EXPECT_EQ(surface().allInvalidations, 0);
}

TEST_F(ScrollingTest, AWholePageIsRepainted) {
    surface().ForgetCalls();
    view().SetTopLine(10);
    EXPECT_TRUE(surface().scrolls.empty());
    EXPECT_EQ(surface().allInvalidations, 1);
}

TEST_F(ScrollingTest, WhileSuspendedScrollingRepaintsLater) {
    surface().ForgetCalls();
    view().SuspendRedraw();
    view().SetTopLine(1);
    EXPECT_TRUE(surface().scrolls.empty());
    EXPECT_EQ(surface().allInvalidations, 0);
    view().ResumeRedraw();
    EXPECT_EQ(surface().allInvalidations, 1);
}

TEST_F(ScrollingTest, TheSameTopLineOrScrollRepaintsNothing) {
    view().SetTopLine(5);
    view().Viewport().SetHorizontalScroll(8);
    surface().ForgetCalls();
    view().SetTopLine(5);
    view().Viewport().SetHorizontalScroll(8);
    EXPECT_EQ(surface().allInvalidations, 0);
    EXPECT_TRUE(surface().scrolls.empty());
}

TEST_F(ScrollingTest, ScrollingWritesThePendingLineBack) {
    Type(u"abc");
    ASSERT_TRUE(buffer().HasPendingEdit());
    Scroll(ScrollRequest::LineForward);
    EXPECT_FALSE(buffer().HasPendingEdit());
    EXPECT_EQ(Plain(document->Store().substr(0, 4)), "abc\n");
}

TEST_F(ScrollingTest, ATopLinePastTheTextIsTheLastLine) {
    view().SetTopLine(4000);
    EXPECT_EQ(view().TopLine(), 99u);
}

// Following the caret.

TEST_F(ScrollingTest, ACaretAboveTheWindowBecomesTheTopLine) {
    view().SetTopLine(50);
    view().MoveCaret({20, 0});
    EXPECT_EQ(view().TopLine(), 20u);
}

TEST_F(ScrollingTest, ACaretBelowTheWindowBecomesTheBottomLine) {
    view().MoveCaret({10, 0});
    EXPECT_EQ(view().TopLine(), 1u);
    view().MoveCaret({60, 0});
    EXPECT_EQ(view().TopLine(), 51u);
}

TEST_F(ScrollingTest, ACaretInTheWindowScrollsNothing) {
    view().SetTopLine(20);
    surface().ForgetCalls();
    view().MoveCaret({20, 0});
    view().MoveCaret({29, 0});
    EXPECT_EQ(view().TopLine(), 20u);
    EXPECT_TRUE(surface().scrolls.empty());
}

TEST_F(ScrollingTest, ALongLineScrollsSidewaysAndSnapsBackToTheLeftEdge) {
    Fill(std::u16string(200, u'x'));
    Resize(20, 5);
    // Usable are 160 - 8 pixels.
    view().MoveCaret({0, 19});
    EXPECT_EQ(view().Viewport().HorizontalScroll(), 0);
    view().MoveCaret({0, 20});
    EXPECT_EQ(view().Viewport().HorizontalScroll(), 8);
    view().MoveCaret({0, 100});
    EXPECT_EQ(view().Viewport().HorizontalScroll(), 648);
    EXPECT_EQ(surface().caretX, 152);
    view().MoveCaret({0, 81});
    EXPECT_EQ(view().Viewport().HorizontalScroll(), 648);
    EXPECT_EQ(surface().caretX, 0);
    view().MoveCaret({0, 80});
    EXPECT_EQ(view().Viewport().HorizontalScroll(), 0);
    EXPECT_FALSE(surface().caretX < 0);
}

TEST_F(ScrollingTest, ACaretScrolledOutToTheLeftIsHidden) {
    Fill(std::u16string(200, u'x'));
    view().UpdateCaret(false);
    EXPECT_TRUE(surface().caretShown);
    input().OnScroll(ScrollAxis::Horizontal, ScrollRequest::LineForward, 0);
    EXPECT_FALSE(surface().caretShown);
    input().OnScroll(ScrollAxis::Horizontal, ScrollRequest::LineBack, 0);
    EXPECT_TRUE(surface().caretShown);
}

TEST_F(ScrollingTest, WithoutFocusTheCaretIsLeftAlone) {
    surface().focus = false;
    surface().caretShown = false;
    view().MoveCaret({60, 0});
    EXPECT_EQ(view().TopLine(), 51u);
    EXPECT_FALSE(surface().caretShown);
    EXPECT_EQ(Vertical().position, 51);
}

// Without a window.

TEST_F(ScrollingTest, ACaretMovedWithoutAWindowIsInSightInTheNextOne) {
    LoseWindow();
    view().MoveCaret({60, 0});
    GetWindow();
    EXPECT_EQ(view().TopLine(), 51u);
    EXPECT_EQ(Vertical().position, 51);
    LoseWindow();
    view().MoveCaret({3, 0});
    GetWindow();
    EXPECT_EQ(view().TopLine(), 3u);
}

TEST_F(ScrollingTest, ATextThatGoesOnWithoutAWindowIsFollowed) {
    EXPECT_TRUE(buffer().MarkAsOutput());
    view().MoveCaret({99, 0});
    LoseWindow();
    std::u16string more(900, u'\n');
    ASSERT_TRUE(buffer().AppendOutputText(more.data()));
    GetWindow();
    EXPECT_EQ(view().CaretLine(), 999u);
    EXPECT_EQ(view().TopLine(), 990u);
}

TEST_F(ScrollingTest, AMessageStaysWhenOutputTakesTheCaretAlong) {
    EXPECT_TRUE(buffer().MarkAsOutput());
    view().MoveCaret({99, 0});
    host().status[StatusField::Message] = u"said";
    std::u16string more = u"more\nand more";
    ASSERT_TRUE(buffer().AppendOutputText(more.data()));
    EXPECT_EQ(view().CaretPosition(), (TextPosition{100, 8}));
    EXPECT_EQ(host().status[StatusField::Line], u"\tLn 101");
    EXPECT_EQ(host().status[StatusField::Message], u"said");
    Press(ViewKey::Left);
    EXPECT_EQ(host().status[StatusField::Message], u"");
}

TEST_F(ScrollingTest, ATextEmptiedWithoutAWindowIsShownFromItsStart) {
    view().MoveCaret({99, 0});
    LoseWindow();
    buffer().EmptyAndResetUndo();
    GetWindow();
    EXPECT_EQ(view().TopLine(), 0u);
}

TEST_F(ScrollingTest, AViewScrolledAwayFromItsCaretKeepsItsPlaceInAnotherWindow) {
    EXPECT_TRUE(buffer().MarkAsOutput());
    Scroll(ScrollRequest::Track, 50);
    LoseWindow();
    std::u16string more(900, u'\n');
    ASSERT_TRUE(buffer().AppendOutputText(more.data()));
    GetWindow();
    EXPECT_EQ(view().CaretLine(), 0u);
    EXPECT_EQ(view().TopLine(), 50u);
}

TEST_F(ScrollingTest, OnceInSightTheCaretMayBeLeftAgain) {
    LoseWindow();
    view().MoveCaret({60, 0});
    GetWindow();
    Scroll(ScrollRequest::Track, 20);
    LoseWindow();
    GetWindow();
    EXPECT_EQ(view().TopLine(), 20u);
}

TEST_F(ScrollingTest, AWindowThatHasNoRoomYetIsWaitedFor) {
    LoseWindow();
    view().MoveCaret({60, 0});
    surface().SetSize(0, 0);
    GetWindow();
    EXPECT_EQ(view().TopLine(), 0u);
    Resize(80, 10);
    EXPECT_EQ(view().TopLine(), 51u);
}

TEST_F(ScrollingTest, PixelsBeyondThirtyTwoBitsAreHeldWithinThem) {
    Fill(std::u16string(40000, u'x'));
    surface().SetFont({16, 65535, 65535});
    Press(ViewKey::End);
    EXPECT_EQ(view().Viewport().HorizontalScroll(), INT32_MAX);
}

TEST_F(ScrollingTest, TheSidewaysWheelScrollsByColumns) {
    EXPECT_EQ(TiltWheel(120), 24);
    EXPECT_EQ(TiltWheel(60), 24);
    EXPECT_EQ(TiltWheel(60), 48); // parts of a notch add up
    EXPECT_EQ(Horizontal().position, 48);
    EXPECT_EQ(TiltWheel(-120), 24);
    EXPECT_EQ(TiltWheel(-1200), 0);
    EXPECT_EQ(TiltWheel(120, 0), 0);
    EXPECT_EQ(view().TopLine(), 0u);
}

TEST_F(ScrollingTest, ANotchOfTheSidewaysWheelIsAPageAtMost) {
    EXPECT_EQ(TiltWheel(120, INT32_MAX), 640);
    EXPECT_EQ(TiltWheel(-120, INT32_MAX), 0);
}

TEST_F(ScrollingTest, TheSidewaysWheelEndsWhereTheBarDoesAndNeverJumpsBackThere) {
    const int32_t farthest = ScrollSideways(ScrollRequest::Maximum);
    EXPECT_EQ(TiltWheel(120), farthest);
    view().Viewport().SetHorizontalScroll(farthest + 1000); // where only the caret leads
    EXPECT_EQ(TiltWheel(120), farthest + 1000);
    EXPECT_EQ(TiltWheel(-120), farthest + 976);
}
