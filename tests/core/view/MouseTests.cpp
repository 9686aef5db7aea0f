#include "support/ViewTest.h"

namespace {

// 40 lines of ten characters each.
struct MouseTest : ViewTest {
    MouseTest() {
        std::u16string text;
        for (int i = 0; i < 40; ++i) text += u"0123456789\n";
        Fill(text);
    }
    std::pair<uint32_t, uint32_t> Caret() const { return {view().CaretLine(), view().CaretColumn()}; }
    std::pair<uint32_t, uint32_t> Selection() const { return {view().SelectionAnchor(), view().CaretOffset()}; }
};

using Two = std::pair<uint32_t, uint32_t>;

} // namespace

TEST_F(MouseTest, AClickPutsTheCaretAndTakesTheFocus) {
    surface().focus = false;
    input().Drag().OnLeftButtonDown({24, 20}, false);
    EXPECT_EQ(Caret(), (Two{1, 3}));
    EXPECT_TRUE(surface().focus);
    EXPECT_FALSE(view().Caret().HasSelection());
    EXPECT_TRUE(surface().captured);
}

TEST_F(MouseTest, AShiftClickExtendsFromTheCaret) {
    view().SelectRange({0, 5});
    input().Drag().OnLeftButtonDown({64, 0}, true);
    EXPECT_EQ(Selection(), (Two{5, 8})); // the selection was collapsed to the caret first
}

TEST_F(MouseTest, AClickWritesThePendingLineBack) {
    Type(u"x");
    input().Drag().OnLeftButtonDown({0, 16}, false);
    EXPECT_FALSE(buffer().HasPendingEdit());
    EXPECT_EQ(document->Store()[0], u'x');
}

TEST_F(MouseTest, DraggingExtends) {
    input().Drag().OnLeftButtonDown({16, 0}, false);
    input().Drag().OnMouseMove({40, 16});
    EXPECT_EQ(Selection(), (Two{2, 16}));
    input().Drag().OnMouseMove({0, 0});
    EXPECT_EQ(Selection(), (Two{2, 0}));
    input().Drag().OnLeftButtonUp();
    EXPECT_FALSE(surface().captured);
    input().Drag().OnMouseMove({40, 16});
    EXPECT_EQ(Selection(), (Two{2, 0}));
}

TEST_F(MouseTest, WithoutAButtonAMoveDoesNothing) {
    input().Drag().OnMouseMove({40, 16});
    input().Drag().OnTimer();
    input().Drag().OnLeftButtonUp();
    EXPECT_EQ(Caret(), (Two{0, 0}));
}

TEST_F(MouseTest, TheTimerScrollsOnBelowTheWindow) {
    input().Drag().OnLeftButtonDown({0, 0}, false);
    input().Drag().OnMouseMove({0, 170});
    const uint32_t top = view().TopLine();
    EXPECT_EQ(view().CaretLine(), 10u);
    input().Drag().OnTimer();
    EXPECT_EQ(view().CaretLine(), 11u);
    EXPECT_EQ(view().TopLine(), top + 1);
    input().Drag().OnTimer();
    EXPECT_EQ(view().TopLine(), top + 2);
}

TEST_F(MouseTest, TheTimerScrollsOnAboveTheWindow) {
    view().SetTopLine(20);
    input().Drag().OnLeftButtonDown({0, 0}, false);
    input().Drag().OnMouseMove({0, -20});
    EXPECT_EQ(view().TopLine(), 19u);
    input().Drag().OnTimer();
    EXPECT_EQ(view().TopLine(), 18u);
}

TEST_F(MouseTest, OverTheCaretTheTimerDoesNothing) {
    input().Drag().OnLeftButtonDown({24, 16}, false);
    surface().ForgetCalls();
    input().Drag().OnTimer();
    EXPECT_TRUE(surface().strips.empty());
    EXPECT_FALSE(view().Caret().HasSelection());
}

TEST_F(MouseTest, LosingTheCaptureEndsTheDrag) {
    input().Drag().OnLeftButtonDown({16, 0}, false);
    surface().captured = false;
    input().Drag().OnCaptureLost();
    input().Drag().OnMouseMove({40, 16});
    input().Drag().OnTimer();
    EXPECT_EQ(Caret(), (Two{0, 2}));
}

TEST_F(MouseTest, ADoubleClickSelectsTheWord) {
    Show(u"one tw|o three");
    input().OnDoubleClick();
    EXPECT_EQ(Marked(), "one ^two| three");
}

TEST_F(MouseTest, ADoubleClickAfterTheLastCharacterSelectsNothing) {
    Show(u"one +|");
    input().OnDoubleClick();
    EXPECT_EQ(Marked(), "one +|");
}

TEST_F(MouseTest, InAnOutputDocumentADoubleClickOpensTheNamedFile) {
    Show(u"a.cpp(7)|");
    EXPECT_TRUE(buffer().MarkAsOutput());
    input().OnDoubleClick();
    ASSERT_EQ(host().opened.size(), 1u);
    EXPECT_EQ(Plain(host().opened[0].first), "a.cpp");
    EXPECT_EQ(host().opened[0].second, 6u);
    EXPECT_FALSE(view().Caret().HasSelection());
}
