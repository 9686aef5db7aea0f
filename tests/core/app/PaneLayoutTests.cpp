#include "core/app/PaneTestSupport.h"
#include "support/FailureInjection.h"

#include <array>

namespace {

bool operator==(const PixelRect& rect, const std::array<int, 4>& expected) {
    return std::array<int, 4>{rect.x, rect.y, rect.width, rect.height} == expected;
}

TEST(PaneLayout, TheFirstPaneCoversEverything) {
    const TestLayout layout;
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
    EXPECT_EQ(layout.Head()->number, 8192u);
}

TEST(PaneLayout, AVerticalSplitPutsTheNewPaneIntoTheRightHalf) {
    TestLayout layout;
    Pane* made = layout.Split(layout.Head(), true);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Half, Whole}, {Half, 0, Half, Whole}}));
    EXPECT_EQ(made, PaneAt(layout, 1));
    EXPECT_EQ(made->number, 8193u);
}

TEST(PaneLayout, AHorizontalSplitPutsTheNewPaneIntoTheLowerHalf) {
    TestLayout layout;
    layout.Split(layout.Head(), false);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Half}, {0, Half, Whole, Half}}));
}

TEST(PaneLayout, SplittingTwiceHalvesOnlyTheActivePane) {
    TestLayout layout;
    layout.Split(layout.Head(), true);
    layout.Split(layout.Head(), true);
    EXPECT_EQ(layout.Places(),
              (std::vector<Fraction>{{0, 0, Quarter, Whole}, {Half, 0, Half, Whole}, {Quarter, 0, Quarter, Whole}}));
}

TEST(PaneLayout, HalvesAreRoundedDown) {
    TestLayout layout;
    layout.Set({{10, 20, 7, 5}});
    layout.Split(layout.Head(), true);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{10, 20, 3, 5}, {13, 20, 3, 5}}));
    layout.Split(layout.Head(), false);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{10, 20, 3, 2}, {13, 20, 3, 5}, {10, 22, 3, 2}}));
}

TEST(PaneLayout, APaneOfOneUnitIsNotHalved) {
    TestLayout layout;
    layout.Set({{0, 0, 1, 2}});
    EXPECT_EQ(layout.Split(layout.Head(), true), nullptr);
    EXPECT_NE(layout.Split(layout.Head(), false), nullptr);
    EXPECT_EQ(layout.Split(layout.Head(), false), nullptr);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, 1, 1}, {0, 1, 1, 1}}));
}

TEST(PaneLayout, APaneWithoutRoomForACharacterIsNotSplit) {
    TestLayout layout;
    const PaneRoom room = {{400, 300}, 40, 30};
    EXPECT_EQ(layout.MakeHalf(*layout.Head(), true, {{81, 300}, 40, 30}), nullptr); // 40 less the gap
    Pane* made = layout.MakeHalf(*layout.Head(), true, {{82, 300}, 40, 30});
    EXPECT_NE(made, nullptr);
    delete made;
    int splits = 0;
    for (Pane* half; (half = layout.MakeHalf(*layout.Head(), false, room)) != nullptr; ++splits)
        layout.Adopt(half, layout.Head(), false);
    EXPECT_EQ(splits, 3);                                                            // 149, 74, 36 and no 17
    EXPECT_EQ(layout.MakeHalf(*layout.Head(), true, {{400, 300}, 40, 37}), nullptr); // too low already
}

TEST(PaneLayout, AMadePaneThatIsNotAdoptedChangesNothing) {
    TestLayout layout;
    Pane* made = layout.MakeHalf(*layout.Head(), true, {});
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Whole, Whole}}));
    delete made;
    EXPECT_EQ(layout.Split(layout.Head(), true)->number, 8194u); // numbers are not reused
}

TEST(PaneLayout, WithoutMemoryNoPaneIsMade) {
    TestLayout layout;
    const uint64_t failures = FailEachAllocation([&] {
        Pane* made = layout.MakeHalf(*layout.Head(), true, {});
        const bool done = made != nullptr;
        delete made;
        return done;
    });
    EXPECT_EQ(failures, 1u);
    EXPECT_EQ(layout.Places().size(), 1u);
}

