#include "support/FakeSurface.h"
#include "viewbase/Scrolling.h"

#include <gtest/gtest.h>

namespace {

// 100 rows in a window of 10, the first one shown being row 50.
constexpr ScrollState Middle = {100, 10, 50};

TEST(ScrollState, OneRowBelowTheLastOneIsReached) {
    EXPECT_EQ(Middle.Farthest(), 91u);
    EXPECT_EQ((ScrollState{10, 10, 0}).Farthest(), 1u);
    EXPECT_EQ((ScrollState{9, 10, 0}).Farthest(), 0u);
    EXPECT_EQ((ScrollState{0, 10, 0}).Farthest(), 0u);
}

TEST(ScrollState, RequestsLeadWhereTheBarSays) {
    EXPECT_EQ(Middle.After(ScrollRequest::LineBack, 1, 0), 49u);
    EXPECT_EQ(Middle.After(ScrollRequest::LineForward, 1, 0), 51u);
    EXPECT_EQ(Middle.After(ScrollRequest::LineForward, 8, 0), 58u);
    EXPECT_EQ(Middle.After(ScrollRequest::PageBack, 1, 0), 40u);
    EXPECT_EQ(Middle.After(ScrollRequest::PageForward, 1, 0), 60u);
    EXPECT_EQ(Middle.After(ScrollRequest::Track, 1, 70), 70u);
    EXPECT_EQ(Middle.After(ScrollRequest::Minimum, 1, 0), 0u);
    EXPECT_EQ(Middle.After(ScrollRequest::Maximum, 1, 0), 91u);
}

TEST(ScrollState, RequestsEndAtTheEndsOfTheBar) {
    EXPECT_EQ((ScrollState{100, 10, 0}).After(ScrollRequest::LineBack, 1, 0), 0u);
    EXPECT_EQ((ScrollState{100, 10, 5}).After(ScrollRequest::PageBack, 1, 0), 0u);
    EXPECT_EQ((ScrollState{100, 10, 91}).After(ScrollRequest::LineForward, 1, 0), 91u);
    EXPECT_EQ(Middle.After(ScrollRequest::Track, 1, 99), 91u);
    EXPECT_EQ(Middle.After(ScrollRequest::Track, 1, -5), 0u);
}

TEST(ScrollState, WhatOnlyKeysReachCountsAsTheEndOfTheBar) {
    EXPECT_EQ((ScrollState{100, 10, 99}).After(ScrollRequest::LineBack, 1, 0), 90u);
    EXPECT_EQ((ScrollState{100, 10, 99}).After(ScrollRequest::PageForward, 1, 0), 91u);
}

TEST(ScrollState, TheWheelLeavesTheLastRowAtTheWindowsEnd) {
    EXPECT_EQ(Middle.Moved(3), 53u);
    EXPECT_EQ(Middle.Moved(-3), 47u);
    EXPECT_EQ(Middle.Moved(1000), 91u);
    EXPECT_EQ(Middle.Moved(-1000), 0u);
    EXPECT_EQ((ScrollState{100, 10, 99}).Moved(-3), 91u);
    EXPECT_EQ((ScrollState{5, 10, 0}).Moved(3), 0u);
}

TEST(ScrollState, TheBarIsExactAsLongAsItsBitsSuffice) {
    EXPECT_EQ(Middle.Bar(), (ScrollBar{100, 10, 50}));
    EXPECT_EQ((ScrollState{INT32_MAX, 10, INT32_MAX - 1}).Bar(), (ScrollBar{INT32_MAX, 10, INT32_MAX - 1}));
}

TEST(ScrollState, ALargeCountMakesTheBarCoarse) {
    constexpr ScrollState Large = {uint64_t{1} << 36, 64, uint64_t{1} << 35};
    const ScrollBar bar = Large.Bar();
    EXPECT_EQ(bar.maximum, 1 << 30);
    EXPECT_EQ(bar.page, 1);
    EXPECT_EQ(bar.position, 1 << 29);
    EXPECT_EQ(Large.After(ScrollRequest::Track, 1, 1 << 28), uint64_t{1} << 34);
    EXPECT_EQ(Large.After(ScrollRequest::Track, 1, bar.maximum), Large.Farthest()); // the very end is reached
    EXPECT_EQ(Large.After(ScrollRequest::LineForward, 1, 0), (uint64_t{1} << 35) + 1);
}

TEST(ScrollBars, OnlyAChangeIsPassedOn) {
    FakeSurface surface;
    ScrollBars bars(surface);
    bars.Show(ScrollAxis::Vertical, {0, 0, 0});
    bars.Show(ScrollAxis::Vertical, {0, 0, 0});
    EXPECT_EQ(surface.barsSet, std::vector<ScrollAxis>{ScrollAxis::Vertical});
    bars.Show(ScrollAxis::Horizontal, {0, 0, 0});
    EXPECT_EQ(surface.barsSet.size(), 2u);
    bars.Show(ScrollAxis::Vertical, {9, 1, 2});
    EXPECT_EQ(surface.barsSet.size(), 3u);
    EXPECT_EQ(surface.bars[0], (ScrollBar{9, 1, 2}));
}

TEST(ScrollBars, AnotherWindowIsSentAll) {
    FakeSurface surface;
    ScrollBars bars(surface);
    bars.Show(ScrollAxis::Vertical, {9, 1, 2});
    bars.Forget();
    bars.Show(ScrollAxis::Vertical, {9, 1, 2});
    EXPECT_EQ(surface.barsSet.size(), 2u);
}

TEST(ScrollBars, WithoutAWindowNothingIsSentNorTakenAsSent) {
    FakeSurface surface;
    ScrollBars bars(surface);
    surface.window = false;
    bars.Show(ScrollAxis::Vertical, {9, 1, 2});
    EXPECT_TRUE(surface.barsSet.empty());
    surface.window = true;
    bars.Show(ScrollAxis::Vertical, {9, 1, 2});
    EXPECT_EQ(surface.barsSet.size(), 1u);
}

} // namespace
