// A split leaves each half room for a character beside what stands before the text.
#include "app/OpenFiles.h"
#include "binary/win32/HexView.h"
#include "resource.h"
#include "support/ScratchFolder.h"
#include "view/OwnFrameTest.h"

namespace {

class FrameSplitTest : public OwnFrameTest {
protected:
    void SetUp() override { ASSERT_NO_FATAL_FAILURE(OwnFrameTest::SetUp()); }

    std::vector<LONG> PaneWidths() const {
        std::vector<LONG> widths;
        HWND pane = nullptr;
        while ((pane = FindWindowExW(main->Window(), pane, L"OrvaneVWnd", nullptr)) != nullptr) {
            RECT client = {};
            GetClientRect(pane, &client);
            widths.push_back(client.right);
        }
        return widths;
    }
    // What is left of half the frame for a pane's client area.
    LONG HalfWidth() const {
        RECT client = {};
        GetClientRect(main->Window(), &client);
        return client.right / 2 - 1 - 2 * GetSystemMetrics(SM_CXEDGE) - GetSystemMetrics(SM_CXVSCROLL);
    }
    // Splits a frame of every width around the one at which a half has just enough room, and expects it to be
    // refused below that.
    void ExpectSplitsWithRoom(int textLeft) const {
        const LONG least = textLeft + Average();
        int refused = 0;
        int split = 0;
        // Two borders of the frame and two scroll bars fit in between.
        const int start = 2 * least + 30;
        for (int width = start; width < start + 70; ++width) {
            SetWindowPos(main->Window(), nullptr, 0, 0, width, 300, SWP_NOMOVE | SWP_NOZORDER);
            Command(IDM_SPLIT_VERTICALLY);
            const std::vector<LONG> widths = PaneWidths();
            const bool hasRoom = HalfWidth() >= least;
            ASSERT_EQ(widths.size(), hasRoom ? 2u : 1u) << width;
            for (const LONG pane : widths) {
                if (hasRoom) {
                    EXPECT_GE(pane, least) << width;
                }
            }
            ++(hasRoom ? split : refused);
            Command(IDM_CLOSE_PANE);
        }
        EXPECT_GT(refused, 0);
        EXPECT_GT(split, 0);
    }

    ScratchFolder folder;
};

TEST_F(FrameSplitTest, NoHalfIsTooNarrowForItsLineNumbersAndACharacter) {
    UseSettings(u"ShowLineNumbers=1\nMarginWidth=20");
    main->Commands().NewDocument();
    ExpectSplitsWithRoom(7 * Average() + 20);
}

TEST_F(FrameSplitTest, NoHalfIsTooNarrowForItsOffsetsAndACharacter) {
    UseSettings(u"MarginWidth=20");
    ASSERT_TRUE(OpenBinaryArgument(main->Commands(), folder.Write("data.bin", std::string(100000, 'x')).c_str()));
    ExpectSplitsWithRoom(6 * Average() + 20); // 100000 is 186A0
}

} // namespace
