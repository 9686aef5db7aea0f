#include "HexViewTest.h"

namespace {

struct HexLayout : HexViewTest {
    // Where the system's caret is, in characters and rows.
    std::pair<int32_t, int32_t> CaretCell() const { return {surface().caretX / 8, surface().caretY / 16}; }
    const ScrollBar& Bar() const { return surface().bars[0]; }
    uint64_t Scroll(ScrollRequest request, int32_t track = 0) {
        input().OnScroll(ScrollAxis::Vertical, request, track);
        return view().Viewport().TopRow();
    }
    uint64_t Wheel(int32_t delta, int32_t lines = 3) {
        input().OnWheel({delta, lines, false});
        return view().Viewport().TopRow();
    }
};

using Cell = std::pair<int32_t, int32_t>;

} // namespace

// Columns.

TEST_F(HexLayout, TheOffsetColumnIsAnEvenNumberAboveTheDigitsOfTheSize) {
    const std::pair<size_t, uint32_t> widths[] = {{0, 2},     {1, 2},     {15, 2},      {16, 4},
                                                  {255, 4},   {256, 4},   {4095, 4},    {4096, 6},
                                                  {65535, 6}, {65536, 6}, {0xFFFFF, 6}, {0x100000, 8}};
    for (const auto& [size, width] : widths) {
        ASSERT_TRUE(ShowEmpty(size));
        EXPECT_EQ(view().Viewport().OffsetDigits(), width) << size;
        EXPECT_EQ(view().Viewport().GutterWidth(), static_cast<int32_t>(width) * 8);
    }
}

TEST_F(HexLayout, TheOffsetColumnIsMeasuredWhenAnotherFileIsShown) {
    Show("x");
    EXPECT_EQ(view().Viewport().OffsetDigits(), 2u);
    file = nullptr;
    Show(std::string(4096, 'x'));
    EXPECT_EQ(view().Viewport().OffsetDigits(), 6u);
}

TEST_F(HexLayout, RowsHaveSixteenBytes) {
    const std::pair<size_t, uint64_t> counts[] = {{0, 0}, {1, 1}, {15, 1}, {16, 1}, {17, 2}, {32, 2}, {16385, 1025}};
    for (const auto& [size, rows] : counts) {
        ASSERT_TRUE(ShowEmpty(size));
        EXPECT_EQ(view().Viewport().RowCount(), rows) << size;
    }
}

TEST_F(HexLayout, TheCaretIsOnItsNibble) {
    settings.MarginWidth = 20;
    Show(std::string(100, 'x')); // an offset column of 4 characters
    EXPECT_EQ(surface().caretX, 4 * 8 + 20);
    EXPECT_EQ(surface().caretY, 0);
    view().GoTo(0x25);
    EXPECT_EQ(surface().caretX, (4 + 15) * 8 + 20);
    EXPECT_EQ(surface().caretY, 2 * 16);
    input().OnChar(u'1');
    EXPECT_EQ(surface().caretX, (4 + 15 + 1) * 8 + 20);
    input().OnChar(u'1');
    EXPECT_EQ(surface().caretX, (4 + 18) * 8 + 20);
}

TEST_F(HexLayout, TheCaretShowsOnlyWithTheFocus) {
    Show(std::string(100, 'x'));
    EXPECT_TRUE(surface().caretShown);
    surface().caretShown = false;
    surface().focus = false;
    Press(ViewKey::Down);
    EXPECT_FALSE(surface().caretShown);
    surface().TakeFocus();
    EXPECT_TRUE(surface().caretShown);
    EXPECT_EQ(surface().caretY, 16);
}

TEST_F(HexLayout, ACaretFarFromTheRowsShownIsPlacedOutOfSight) {
    if (!ShowEmpty(uint64_t{1} << 40)) GTEST_SKIP() << "no room for a sparse file";
    Scroll(ScrollRequest::Maximum);
    EXPECT_LT(surface().caretY, 0);
    view().GoTo(UINT64_MAX);
    Scroll(ScrollRequest::Minimum);
    EXPECT_GT(surface().caretY, surface().height);
}

TEST_F(HexLayout, AWindowOrFontWithoutSizeIsNoFault) {
    Show(std::string(100, 'x'));
    surface().SetFont({0, 0, 0});
    Resize(3);
    EXPECT_EQ(input().VisibleLines(), 0);
    EXPECT_EQ(view().PlaceAt({50, 50}), 0u);
    Press(ViewKey::PageDown);
    EXPECT_EQ(view().Caret(), 16u);
    Wheel(-120);
    input().Drag().OnLeftButtonDown({5, 5}, false);
    surface().window = false;
    input().OnSize(false);
    Press(ViewKey::Down);
    EXPECT_EQ(view().Caret(), 32u);
}

