#include "app/ScreenBatch.h"
#include "core/app/FakePanes.h"

namespace {

class ScreenBatchTest : public ::testing::Test {
protected:
    void AskForAll() {
        batch.LayOut();
        batch.RefreshTitle();
        batch.RefreshStatus();
    }
    void ExpectDone(int times) const {
        EXPECT_EQ(screen.layouts, times);
        EXPECT_EQ(screen.titles, times);
        EXPECT_EQ(screen.statuses, times);
    }

    FakeFrameDisplay screen;
    ScreenBatch batch{screen};
};

TEST_F(ScreenBatchTest, OutsideOfABatchAllIsDoneAtOnce) {
    AskForAll();
    ExpectDone(1);
    EXPECT_EQ(screen.redrawChanges, 0);
}

TEST_F(ScreenBatchTest, InABatchAllIsDoneOnceAtTheEndOfTheOutermost) {
    batch.Begin();
    AskForAll();
    batch.Begin();
    AskForAll();
    EXPECT_FALSE(batch.End());
    EXPECT_TRUE(batch.IsOpen());
    ExpectDone(0);
    EXPECT_FALSE(screen.draws);
    EXPECT_TRUE(batch.End());
    EXPECT_FALSE(batch.IsOpen());
    ExpectDone(1);
    EXPECT_TRUE(screen.draws);
    EXPECT_EQ(screen.redrawChanges, 2);
}

TEST_F(ScreenBatchTest, WhatWasNotAskedForIsNotDone) {
    batch.Begin();
    batch.End();
    ExpectDone(0);
}

TEST_F(ScreenBatchTest, AQuestionInABatchShowsWhatWaits) {
    batch.Begin();
    AskForAll();
    batch.CatchUp();
    ExpectDone(1);
    EXPECT_TRUE(screen.draws);
    batch.ResumeBatch();
    EXPECT_FALSE(screen.draws);
    batch.End();
    ExpectDone(1);
    EXPECT_TRUE(screen.draws);
}

TEST_F(ScreenBatchTest, AQuestionOutsideOfABatchLeavesDrawingOn) {
    batch.CatchUp();
    batch.ResumeBatch();
    EXPECT_EQ(screen.redrawChanges, 0);
}

TEST_F(ScreenBatchTest, ALayoutThatCannotWaitIsNotDoneAgain) {
    batch.Begin();
    batch.LayOut();
    batch.LayOutNow();
    EXPECT_EQ(screen.layouts, 1);
    batch.End();
    EXPECT_EQ(screen.layouts, 1);
}

} // namespace
