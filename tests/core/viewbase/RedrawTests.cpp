#include "support/FakeSurface.h"
#include "viewbase/Redraw.h"

#include <gtest/gtest.h>

namespace {

class RedrawTest : public ::testing::Test {
protected:
    using Strips = std::vector<std::pair<int32_t, int32_t>>;

    RedrawTest() { surface.SetFont({16, 8, 8}); }

    FakeSurface surface;
    Redraw redraw{surface};
};

TEST_F(RedrawTest, InvalidatesTheStripOfTheRows) {
    redraw.InvalidateRows(12, 14, {10, 5});
    EXPECT_EQ(surface.strips, (Strips{{32, 80}}));
}

TEST_F(RedrawTest, TheRowsMayComeInEitherOrder) {
    redraw.InvalidateRows(14, 12, {10, 5});
    EXPECT_EQ(surface.strips, (Strips{{32, 80}}));
}

TEST_F(RedrawTest, OnlyShownRowsAreInvalidatedTheLastOneInPart) {
    redraw.InvalidateRows(0, UINT64_MAX, {10, 5});
    EXPECT_EQ(surface.strips, (Strips{{0, 96}}));
    surface.strips.clear();
    redraw.InvalidateRows(15, 15, {10, 5});
    EXPECT_EQ(surface.strips, (Strips{{80, 96}}));
    surface.strips.clear();
    redraw.InvalidateRows(16, 20, {10, 5});
    redraw.InvalidateRows(0, 9, {10, 5});
    EXPECT_TRUE(surface.strips.empty());
}

TEST_F(RedrawTest, WhileSuspendedAllIsNotedAndThenInvalidatedOnce) {
    redraw.Suspend();
    redraw.InvalidateAll();
    redraw.InvalidateRows(0, 1, {0, 5});
    EXPECT_EQ(surface.allInvalidations, 0);
    EXPECT_TRUE(surface.strips.empty());
    EXPECT_FALSE(redraw.Resume());
    EXPECT_EQ(surface.allInvalidations, 1);
    redraw.InvalidateAll();
    EXPECT_EQ(surface.allInvalidations, 2);
}

TEST_F(RedrawTest, SuspensionsNest) {
    redraw.Suspend();
    redraw.Suspend();
    redraw.InvalidateAll();
    EXPECT_FALSE(redraw.Resume());
    EXPECT_TRUE(redraw.IsSuspended());
    EXPECT_EQ(surface.allInvalidations, 0);
    EXPECT_FALSE(redraw.Resume());
    EXPECT_FALSE(redraw.IsSuspended());
    EXPECT_EQ(surface.allInvalidations, 1);
}

TEST_F(RedrawTest, WithoutARequestNothingIsInvalidated) {
    redraw.Suspend();
    EXPECT_FALSE(redraw.Resume());
    EXPECT_FALSE(redraw.Resume()); // one too many is harmless
    EXPECT_EQ(surface.allInvalidations, 0);
    EXPECT_FALSE(redraw.IsSuspended());
}

TEST_F(RedrawTest, ACaretIsPlacedWhenTheLastSuspensionEnds) {
    EXPECT_FALSE(redraw.DefersCaret());
    redraw.Suspend();
    redraw.Suspend();
    EXPECT_TRUE(redraw.DefersCaret());
    EXPECT_FALSE(redraw.Resume());
    EXPECT_TRUE(redraw.Resume());
    redraw.Suspend();
    EXPECT_FALSE(redraw.Resume()); // only once
}

} // namespace