TEST(PaneLayout, NextAndPreviousWrapInOrderOfCreation) {
    TestLayout layout;
    Pane* a = layout.Head();
    EXPECT_EQ(layout.Next(*a), a);
    EXPECT_EQ(layout.Previous(*a), a);
    Pane* b = layout.Split(a, true);
    Pane* c = layout.Split(a, false); // lies between a and b on the screen, not in the list
    EXPECT_EQ(layout.Next(*a), b);
    EXPECT_EQ(layout.Next(*c), a);
    EXPECT_EQ(layout.Previous(*a), c);
    EXPECT_EQ(layout.Previous(*c), b);
}

TEST(PaneRectangle, ALonePaneFillsTheArea) {
    const TestLayout layout;
    EXPECT_TRUE(PaneLayout::Rectangle(*layout.Head(), {801, 601}) == (std::array{0, 0, 801, 601}));
}

TEST(PaneRectangle, NeighboursAreTwoPixelsApart) {
    TestLayout layout;
    layout.Split(layout.Head(), true);
    layout.Split(layout.Head(), false);
    EXPECT_TRUE(PaneLayout::Rectangle(*PaneAt(layout, 0), {800, 600}) == (std::array{0, 0, 399, 299}));
    EXPECT_TRUE(PaneLayout::Rectangle(*PaneAt(layout, 1), {800, 600}) == (std::array{401, 0, 399, 600}));
    EXPECT_TRUE(PaneLayout::Rectangle(*PaneAt(layout, 2), {800, 600}) == (std::array{0, 301, 399, 299}));
}

TEST(PaneRectangle, ProductsAreCut) {
    TestLayout layout;
    layout.Split(layout.Head(), true);
    // 32768 * 801 / 65536 is 400.5.
    EXPECT_TRUE(PaneLayout::Rectangle(*PaneAt(layout, 0), {801, 1}) == (std::array{0, 0, 399, 1}));
    EXPECT_TRUE(PaneLayout::Rectangle(*PaneAt(layout, 1), {801, 1}) == (std::array{401, 0, 399, 1}));
}

TEST(PaneRectangle, NoSideIsEverNegative) {
    TestLayout layout;
    layout.Split(layout.Head(), true);
    for (const uint32_t size : {0u, 1u, 2u}) {
        for (size_t i = 0; i < 2; ++i) {
            const PixelRect rect = PaneLayout::Rectangle(*PaneAt(layout, i), {size, size});
            EXPECT_GE(rect.width, 0);
            EXPECT_EQ(rect.height, static_cast<int>(size));
        }
    }
}

class PaneDragTest : public ::testing::Test {
protected:
    // Positions are pixels of an area of 1024 by 1024, in which a pixel is 64 units.
    static constexpr uint32_t Size = 1024;
    uint32_t Edges(int32_t x, int32_t y) { return layout.drag.EdgesAt({x, y}, {Size, Size}); }
    void DragTo(int32_t fromX, int32_t fromY, int32_t x, int32_t y) {
        layout.drag.Begin({fromX, fromY}, {Size, Size});
        layout.drag.MoveTo({x, y}, {Size, Size});
        layout.drag.End();
    }
    static constexpr uint32_t Units(uint32_t pixels) { return pixels * 64; }

    TestLayout layout;
};

TEST_F(PaneDragTest, EdgesAreHitWithinTwoPixels) {
    layout.Split(layout.Head(), true); // at pixel 512
    for (const int32_t x : {510, 511, 512, 513, 514}) EXPECT_EQ(Edges(x, 300), PaneEdge::Left | PaneEdge::Right) << x;
    EXPECT_EQ(Edges(509, 300), 0u);
    EXPECT_EQ(Edges(515, 300), 0u);
}

TEST_F(PaneDragTest, RowsAndCrossingsAreHit) {
    layout.Split(layout.Split(layout.Head(), true), false); // the right half is cut at 512
    EXPECT_EQ(Edges(700, 512), PaneEdge::Top | PaneEdge::Bottom);
    EXPECT_EQ(Edges(300, 512), 0u);
    EXPECT_EQ(Edges(512, 100), PaneEdge::Left | PaneEdge::Right);
    EXPECT_EQ(Edges(513, 511), PaneEdge::Left | PaneEdge::Top | PaneEdge::Right | PaneEdge::Bottom);
}

