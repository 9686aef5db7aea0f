#include "viewbase/ShownRows.h"

#include <gtest/gtest.h>

namespace {

constexpr ShownRows rows = {10, 5}; // 10 to 14 in whole, 15 in part

TEST(ShownRows, HoldTheRowsThatFitInWhole) {
    EXPECT_FALSE(rows.Holds(9));
    EXPECT_TRUE(rows.Holds(10));
    EXPECT_TRUE(rows.Holds(14));
    EXPECT_FALSE(rows.Holds(15));
    EXPECT_FALSE(rows.Holds(UINT64_MAX));
}

TEST(ShownRows, ScrollNoFurtherThanItTakesToSeeARow) {
    EXPECT_EQ(rows.TopToShow(3), 3u);
    EXPECT_EQ(rows.TopToShow(10), 10u);
    EXPECT_EQ(rows.TopToShow(14), 10u);
    EXPECT_EQ(rows.TopToShow(15), 11u);
    EXPECT_EQ(rows.TopToShow(UINT64_MAX), UINT64_MAX - 4);
}

TEST(ShownRows, AreOneInAWindowTooLowForOne) {
    constexpr ShownRows low = {10, 0};
    EXPECT_EQ(low.CountOrOne(), 1u);
    EXPECT_TRUE(low.Holds(10));
    EXPECT_EQ(low.TopToShow(11), 11u);
}

TEST(ShownRows, AreTouchedByTheirPixels) {
    EXPECT_EQ(rows.Touched(0, 1, 16), (RowRange{10, 10}));
    EXPECT_EQ(rows.Touched(15, 16, 16), (RowRange{10, 10}));
    EXPECT_EQ(rows.Touched(15, 17, 16), (RowRange{10, 11}));
    EXPECT_EQ(rows.Touched(32, 64, 16), (RowRange{12, 13}));
    EXPECT_EQ(rows.Touched(-40, 16, 16), (RowRange{10, 10})) << "above the window";
}

TEST(ShownRows, AreAllTouchedWithTheOneSeenInPartByNoPixels) {
    EXPECT_EQ(rows.Touched(0, 0, 16), (RowRange{10, 15}));
    EXPECT_EQ(rows.Touched(64, 32, 16), (RowRange{10, 15}));
}

} // namespace
