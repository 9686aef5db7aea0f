#include "app/FrameTest.h"

// Panes as windows: where they lie after each split, close and drag, and which one has the focus.

namespace {

constexpr unsigned Whole = 65536;
constexpr unsigned Half = Whole / 2;
constexpr unsigned Quarter = Whole / 4;

class FramePaneTest : public FrameTest {
protected:
    // Four panes, one in each quarter: 0 upper left, 1 upper right, 2 lower left, 3 lower right.
    void MakeQuarters() {
        ASSERT_TRUE(editor.Keys(L"Alt+Right"));
        ASSERT_TRUE(WaitForPaneCount(2));
        ASSERT_TRUE(editor.Keys(L"Alt+Down"));
        ASSERT_TRUE(WaitForPaneCount(3));
        ASSERT_TRUE(editor.Keys(L"F6"));
        ASSERT_TRUE(WaitForFocus(Panes()[1]));
        ASSERT_TRUE(editor.Keys(L"Alt+Down"));
        ASSERT_TRUE(WaitForPanes({Expected(0, 0, Half, Half), Expected(Half, 0, Half, Half),
                                  Expected(0, Half, Half, Half), Expected(Half, Half, Half, Half)}));
    }
    // As the mouse does it, in one go: the frame asks for nothing but these messages.
    void Drag(int fromX, int fromY, int toX, int toY) {
        Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(fromX, fromY));
        Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(toX, toY));
        Send(WM_LBUTTONUP, 0, MAKELPARAM(toX, toY));
    }
    void FocusPane(size_t index) {
        for (size_t i = 0; i < Panes().size() && editor.Focus() != Panes()[index]; i++) {
            const HWND before = editor.Focus();
            ASSERT_TRUE(editor.Keys(L"F6"));
            ASSERT_TRUE(window::WaitFor([&] { return editor.Focus() != before; }));
        }
        ASSERT_TRUE(WaitForFocus(Panes()[index]));
    }
};

} // namespace

TEST_F(FramePaneTest, TheFirstPaneCoversTheAreaAboveTheStatusBar) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(801, 603));
    EXPECT_TRUE(WaitForPanes({{0, 0, 801, static_cast<int>(PaneArea().cy)}}));
    EXPECT_EQ(GetDlgCtrlID(Panes()[0]), 8192);
    const DWORD style = static_cast<DWORD>(GetWindowLongPtrW(Panes()[0], GWL_STYLE));
    for (const DWORD part : {WS_CHILD, WS_VISIBLE, WS_CLIPSIBLINGS, WS_CLIPCHILDREN, WS_HSCROLL, WS_VSCROLL})
        EXPECT_TRUE(style & part) << part;
    EXPECT_TRUE(GetWindowLongPtrW(Panes()[0], GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
    EXPECT_EQ(window::ClassOf(editor.Main()), L"OrvaneMain");
}

TEST_F(FramePaneTest, TwoVerticalSplitsMakeAQuarterAndTheActivePaneKeepsTheFocus) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(1001, 501));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPanes({Expected(0, 0, Half, Whole), Expected(Half, 0, Half, Whole)}));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    EXPECT_TRUE(WaitForPanes(
        {Expected(0, 0, Quarter, Whole), Expected(Half, 0, Half, Whole), Expected(Quarter, 0, Quarter, Whole)}));
    EXPECT_EQ(editor.Focus(), Panes()[0]);
    EXPECT_EQ(GetDlgCtrlID(Panes()[2]), 8194);
    EXPECT_EQ(editor.Title(), TitleOf(L"a.txt"));
}

TEST_F(FramePaneTest, HorizontalSplitHalvesTheHeight) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(640, 477));
    ASSERT_TRUE(editor.Keys(L"Alt+Down"));
    ASSERT_TRUE(WaitForPanes({Expected(0, 0, Whole, Half), Expected(0, Half, Whole, Half)}));
    // The gap between the two is two pixels wide, one of each.
    const std::vector<Place> places = PanePlaces();
    EXPECT_EQ(places[1].y - (places[0].y + places[0].height), 2);
    EXPECT_EQ(editor.Focus(), Panes()[0]);
}