TEST_F(HexLayout, WithoutADocumentNothingHappens) {
    TestHexView alone;
    alone.surface.SetSize(800, 160);
    alone.input.OnAttached();
    alone.input.OnSize(false);
    alone.input.OnFocus();
    for (uint32_t key = 0; key < 256; ++key) alone.input.OnKeyDown(key);
    alone.input.OnChar(u'1');
    alone.input.Drag().OnLeftButtonDown({5, 5}, false);
    alone.input.Drag().OnMouseMove({9, 9});
    alone.input.OnScroll(ScrollAxis::Vertical, ScrollRequest::LineForward, 0);
    alone.input.OnWheel({-120, 3, false});
    for (uint32_t number = 0; number < ViewCommandCount; ++number) {
        const auto command = static_cast<ViewCommand>(number);
        EXPECT_FALSE(alone.input.IsCommandEnabled(command));
        EXPECT_TRUE(alone.input.ExecuteCommand(command));
    }
    EXPECT_EQ(alone.editor.Caret(), 0u);
    EXPECT_TRUE(alone.surface.dialogs.empty());
}

// The status bar.

TEST_F(HexLayout, TheStatusBarShowsTheOffsetAndUINT32_MAX) {
    Show(std::string(100, 'x'));
    host().status[StatusField::Column] = u"\tCol 7";
    host().status[StatusField::Overwrite] = u"\tINS";
    host().status[StatusField::LineEnding] = u"\tDos";
    surface().focus = false;
    surface().TakeFocus();
    EXPECT_EQ(Status(StatusField::Line), u"0000000000");
    for (const StatusField field : {StatusField::Column, StatusField::Overwrite, StatusField::LineEnding})
        EXPECT_EQ(Status(field), u"");
    view().GoTo(0x2A);
    EXPECT_EQ(Status(StatusField::Line), u"000000002A");
}

TEST_F(HexLayout, WithoutTheFocusTheStatusBarIsLeftAlone) {
    Show(std::string(100, 'x'));
    surface().focus = false;
    host().status[StatusField::Line] = u"\tLn 1";
    host().status[StatusField::Message] = u"message";
    view().GoTo(5);
    EXPECT_EQ(Status(StatusField::Line), u"\tLn 1");
    EXPECT_EQ(Status(StatusField::Message), u"message");
}

TEST_F(HexLayout, AMoveOfTheCaretClearsTheMessage) {
    Show(std::string(100, 'x'));
    host().status[StatusField::Message] = u"message";
    Press(ViewKey::Right);
    EXPECT_EQ(Status(StatusField::Message), u"");
    host().status[StatusField::Message] = u"message";
    Type(u"1");
    EXPECT_EQ(Status(StatusField::Message), u"");
}

TEST_F(HexLayout, TheStatusBarIsSentOnlyChanges) {
    Show(std::string(100, 'x'));
    const int calls = host().statusCalls[StatusField::Line];
    Type(u"1"); // the caret stays on its byte
    Press(ViewKey::Up);
    EXPECT_EQ(host().statusCalls[StatusField::Line], calls);
    Press(ViewKey::Right);
    EXPECT_EQ(host().statusCalls[StatusField::Line], calls + 1);
}

// Scrolling.

TEST_F(HexLayout, TheBarCountsRows) {
    Show(std::string(16 * 100 + 1, 'x'));
    EXPECT_EQ(Bar(), (ScrollBar{101, 10, 0}));
    view().Viewport().ScrollTo(7);
    Press(ViewKey::F3); // anything that places the caret again
    EXPECT_EQ(Scroll(ScrollRequest::LineForward), 8u);
    EXPECT_EQ(Bar(), (ScrollBar{101, 10, 8}));
}

TEST_F(HexLayout, TheBarIsSetOnlyWhenAValueChanged) {
    Show(std::string(1000, 'x'));
    Type(u"12");
    Press(ViewKey::Down);
    EXPECT_TRUE(surface().barsSet.empty());
    input().OnAttached(); // another window
    EXPECT_EQ(surface().barsSet.size(), 2u);
}

TEST_F(HexLayout, TheHorizontalBarHasNothingToScroll) {
    Show(std::string(1000, 'x'));
    EXPECT_EQ(surface().bars[static_cast<uint32_t>(ScrollAxis::Horizontal)], (ScrollBar{0, 1, 0}));
}

