// What the frame makes of Ctrl.

#include "view/OwnFrameTest.h"

namespace {

class FrameFocusTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        main->NewDocument();
        main->NewDocument();
        ASSERT_EQ(main->Documents().Count(), 2u);
        SetForegroundWindow(main->Window());
    }
    void TearDown() override {
        Hold(false);
        OwnFrameTest::TearDown();
    }
    Document* MostRecent() const { return main->Documents().MostRecent(); }

    static void Hold(bool ctrl) {
        BYTE states[256] = {};
        GetKeyboardState(states);
        states[VK_CONTROL] = ctrl ? 0x80 : 0;
        SetKeyboardState(states);
    }
    bool Offer(UINT message, WPARAM wparam) const {
        MSG offered = {};
        offered.hwnd = main->Window();
        offered.message = message;
        offered.wParam = wparam;
        return main->PreDispatchKey(offered);
    }
};

TEST_F(FrameFocusTest, SwitchingEndsWithTheFirstMessageAfterCtrlIsUp) {
    struct Case {
        UINT message;
        WPARAM wparam;
    };
    for (const Case next : {Case{WM_KEYUP, VK_CONTROL}, Case{WM_SYSKEYUP, VK_CONTROL}, Case{WM_TIMER, 1},
                            Case{WM_KEYDOWN, 'A'}, Case{WM_MOUSEMOVE, 0}}) {
        Document* const before = MostRecent();
        Hold(true);
        EXPECT_TRUE(Offer(WM_KEYDOWN, VK_TAB));
        EXPECT_FALSE(Offer(WM_KEYUP, VK_TAB));
        EXPECT_FALSE(Offer(WM_TIMER, 1));
        EXPECT_EQ(MostRecent(), before) << "the order is frozen while Ctrl is down";
        Hold(false);
        EXPECT_FALSE(Offer(next.message, next.wparam));
        EXPECT_NE(MostRecent(), before) << next.message;
    }
}

} // namespace