TEST_F(FramePaneTest, ASplitThatLeavesNoRoomForACharacterIsRefused) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(640, 477));
    for (int i = 0; i < 20; i++) editor.Command(IDM_SPLIT_HORIZONTALLY);
    for (int i = 0; i < 20; i++) editor.Command(IDM_SPLIT_VERTICALLY);
    ASSERT_TRUE(Modify(L"a.txt"));
    const std::vector<Place> places = PanePlaces();
    EXPECT_GT(places.size(), 4u);
    EXPECT_LT(places.size(), 20u);
    for (const HWND pane : Panes()) {
        RECT inside = {};
        GetClientRect(pane, &inside);
        EXPECT_GT(inside.right, 0);
        EXPECT_GT(inside.bottom, 0);
    }
}

TEST_F(FramePaneTest, ClosingTheOnlyPaneDoesNothing) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    EXPECT_FALSE(IsEnabled(IDM_CLOSE_PANE));
    editor.Command(IDM_CLOSE_PANE);
    ASSERT_TRUE(editor.Keys(L"Alt+Left"));
    ASSERT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(Panes().size(), 1u);
}

TEST_F(FramePaneTest, ClosingGivesTheAreaToThePaneBelowFirst) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_NO_FATAL_FAILURE(MakeQuarters());
    const HWND below = Panes()[2];
    ASSERT_NO_FATAL_FAILURE(FocusPane(0));
    ASSERT_TRUE(editor.Keys(L"Alt+Left"));
    EXPECT_TRUE(
        WaitForPanes({Expected(Half, 0, Half, Half), Expected(0, 0, Half, Whole), Expected(Half, Half, Half, Half)}));
    EXPECT_TRUE(WaitForFocus(below));
    ASSERT_TRUE(Modify(L"a.txt"));
}

TEST_F(FramePaneTest, ClosingGivesTheAreaToThePaneAboveNext) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_NO_FATAL_FAILURE(MakeQuarters());
    const HWND above = Panes()[1];
    ASSERT_NO_FATAL_FAILURE(FocusPane(3));
    ASSERT_TRUE(editor.Keys(L"Alt+Left"));
    EXPECT_TRUE(
        WaitForPanes({Expected(0, 0, Half, Half), Expected(Half, 0, Half, Whole), Expected(0, Half, Half, Half)}));
    EXPECT_TRUE(WaitForFocus(above));
}

TEST_F(FramePaneTest, ClosingGivesTheAreaToTheRightAndToTheLeft) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    for (size_t panes = 2; panes <= 3; panes++) {
        ASSERT_TRUE(editor.Keys(L"Alt+Right"));
        ASSERT_TRUE(WaitForPaneCount(panes));
    }
    // In the order of the screen: 0, 2, 1. The first one's area goes to its right.
    const HWND right = Panes()[2];
    ASSERT_TRUE(editor.Keys(L"Alt+Left"));
    ASSERT_TRUE(WaitForPanes({Expected(Half, 0, Half, Whole), Expected(0, 0, Half, Whole)}));
    EXPECT_TRUE(WaitForFocus(right));
    // The last one's to its left.
    ASSERT_NO_FATAL_FAILURE(FocusPane(0));
    ASSERT_TRUE(editor.Keys(L"Alt+Left"));
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, Whole, Whole)}));
    EXPECT_TRUE(WaitForFocus(right));
}

TEST_F(FramePaneTest, TheSecondRoundTakesNeighboursThatAreNotWider) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.Keys(L"Alt+Down"));
    ASSERT_TRUE(WaitForPaneCount(2));
    ASSERT_TRUE(editor.Keys(L"F6"));
    ASSERT_TRUE(WaitForFocus(Panes()[1]));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(
        WaitForPanes({Expected(0, 0, Whole, Half), Expected(0, Half, Half, Half), Expected(Half, Half, Half, Half)}));
    const HWND first = Panes()[1];
    ASSERT_NO_FATAL_FAILURE(FocusPane(0));
    ASSERT_TRUE(editor.Keys(L"Alt+Left"));
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, Half, Whole), Expected(Half, 0, Half, Whole)}));
    EXPECT_TRUE(WaitForFocus(first));
}

TEST_F(FramePaneTest, DraggingTheGapMovesBothEdges) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(800, 600));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    Drag(400, 100, 200, 100);
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, Quarter, Whole), Expected(Quarter, 0, Whole - Quarter, Whole)}));
    // Beside the gap nothing is dragged.
    Drag(300, 100, 500, 100);
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, Quarter, Whole), Expected(Quarter, 0, Whole - Quarter, Whole)}));
}

