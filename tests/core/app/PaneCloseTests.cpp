#include "core/app/PaneTestSupport.h"

// Who takes over the area of a closed pane.

namespace {

class PaneCloseTest : public ::testing::Test {
protected:
    // Closes the pane at an index and returns the index that its first heir then has, -1 for none.
    int Close(size_t index) {
        Pane* heir = nullptr;
        EXPECT_TRUE(layout.Close(PaneAt(layout, index), heir));
        int place = 0;
        for (Pane* pane = layout.Head(); pane && pane != heir; pane = pane->next) ++place;
        return heir ? place : -1;
    }

    TestLayout layout;
};

TEST_F(PaneCloseTest, TheOnlyPaneStays) {
    Pane* heir = layout.Head();
    EXPECT_FALSE(layout.Close(layout.Head(), heir));
    EXPECT_EQ(heir, nullptr);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
}

TEST_F(PaneCloseTest, ThePaneBelowTakesOver) {
    layout.Split(layout.Head(), false);
    EXPECT_EQ(Close(0), 0);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
}

TEST_F(PaneCloseTest, ThePaneAboveTakesOver) {
    layout.Split(layout.Head(), false);
    EXPECT_EQ(Close(1), 0);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
}

TEST_F(PaneCloseTest, ThePaneToTheRightTakesOver) {
    layout.Split(layout.Head(), true);
    EXPECT_EQ(Close(0), 0);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
}

TEST_F(PaneCloseTest, ThePaneToTheLeftTakesOver) {
    layout.Split(layout.Head(), true);
    EXPECT_EQ(Close(1), 0);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
}

TEST_F(PaneCloseTest, BelowWinsOverAboveRightAndLeft) {
    // A 3 by 3 grid whose middle pane goes.
    std::vector<Fraction> grid;
    for (const uint32_t top : {0u, Quarter, Half})
        for (const uint32_t left : {0u, Quarter, Half}) grid.push_back({left, top, Quarter, Quarter});
    layout.Set(grid);
    EXPECT_EQ(Close(4), 6);
    EXPECT_EQ(PaneAt(layout, 6)->top, Quarter);
    EXPECT_EQ(PaneAt(layout, 6)->height, Half);
}

TEST_F(PaneCloseTest, AboveWinsOverRightAndLeft) {
    layout.Set({{0, Half, Quarter, Half},
                {Quarter, 0, Quarter, Half},
                {Quarter, Half, Quarter, Half},
                {Half, Half, Half, Half}});
    EXPECT_EQ(Close(2), 1);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{
                                   {0, Half, Quarter, Half}, {Quarter, 0, Quarter, Whole}, {Half, Half, Half, Half}}));
}

TEST_F(PaneCloseTest, RightWinsOverLeft) {
    layout.Set({{0, 0, Quarter, Whole}, {Quarter, 0, Quarter, Whole}, {Half, 0, Half, Whole}});
    EXPECT_EQ(Close(1), 1);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Quarter, Whole}, {Quarter, 0, Half + Quarter, Whole}}));
}

TEST_F(PaneCloseTest, AnExactNeighbourOfALaterKindWinsOverSmallerOnesBelow) {
    layout.Set({{0, 0, Half, Half}, {Half, 0, Half, Half}, {0, Half, Quarter, Half}, {Quarter, Half, Quarter, Half}});
    EXPECT_EQ(Close(0), 0);
    EXPECT_EQ(PaneAt(layout, 0)->left, 0u);
    EXPECT_EQ(PaneAt(layout, 0)->width, Whole);
    EXPECT_EQ(PaneAt(layout, 1)->top, Half);
}

TEST_F(PaneCloseTest, AllSmallerNeighboursOfAKindShareTheArea) {
    layout.Set({{0, 0, Whole, Half}, {Half, Half, Half, Half}, {0, Half, Half, Half}});
    EXPECT_EQ(Close(0), 0);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{Half, 0, Half, Whole}, {0, 0, Half, Whole}}));
}

TEST_F(PaneCloseTest, ASmallerNeighbourLeavesTheRestUncovered) {
    layout.Set({{0, 0, Half, Half}, {0, Half, Quarter, Half}, {Half, 0, Quarter, Whole}, {Half + Quarter, 0, 1, 1}});
    EXPECT_EQ(Close(0), 0);
    EXPECT_EQ(FractionOf(*PaneAt(layout, 0)), (Fraction{0, 0, Quarter, Whole}));
    EXPECT_EQ(FractionOf(*PaneAt(layout, 1)), (Fraction{Half, 0, Quarter, Whole}));
}

// The lower panes meet at a quarter, the upper ones at the half: the second lower one is no wider than the
// closed pane but reaches under the pane beside it, which makes room.
TEST_F(PaneCloseTest, ANeighbourThatSticksOutTakesOverToo) {
    layout.Set({{0, 0, Half, Half},
                {Half, 0, Half, Quarter},
                {Half, Quarter, Half, Quarter},
                {0, Half, Quarter, Half},
                {Quarter, Half, Half, Half},
                {Half + Quarter, Half, Quarter, Half}});
    EXPECT_EQ(Close(0), 2);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{Half + Quarter, 0, Quarter, Quarter},
                                                      {Half + Quarter, Quarter, Quarter, Quarter},
                                                      {0, 0, Quarter, Whole},
                                                      {Quarter, 0, Half, Whole},
                                                      {Half + Quarter, Half, Quarter, Half}}));
}

TEST_F(PaneCloseTest, AWiderNeighbourBelowDoesNotTakeOver) {
    layout.Set({{0, 0, Half, Half}, {Half, 0, Half, Quarter}, {Half, Quarter, Half, Quarter}, {0, Half, Whole, Half}});
    EXPECT_EQ(Close(0), 0); // the panes to the right are not taller
    EXPECT_EQ(layout.Places(),
              (std::vector<Fraction>{{0, 0, Whole, Quarter}, {0, Quarter, Whole, Quarter}, {0, Half, Whole, Half}}));
}

// Only a corner touches.
TEST_F(PaneCloseTest, APaneThatIsNotBelowDoesNotTakeOver) {
    layout.Set({{0, 0, Half, Half},
                {Half, 0, Half, Half},
                {0, Half, Half + Quarter, Half},
                {Half + Quarter, Half, Quarter, Half}});
    EXPECT_EQ(Close(0), 0);
    EXPECT_EQ(FractionOf(*PaneAt(layout, 0)), (Fraction{0, 0, Whole, Half}));
    EXPECT_EQ(FractionOf(*PaneAt(layout, 2)), (Fraction{Half + Quarter, Half, Quarter, Half}));
}

TEST_F(PaneCloseTest, WithoutANeighbourTheAreaStaysEmpty) {
    layout.Set({{0, 0, Half, Half}, {Half, 0, Quarter, Whole}, {Half + Quarter, 0, Quarter, Whole}});
    EXPECT_EQ(Close(0), -1);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{Half, 0, Quarter, Whole}, {Half + Quarter, 0, Quarter, Whole}}));
}

TEST_F(PaneCloseTest, ThePaneThatIsLeftAloneFillsTheArea) {
    layout.Set({{0, 0, Half, Half}, {Half, 0, Half, Whole}});
    EXPECT_EQ(Close(0), -1);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
    layout.Set({{Quarter, Quarter, 7, 9}, {0, 0, Half - 3, 5}});
    EXPECT_EQ(Close(1), -1);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
}

} // namespace
