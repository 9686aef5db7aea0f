#include "core/app/PaneTestSupport.h"

// Empty places between panes: how they are prevented and how they are dragged shut.

namespace {

class PaneHoleTest : public ::testing::Test {
protected:
    void DragTo(int32_t fromX, int32_t fromY, int32_t x, int32_t y, uint32_t size) {
        layout.drag.Begin({fromX, fromY}, {size, size});
        layout.drag.MoveTo({x, y}, {size, size});
        layout.drag.End();
    }
    void Close(size_t index) {
        Pane* heir = nullptr;
        ASSERT_TRUE(layout.Close(PaneAt(layout, index), heir));
        ASSERT_NE(heir, nullptr);
    }
    void ExpectCovered() {
        EXPECT_FALSE(AnyOverlap(layout.Places())) << ::testing::PrintToString(layout.Places());
        EXPECT_EQ(Holes(layout.Places()), std::vector<Fraction>{}) << ::testing::PrintToString(layout.Places());
    }
    // Two panes, the gap between them dragged to a place, one of the two split and a pane closed. The
    // halves of an odd size leave a unit between them and the pane beside them.
    void SplitAfterADrag(bool vertical, int32_t place, size_t split, size_t closed) {
        constexpr uint32_t Size = 984;
        layout.Set({{0, 0, Whole, Whole}});
        layout.Split(layout.Head(), vertical);
        if (vertical)
            DragTo(492, 300, place, 300, Size);
        else
            DragTo(300, 492, 300, place, Size);
        layout.Split(PaneAt(layout, split), vertical);
        ExpectCovered();
        Close(closed);
        ExpectCovered();
        Close(0);
        EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
    }

    TestLayout layout;
};

TEST_F(PaneHoleTest, NoHoleAfterADragASplitAndACloseInAllPlaces) {
    for (const bool vertical : {true, false})
        for (int32_t place = 32; place < 952; ++place)
            for (const size_t split : {0u, 1u})
                for (const size_t closed : {0u, 1u, 2u})
                    ASSERT_NO_FATAL_FAILURE(SplitAfterADrag(vertical, place, split, closed)) << place;
}

// Each round halves an odd size and closes the half again.
TEST_F(PaneHoleTest, SplitsAndClosesDoNotAddUpSlivers) {
    layout.Set({{0, 0, 30001, Whole}, {30001, 0, Whole - 30001, Whole}});
    for (int round = 0; round < 100; ++round) {
        for (int i = 0; i < 8; ++i) layout.Split(PaneAt(layout, layout.Places().size() - 1), true);
        while (layout.Places().size() > 2) ASSERT_NO_FATAL_FAILURE(Close(layout.Places().size() - 1));
    }
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, 30001, Whole}, {30001, 0, Whole - 30001, Whole}}));
}

TEST_F(PaneHoleTest, ADragDoesNotLeaveSlivers) {
    layout.Set({{0, 0, 101, Whole}, {101, 0, Whole - 101, Half}, {101, Half, Whole - 101, Half}});
    layout.Split(layout.Head(), true);
    layout.drag.Begin({-9, -9}, {1024, 1024});
    layout.drag.End();
    EXPECT_EQ(PaneAt(layout, 3)->width, 51u);
}

// The panes around the middle are all longer than it, so none takes it over.
TEST_F(PaneHoleTest, AHoleBetweenLongerPanesIsDraggedShut) {
    constexpr uint32_t Third = Whole / 4;
    layout.Set({{0, 0, 3 * Third, Third},
                {3 * Third, 0, Third, 3 * Third},
                {Third, 3 * Third, 3 * Third, Third},
                {0, Third, Third, 3 * Third},
                {Third, Third, 2 * Third, 2 * Third}});
    Pane* heir = nullptr;
    ASSERT_TRUE(layout.Close(PaneAt(layout, 4), heir));
    EXPECT_EQ(heir, nullptr);
    EXPECT_EQ(Holes(layout.Places()).size(), 1u);
    DragTo(512, 256, 512, 768, 1024); // the upper one down to the lower one
    ExpectCovered();
}

TEST_F(PaneHoleTest, AHoleAtTheBorderIsDraggedShut) {
    layout.Set({{0, 0, Half, Half}, {Half, 0, Quarter, Half}, {0, Half, Whole, Half}});
    EXPECT_EQ(layout.drag.EdgesAt({768, 100}, {1024, 1024}), PaneEdge::Right);
    DragTo(768, 100, 1023, 100, 1024); // no pointer gets farther on a whole screen
    ExpectCovered();
    DragTo(1023, 100, 600, 100, 1024); // and it stays shut
    ExpectCovered();
    layout.Set({{0, Quarter, Half, Half + Quarter}, {Half, 0, Half, Whole}});
    EXPECT_EQ(layout.drag.EdgesAt({100, 256}, {1024, 1024}), PaneEdge::Top);
    layout.drag.Begin({100, 256}, {1024, 1024});
    layout.drag.MoveTo({100, 0}, {1024, 1024});
    layout.drag.MoveTo({100, 300}, {1024, 1024}); // nor is it opened again before the button is up
    layout.drag.End();
    ExpectCovered();
}

} // namespace