TEST_F(FramePaneTest, ADragStopsWhereAPaneWouldGetNarrowerThanTheLimit) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(800, 600));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    const unsigned limit = 32 * Whole / 800;
    Drag(400, 100, 3, 100);
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, limit, Whole), Expected(limit, 0, Whole - limit, Whole)}));
    // Left of the area counts as 0.
    Drag(32, 100, -500, 100);
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, limit, Whole), Expected(limit, 0, Whole - limit, Whole)}));
    Drag(32, 100, 2000, 100);
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, Whole - limit, Whole), Expected(Whole - limit, 0, limit, Whole)}));
}

TEST_F(FramePaneTest, TheCrossingOfTwoGapsMovesAllFourPanes) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(800, 600));
    ASSERT_NO_FATAL_FAILURE(MakeQuarters());
    const int middle = static_cast<int>(PaneArea().cy) / 2;
    const int down = static_cast<int>(PaneArea().cy) * 3 / 4;
    Drag(400, middle, 600, down);
    const unsigned top = static_cast<unsigned>(down) * Whole / static_cast<unsigned>(PaneArea().cy);
    const unsigned left = 3 * Quarter;
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, left, top), Expected(left, 0, Whole - left, top),
                              Expected(0, top, left, Whole - top), Expected(left, top, Whole - left, Whole - top)}));
}

TEST_F(FramePaneTest, TheMouseItselfDragsAndShowsTheSizingCursor) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(800, 600));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    const auto move = [&](int x, int y) {
        POINT point = {x, y};
        ClientToScreen(editor.Main(), &point);
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dx = point.x * 65536 / GetSystemMetrics(SM_CXSCREEN) + 1;
        input.mi.dy = point.y * 65536 / GetSystemMetrics(SM_CYSCREEN) + 1;
        input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
        SendInput(1, &input, sizeof input);
    };
    const auto button = [](DWORD flag) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flag;
        SendInput(1, &input, sizeof input);
    };
    move(300, 50);
    move(400, 50);
    const auto sizing = Remote().Call(L"user32.dll", "LoadCursorW", {0, reinterpret_cast<uint64_t>(IDC_SIZEWE)});
    EXPECT_TRUE(window::WaitFor([&] {
        CURSORINFO info = {};
        info.cbSize = sizeof info;
        return GetCursorInfo(&info) && reinterpret_cast<uint64_t>(info.hCursor) == sizing;
    }));
    button(MOUSEEVENTF_LEFTDOWN);
    move(500, 60);
    const unsigned left = 500 * Whole / 800;
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, left, Whole), Expected(left, 0, Whole - left, Whole)}));
    button(MOUSEEVENTF_LEFTUP);
    // Out of the way of the windows of the tests to come.
    move(2000, 2000);
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, left, Whole), Expected(left, 0, Whole - left, Whole)}));
}

TEST_F(FramePaneTest, F6GoesRoundThePanesInOrderOfCreation) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_NO_FATAL_FAILURE(MakeQuarters());
    ASSERT_NO_FATAL_FAILURE(FocusPane(0));
    for (const size_t next : {1, 2, 3, 0}) {
        ASSERT_TRUE(editor.Keys(L"F6"));
        EXPECT_TRUE(WaitForFocus(Panes()[next]));
    }
    for (const size_t previous : {3, 2, 1, 0}) {
        ASSERT_TRUE(editor.Keys(L"Shift+F6"));
        EXPECT_TRUE(WaitForFocus(Panes()[previous]));
    }
}

TEST_F(FramePaneTest, ThePaneThatGetsTheFocusIsTheActiveOne) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    ASSERT_TRUE(Modify(L"b.txt"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
}

TEST_F(FramePaneTest, TheCommandWindowTakesItsHeightFromThePanes) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(800, 600));
    ASSERT_TRUE(editor.Keys(L"Alt+Down"));
    ASSERT_TRUE(WaitForPaneCount(2));
    const LONG without = PaneArea().cy;
    ASSERT_TRUE(editor.Keys(L"Alt+C"));
    // It is shown first and laid out then.
    EXPECT_TRUE(window::WaitFor([&] {
        const HWND shown = editor.CommandWindow();
        const int top = static_cast<int>(PaneArea().cy);
        return shown && PlaceOf(shown) == Place{0, top, 800, static_cast<int>(without) - top};
    }));
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, Whole, Half), Expected(0, Half, Whole, Half)}));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(window::WaitFor([&] { return !editor.CommandWindow(); }));
    EXPECT_EQ(PaneArea().cy, without);
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, Whole, Half), Expected(0, Half, Whole, Half)}));
}

