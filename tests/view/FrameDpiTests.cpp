// The frame moves to a monitor of another density: font and metrics are rebuilt, and every view is laid
// out again with them.
#include "view/OwnFrameTest.h"

namespace {

class FrameDpiTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        DrawingObjects::RebuildForDpi(96); // whatever the screen of the test has
        main->NewDocument();
        text = static_cast<TextBuffer*>(main->Documents().At(0));
        ASSERT_NE(text, nullptr);
        view = static_cast<TextView*>(text->ActiveView()->AsView());
    }
    void TearDown() override {
        DrawingObjects::RebuildForDpi(96);
        OwnFrameTest::TearDown();
    }
    void MoveToDensity(WORD dpi) {
        RECT place = {};
        GetWindowRect(main->Window(), &place);
        ++place.right; // the system proposes another size
        SendMessageW(main->Window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
        RECT taken = {};
        GetWindowRect(main->Window(), &taken);
        EXPECT_EQ(taken.right, place.right);
    }
    static LONG FontHeight() {
        LOGFONTW font = {};
        GetObjectW(DrawingObjects::EditorFont(), sizeof(font), &font);
        return font.lfHeight;
    }
    int ClientHeight() const {
        RECT client = {};
        GetClientRect(view->GetWindow(), &client);
        return client.bottom;
    }

    TextBuffer* text = nullptr;
};

TEST_F(FrameDpiTest, FontAndMetricsAreRebuilt) {
    ASSERT_EQ(FontHeight(), -13); // 10 points at 96
    const int oldHeight = LineHeight();
    const int oldAverage = Average();
    MoveToDensity(192);
    EXPECT_EQ(DrawingObjects::Dpi(), 192u);
    EXPECT_EQ(FontHeight(), -27); // MulDiv(10, 192, 72)
    EXPECT_GT(LineHeight(), oldHeight);
    EXPECT_GT(Average(), oldAverage);
    EXPECT_EQ(view->Metrics().lineHeight, LineHeight());
    EXPECT_EQ(view->Metrics().averageWidth, Average());
    EXPECT_EQ(view->Metrics().spaceWidth, DrawingObjects::SpaceWidth());
    EXPECT_EQ(view->Widths().Of(u'x'), Average()); // a fixed-pitch font measured again
}

TEST_F(FrameDpiTest, ViewsAreLaidOutAndPaintedWithTheNewFont) {
    UseSettings(u"LineNumBg=#00ff00\nTextFg=#ff0000");
    MoveToDensity(192);
    EXPECT_EQ(Editor().VisibleLines(), ClientHeight() / LineHeight());
    EXPECT_EQ(Gutter(), 7 * Average());
    text->InsertText(0, u"HH\nHH", 5);
    const Picture picture = Paint();
    EXPECT_TRUE(picture.IsAll(Rgb(0, 255, 0), 0, 0, 6 * Average(), LineHeight()));
    // The second row is a new line height below the first, in the back buffer's new height.
    EXPECT_TRUE(picture.Has(Rgb(255, 0, 0), ColumnX(0), LineHeight(), ColumnX(2), 2 * LineHeight()));
    EXPECT_FALSE(picture.Has(Rgb(255, 0, 0), ColumnX(2), 0, picture.width, 2 * LineHeight()));
}

TEST_F(FrameDpiTest, TheCaretIsAsHighAsTheNewLines) {
    SetForegroundWindow(main->Window());
    SetFocus(view->GetWindow());
    ASSERT_EQ(GetFocus(), view->GetWindow());
    text->InsertText(0, u"ab", 2);
    Editor().MoveCaret(0, 2, false);
    MoveToDensity(192);
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(GetCurrentThreadId(), &info);
    ASSERT_EQ(info.hwndCaret, view->GetWindow());
    EXPECT_EQ(info.rcCaret.bottom - info.rcCaret.top, LineHeight());
    EXPECT_EQ(info.rcCaret.left, ColumnX(2));
}

TEST_F(FrameDpiTest, TheWayBackGivesTheOldPicture) {
    text->InsertText(0, u"int x;\nab", 9);
    const Picture before = Paint();
    MoveToDensity(144);
    MoveToDensity(96);
    RECT place = {};
    GetWindowRect(main->Window(), &place);
    SetWindowPos(main->Window(), nullptr, 0, 0, place.right - place.left - 2, place.bottom - place.top,
                 SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(Paint(), before);
}

} // namespace