TEST_F(HexLayout, ScrollingStopsAtTheFirstAndTheLastRow) {
    Show(std::string(1000, 'x')); // 63 rows
    view().Viewport().ScrollTo(62);
    EXPECT_EQ(view().Viewport().TopRow(), 62u);
    surface().ForgetCalls();
    view().Viewport().ScrollTo(63);
    EXPECT_EQ(view().Viewport().TopRow(), 62u);
    view().Viewport().ScrollTo(UINT64_MAX);
    EXPECT_EQ(view().Viewport().TopRow(), 62u);
    EXPECT_EQ(surface().allInvalidations, 0);
    view().Viewport().ScrollTo(0);
    EXPECT_EQ(view().Viewport().TopRow(), 0u);
    EXPECT_EQ(surface().allInvalidations, 1);
}

TEST_F(HexLayout, AnEmptyFileCannotBeScrolled) {
    Show("");
    EXPECT_EQ(Bar(), (ScrollBar{0, 10, 0}));
    view().Viewport().ScrollTo(1);
    EXPECT_EQ(view().Viewport().TopRow(), 0u);
    for (const ScrollRequest request : {ScrollRequest::LineForward, ScrollRequest::Maximum, ScrollRequest::LineBack})
        EXPECT_EQ(Scroll(request), 0u);
    EXPECT_EQ(Wheel(-120), 0u);
}

TEST_F(HexLayout, LinePageTrackAndEndsOfTheBar) {
    Show(std::string(1600, 'x')); // 100 rows
    EXPECT_EQ(Scroll(ScrollRequest::LineForward), 1u);
    EXPECT_EQ(Scroll(ScrollRequest::PageForward), 11u);
    EXPECT_EQ(Scroll(ScrollRequest::LineBack), 10u);
    EXPECT_EQ(Scroll(ScrollRequest::PageBack), 0u);
    EXPECT_EQ(Scroll(ScrollRequest::PageBack), 0u);
    EXPECT_EQ(Scroll(ScrollRequest::LineBack), 0u);
    EXPECT_EQ(Scroll(ScrollRequest::Track, 42), 42u);
    EXPECT_EQ(Scroll(ScrollRequest::Track, -1), 0u);
    EXPECT_EQ(Scroll(ScrollRequest::Track, 5000), 91u);
    EXPECT_EQ(Scroll(ScrollRequest::Minimum), 0u);
    EXPECT_EQ(Scroll(ScrollRequest::Maximum), 91u);
    EXPECT_EQ(Scroll(ScrollRequest::LineForward), 91u);
    EXPECT_EQ(Scroll(ScrollRequest::PageForward), 91u);
    input().OnScroll(ScrollAxis::Horizontal, ScrollRequest::Minimum, 0);
    EXPECT_EQ(view().Viewport().TopRow(), 91u);
}

TEST_F(HexLayout, TheWheelTurnsByTheSystemsLines) {
    Show(std::string(1600, 'x'));
    EXPECT_EQ(Wheel(-120), 3u);
    EXPECT_EQ(Wheel(-240, 5), 13u);
    EXPECT_EQ(Wheel(-60), 13u); // half a notch waits for the other half
    EXPECT_EQ(Wheel(-60), 16u);
    EXPECT_EQ(Wheel(120, 100), 0u);
    EXPECT_EQ(Wheel(-120, 1000), 91u);
    EXPECT_EQ(Wheel(120, 0), 91u);
}

TEST_F(HexLayout, TheWheelWithCtrlChangesTheFontSize) {
    Show(std::string(1600, 'x'));
    settings.FontSize = 10;
    input().OnWheel({-120, 3, true});
    EXPECT_EQ(settings.FontSize, 11u);
    EXPECT_EQ(Status(StatusField::Message), u"Font Size: 11");
    EXPECT_EQ(host().applied, std::vector{SettingsEffect::Layout});
    EXPECT_EQ(view().Viewport().TopRow(), 0u);
}

TEST_F(HexLayout, RowsBeyondTheBarsRangeAreCountedCoarsely) {
    constexpr uint64_t Size = uint64_t{1} << 40; // 2^36 rows
    if (!ShowEmpty(Size)) GTEST_SKIP() << "no room for a sparse file";
    EXPECT_EQ(view().Viewport().RowCount(), Size / 16);
    EXPECT_EQ(view().Viewport().OffsetDigits(), 12u);
    EXPECT_EQ(Bar().maximum, 1 << 30);
    EXPECT_EQ(Scroll(ScrollRequest::LineForward), 1u);
    EXPECT_EQ(Scroll(ScrollRequest::PageForward), 11u);
    EXPECT_EQ(Scroll(ScrollRequest::Track, 1 << 29), Size / 32);
    EXPECT_EQ(Bar().position, 1 << 29);
    EXPECT_EQ(Scroll(ScrollRequest::Maximum), Size / 16 - 9);
    EXPECT_EQ(Scroll(ScrollRequest::Track, 1 << 30), Size / 16 - 9);
}

