// The edge of the active pane, with the additional setting MarkActivePane on.
#include "app/CommandLanguage.h"
#include "resource.h"
#include "support/WithAdditional.h"
#include "view/OwnFrameTest.h"

#include <vector>

namespace {

class PaneMarkTest : public OwnFrameTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp());
        SetForegroundWindow(main->Window());
        main->Commands().NewDocument();
        main->Commands().NewDocument();
    }
    void BeforeFrame() override { on->MarkActivePane = 1; }

    std::vector<HWND> Panes() const {
        std::vector<HWND> panes;
        for (HWND pane = nullptr; (pane = FindWindowExW(main->Window(), pane, L"OrvaneVWnd", nullptr));)
            panes.push_back(pane);
        return panes;
    }
    // How many pixels of a pane's edge, which is all of its window but the client area and the scroll bars, have the
    // highlight colour: those half way along each side.
    static int MarkedPixels(HWND pane) {
        RedrawWindow(pane, nullptr, nullptr, RDW_UPDATENOW);
        RECT frame = {};
        GetWindowRect(pane, &frame);
        POINT client = {};
        ClientToScreen(pane, &client);
        const int edge = client.x - frame.left;
        EXPECT_GT(edge, 0);
        const int right = frame.right - frame.left - 1;
        const int bottom = frame.bottom - frame.top - 1;
        const HDC dc = GetWindowDC(pane);
        int marked = 0;
        for (int i = 0; i < edge; ++i) {
            const POINT places[] = {{i, bottom / 2}, {right - i, bottom / 2}, {right / 2, i}, {right / 2, bottom - i}};
            for (const POINT& place : places) marked += GetPixel(dc, place.x, place.y) == GetSysColor(COLOR_HIGHLIGHT);
        }
        ReleaseDC(pane, dc);
        EXPECT_TRUE(marked == 0 || marked == 4 * edge) << "all of an edge is marked, or nothing of it";
        return marked;
    }
    std::vector<HWND> Marked() const {
        std::vector<HWND> marked;
        for (const HWND pane : Panes())
            if (MarkedPixels(pane)) marked.push_back(pane);
        return marked;
    }
    void ExpectOnlyTheFocusMarked(size_t panes) const {
        EXPECT_EQ(Panes().size(), panes);
        EXPECT_EQ(Marked(), std::vector<HWND>{GetFocus()});
    }

    const WithAdditional on;
};

TEST_F(PaneMarkTest, ASinglePaneHasNone) {
    ASSERT_EQ(Panes().size(), 1u);
    EXPECT_EQ(Marked(), std::vector<HWND>());
}

TEST_F(PaneMarkTest, FollowsSplitsTheFocusAndCloses) {
    Command(IDM_SPLIT_VERTICALLY);
    ExpectOnlyTheFocusMarked(2);
    const HWND first = GetFocus();
    Command(IDM_NEXT_PANE);
    ASSERT_NE(GetFocus(), first);
    ExpectOnlyTheFocusMarked(2);
    Command(IDM_SPLIT_HORIZONTALLY);
    ExpectOnlyTheFocusMarked(3);
    SetFocus(first); // as a click does
    ExpectOnlyTheFocusMarked(3);
    Command(IDM_CLOSE_PANE);
    ExpectOnlyTheFocusMarked(2);
    Command(IDM_CLOSE_PANE);
    ASSERT_EQ(Panes().size(), 1u);
    EXPECT_EQ(Marked(), std::vector<HWND>());
}

TEST_F(PaneMarkTest, StaysWithThePaneThatShowsAnotherDocument) {
    Command(IDM_SPLIT_VERTICALLY);
    const HWND active = GetFocus();
    for (const UINT command : {IDM_NEXT_FILE, IDM_NEXT_FILE, IDM_NEW, IDM_CLOSE}) {
        Command(command);
        ASSERT_EQ(GetFocus(), active);
        ExpectOnlyTheFocusMarked(2);
    }
    // What the other pane has shown before is marked in neither.
    Command(IDM_NEXT_PANE);
    Command(IDM_NEXT_FILE);
    ExpectOnlyTheFocusMarked(2);
}

TEST_F(PaneMarkTest, StaysWhileTheFocusIsElsewhere) {
    Command(IDM_SPLIT_VERTICALLY);
    const HWND active = GetFocus();
    Command(IDM_COMMAND_WINDOW);
    ASSERT_NE(GetFocus(), active);
    EXPECT_EQ(Marked(), std::vector<HWND>{active});
}

TEST_F(PaneMarkTest, TakesNoRoom) {
    Command(IDM_SPLIT_VERTICALLY);
    RECT marked = {};
    RECT other = {};
    const HWND active = GetFocus();
    GetClientRect(active, &marked);
    Command(IDM_NEXT_PANE);
    GetClientRect(active, &other);
    EXPECT_TRUE(EqualRect(&marked, &other));
}

TEST_F(PaneMarkTest, FollowsTheSetting) {
    Command(IDM_SPLIT_VERTICALLY);
    ExecuteCommandLine(main->Commands(), u"setopt MarkActivePane 0");
    EXPECT_EQ(Marked(), std::vector<HWND>());
    Command(IDM_NEXT_PANE);
    EXPECT_EQ(Marked(), std::vector<HWND>());
    ExecuteCommandLine(main->Commands(), u"setopt MarkActivePane 1");
    ExpectOnlyTheFocusMarked(2);
}

} // namespace