TEST_F(PaneDragTest, TheBordersOfTheAreaAreNotHit) {
    EXPECT_EQ(Edges(0, 0), 0u);
    layout.Split(layout.Head(), true);
    for (const int32_t at : {-1, 0, 1, 1023, 1024}) {
        EXPECT_EQ(Edges(at, 300), 0u) << at;
        EXPECT_EQ(Edges(300, at), 0u) << at;
    }
}

TEST_F(PaneDragTest, AnEmptyAreaHasNoEdges) {
    layout.Split(layout.Head(), true);
    EXPECT_EQ(layout.drag.EdgesAt({0, 0}, {0, 0}), 0u);
    EXPECT_EQ(layout.drag.Begin({0, 0}, {0, 100}), 0u);
    layout.drag.MoveTo({0, 0}, {0, 0});
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Half, Whole}, {Half, 0, Half, Whole}}));
}

TEST_F(PaneDragTest, BothSidesOfAGapFollowThePointer) {
    layout.Split(layout.Head(), true);
    EXPECT_EQ(layout.drag.Begin({511, 300}, {Size, Size}), PaneEdge::Left | PaneEdge::Right);
    layout.drag.MoveTo({600, 900}, {Size, Size});
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Units(600), Whole}, {Units(600), 0, Units(424), Whole}}));
    layout.drag.MoveTo({200, 0}, {Size, Size});
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Units(200), Whole}, {Units(200), 0, Units(824), Whole}}));
    layout.drag.End();
    layout.drag.MoveTo({700, 0}, {Size, Size}); // the drag is over
    EXPECT_EQ(layout.Head()->width, Units(200));
}

TEST_F(PaneDragTest, StopsAtThirtyTwoPixels) {
    layout.Split(layout.Head(), true);
    DragTo(512, 300, 3, 300);
    EXPECT_EQ(layout.Head()->width, Units(32));
    DragTo(32, 300, 2000, 300);
    EXPECT_EQ(PaneAt(layout, 1)->width, Units(32));
    EXPECT_EQ(PaneAt(layout, 1)->left, Units(992));
}

TEST_F(PaneDragTest, PositionsOutsideCountAsZero) {
    layout.Split(layout.Head(), false);
    DragTo(300, 512, -50, -50);
    EXPECT_EQ(layout.Head()->height, Units(32));
    EXPECT_EQ(layout.Head()->width, Whole);
}

TEST_F(PaneDragTest, EveryPaneOfADragKeepsItsMinimum) {
    // Left column in two rows, right column whole; a vertical drag in the crossing moves three panes.
    layout.Set(
        {{0, 0, Half, Half}, {0, Half, Half, Half}, {Half, 0, Quarter, Whole}, {Half + Quarter, 0, Quarter, Whole}});
    DragTo(512, 512, 1000, 512);
    EXPECT_EQ(PaneAt(layout, 2)->left, Units(768 - 32));
    EXPECT_EQ(PaneAt(layout, 0)->width, Units(768 - 32));
    EXPECT_EQ(PaneAt(layout, 1)->width, Units(768 - 32));
    EXPECT_EQ(PaneAt(layout, 3)->left, Half + Quarter);
}

// The pointer touches only the upper pane's edge, but the long pane beside it cannot follow alone.
TEST_F(PaneDragTest, TheWholeSideOfALongPaneMoves) {
    layout.Set({{0, 0, Half, Half}, {0, Half, Half, Half}, {Half, 0, Half, Whole}});
    DragTo(512, 100, 300, 100);
    EXPECT_EQ(layout.Places(),
              (std::vector<Fraction>{
                  {0, 0, Units(300), Half}, {0, Half, Units(300), Half}, {Units(300), 0, Units(724), Whole}}));
}

TEST_F(PaneDragTest, CollinearGapsThatMeetAtACrossingMoveApart) {
    layout.Set({{0, 0, Half, Half}, {Half, 0, Half, Half}, {0, Half, Half, Half}, {Half, Half, Half, Half}});
    DragTo(512, 100, 300, 100);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Units(300), Half},
                                                      {Units(300), 0, Units(724), Half},
                                                      {0, Half, Half, Half},
                                                      {Half, Half, Half, Half}}));
}