TEST_F(HexLayout, OffsetsBeyondFourGigabytesWorkEverywhere) {
    constexpr uint64_t Size = (uint64_t{5} << 32) + 7;
    if (!ShowEmpty(Size)) GTEST_SKIP() << "no room for a sparse file";
    view().GoTo(UINT64_MAX);
    EXPECT_EQ(view().Caret(), Size);
    EXPECT_EQ(Status(StatusField::Line), u"0500000007");
    EXPECT_EQ(view().Viewport().TopRow(), Size / 16 - 9);
    EXPECT_EQ(CaretCell(), (Cell{10 + 7 * 3, 9}));
    EXPECT_EQ(At(10 + 3, 9), Size - 6);
    Press(ViewKey::Home);
    Type(u"5");
    EXPECT_EQ(Caret(), (Two{Size - 7, 1}));
    uint8_t byte = 0;
    ASSERT_TRUE((*file)->ReadBytes(Size - 7, &byte, 1));
    EXPECT_EQ(byte, 0x50);
}

TEST_F(HexLayout, TheCaretIsScrolledIntoView) {
    Show(std::string(1600, 'x'));
    view().GoTo(16 * 10);
    EXPECT_EQ(view().Viewport().TopRow(), 1u);
    view().GoTo(16 * 50);
    EXPECT_EQ(view().Viewport().TopRow(), 41u);
    view().GoTo(16 * 45);
    EXPECT_EQ(view().Viewport().TopRow(), 41u);
    view().GoTo(16 * 40 + 15);
    EXPECT_EQ(view().Viewport().TopRow(), 40u);
}

TEST_F(HexLayout, ScrollingAwayLeavesTheCaret) {
    Show(std::string(1600, 'x'));
    Scroll(ScrollRequest::Maximum);
    EXPECT_EQ(view().Caret(), 0u);
    EXPECT_EQ(surface().caretY, -91 * 16);
}

// Painting again.

TEST_F(HexLayout, ExtendingRepaintsTheRowsBetweenOnly) {
    Show(std::string(1600, 'x'));
    view().GoTo(40);
    surface().ForgetCalls();
    Shift(ViewKey::Right);
    EXPECT_EQ(surface().strips, (std::vector<std::pair<int32_t, int32_t>>{{32, 48}}));
    surface().ForgetCalls();
    Shift(ViewKey::Down);
    EXPECT_EQ(surface().strips, (std::vector<std::pair<int32_t, int32_t>>{{32, 64}}));
    surface().ForgetCalls();
    Press(ViewKey::Left); // the selection goes
    EXPECT_EQ(surface().strips, (std::vector<std::pair<int32_t, int32_t>>{{32, 64}}));
    EXPECT_EQ(surface().allInvalidations, 0);
}

TEST_F(HexLayout, AMoveWithoutSelectionRepaintsNothing) {
    Show(std::string(1600, 'x'));
    Press(ViewKey::Right);
    Press(ViewKey::Down);
    EXPECT_TRUE(surface().strips.empty());
    EXPECT_EQ(surface().allInvalidations, 0);
}

TEST_F(HexLayout, WhileSuspendedNothingIsRepainted) {
    Show(std::string(1600, 'x'));
    view().SuspendRedraw();
    view().SuspendRedraw();
    Type(u"12");
    Shift(ViewKey::Down);
    view().Invalidate();
    view().ResumeRedraw();
    EXPECT_EQ(surface().allInvalidations, 0);
    EXPECT_TRUE(surface().strips.empty());
    view().ResumeRedraw();
    EXPECT_EQ(surface().allInvalidations, 1);
    surface().ForgetCalls();
    view().ResumeRedraw(); // one too many
    view().SuspendRedraw();
    view().ResumeRedraw(); // nothing was asked for
    EXPECT_EQ(surface().allInvalidations, 0);
    view().Invalidate();
    EXPECT_EQ(surface().allInvalidations, 1);
}

TEST_F(HexLayout, TheCaretIsUpdatedWhileSuspended) {
    Show(std::string(1600, 'x'));
    view().SuspendRedraw();
    Press(ViewKey::Right);
    EXPECT_EQ(surface().caretX, (4 + 3) * 8);
    view().ResumeRedraw();
}