TEST_F(FramePaneTest, StatusPartsEndWhereTheyShould) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    for (const int width : {800, 500, 130}) {
        ASSERT_TRUE(SetClientSize(width, 300));
        RECT client = {};
        GetClientRect(editor.Main(), &client);
        const HWND bar = window::Children(editor.Main(), STATUSCLASSNAMEW)[0];
        int edges[5] = {};
        const uint64_t block = Remote().Allocate(sizeof edges);
        DWORD_PTR count = 0;
        SendMessageTimeoutW(bar, SB_GETPARTS, 5, static_cast<LPARAM>(block), SMTO_ABORTIFHUNG, 5000, &count);
        EXPECT_EQ(count, 5u);
        Remote().Read(block, edges, sizeof edges);
        // The grip takes 20 pixels, the parts from the right 30, 80, 80 and 50; none begins left of the bar.
        int edge = client.right - 20;
        for (const int part : {4, 3, 2, 1, 0}) {
            EXPECT_EQ(edges[part], std::max(edge, 0)) << part << " of " << client.right;
            edge -= part == 4 ? 30 : part == 1 ? 50 : 80;
        }
    }
}

TEST_F(FramePaneTest, MinimisingKeepsThePanes) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(SetClientSize(800, 600));
    ASSERT_NO_FATAL_FAILURE(MakeQuarters());
    const std::vector<Place> before = PanePlaces();
    ShowWindow(editor.Main(), SW_MINIMIZE);
    ASSERT_TRUE(window::WaitFor([&] { return IsIconic(editor.Main()); }));
    EXPECT_EQ(PanePlaces(), before);
    // Closing a pane meanwhile leaves another one active, though none can have the focus.
    Send(WM_COMMAND, IDM_CLOSE_PANE);
    EXPECT_TRUE(WaitForPaneCount(3));
    Send(WM_COMMAND, IDM_NEW);
    ShowWindow(editor.Main(), SW_RESTORE);
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled1* - Orvane"));
}

TEST_F(FramePaneTest, AWindowWithoutRoomIsSurvived) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_NO_FATAL_FAILURE(MakeQuarters());
    // The system keeps room for the caption; what is left for the panes is nothing.
    SetWindowPos(editor.Main(), nullptr, 0, 0, 1, 1, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    ASSERT_TRUE(window::WaitFor([&] {
        const std::vector<Place> places = PanePlaces();
        return places[0].height == 0 && places[3].height == 0;
    }));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"PageDown PageUp Ctrl+End Down Up"));
    Drag(0, 0, 10, 10);
    ASSERT_TRUE(editor.Keys(L"Alt+Down")); // refused
    for (size_t panes = 3; panes > 0; panes--) {
        ASSERT_TRUE(editor.Keys(L"Alt+Left"));
        ASSERT_TRUE(WaitForPaneCount(panes));
    }
    ASSERT_TRUE(SetClientSize(800, 600));
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, Whole, Whole)}));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xa.txt");
}

TEST_F(FramePaneTest, TwoViewsOfOneDocumentShowTheSameText) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    // The view that was made by the split has not become the active one: all five characters are one step.
    ASSERT_TRUE(editor.Type(L"hello"));
    ASSERT_TRUE(WaitForFile(L"a.txt", true));
    ASSERT_TRUE(editor.Keys(L"F6"));
    ASSERT_TRUE(WaitForFocus(Panes()[1]));
    ASSERT_TRUE(editor.Keys(L"End"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 11"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    // Closing one view leaves the document to the other.
    ASSERT_TRUE(editor.Keys(L"Alt+Left"));
    ASSERT_TRUE(WaitForPaneCount(1));
    EXPECT_TRUE(Modify(L"a.txt"));
}