TEST_F(PaneDragTest, ACrossingMovesBothWays) {
    layout.Set({{0, 0, Half, Half}, {Half, 0, Half, Half}, {0, Half, Half, Half}, {Half, Half, Half, Half}});
    DragTo(512, 512, 300, 700);
    const uint32_t x = Units(300);
    const uint32_t y = Units(700);
    EXPECT_EQ(layout.Places(),
              (std::vector<Fraction>{
                  {0, 0, x, y}, {x, 0, Whole - x, y}, {0, y, x, Whole - y}, {x, y, Whole - x, Whole - y}}));
}

TEST_F(PaneDragTest, PanesThatAreTooSmallAlreadyDoNotMove) {
    layout.Set({{0, 0, Units(10), Whole}, {Units(10), 0, Units(20), Whole}, {Units(30), 0, Units(994), Whole}});
    const std::vector<Fraction> before = layout.Places();
    DragTo(10, 300, 20, 300);
    EXPECT_EQ(layout.Places(), before);
}

TEST_F(PaneDragTest, AnEmptyPlaceIsClosedByADragFromEitherSide) {
    layout.Set({{0, 0, Quarter, Whole}, {Half, 0, Half, Whole}});
    EXPECT_EQ(Edges(256, 300), PaneEdge::Right);
    EXPECT_EQ(Edges(512, 300), PaneEdge::Left);
    EXPECT_EQ(Edges(400, 300), 0u);
    DragTo(256, 300, 400, 300);
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Units(400), Whole}, {Half, 0, Half, Whole}}));
    DragTo(400, 300, 100, 300); // never away from it
    EXPECT_EQ(layout.Head()->width, Units(400));
    DragTo(512, 300, 100, 300); // up to the other pane
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Units(400), Whole}, {Units(400), 0, Units(624), Whole}}));
    DragTo(400, 300, 700, 300); // from then on both move
    EXPECT_EQ(layout.Places(), (std::vector<Fraction>{{0, 0, Units(700), Whole}, {Units(700), 0, Units(324), Whole}}));
}

TEST_F(PaneDragTest, NoPlaceIsEmptiedByADrag) {
    // Nothing lies below the left pane, so the right one may not draw back from there.
    layout.Set({{0, 0, Half, Half}, {Half, 0, Half, Whole}});
    DragTo(512, 100, 700, 100);
    EXPECT_EQ(PaneAt(layout, 1)->left, Half);
    DragTo(512, 100, 300, 100);
    EXPECT_EQ(PaneAt(layout, 1)->left, Units(300));
}

TEST_F(PaneDragTest, SliversOfRoundingStopNothing) {
    // One unit is missing between the upper panes, and one between the rows on the left.
    layout.Set({{0, 0, Half - 1, Half - 1}, {0, Half, Half - 1, Half}, {Half, 0, Half, Whole}});
    DragTo(512, 100, 700, 100);
    EXPECT_EQ(layout.Places(),
              (std::vector<Fraction>{
                  {0, 0, Units(700), Half}, {0, Half, Units(700), Half}, {Units(700), 0, Units(324), Whole}}));
    DragTo(300, 512, 300, 600);
    EXPECT_EQ(PaneAt(layout, 0)->height, Units(600));
    EXPECT_EQ(PaneAt(layout, 1)->top, Units(600));
}

TEST_F(PaneDragTest, ASplitOrCloseEndsTheDrag) {
    layout.Split(layout.Head(), true);
    layout.drag.Begin({512, 300}, {Size, Size});
    layout.Split(layout.Head(), false);
    layout.drag.MoveTo({300, 300}, {Size, Size});
    EXPECT_EQ(layout.Head()->width, Half);
    layout.drag.Begin({512, 300}, {Size, Size});
    Pane* heir = nullptr;
    ASSERT_TRUE(layout.Close(PaneAt(layout, 2), heir));
    layout.drag.MoveTo({300, 300}, {Size, Size});
    EXPECT_EQ(layout.Head()->width, Half);
}

} // namespace
