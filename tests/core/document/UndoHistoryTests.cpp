#include "document/UndoHistory.h"

#include "document/StepSerial.h"
#include "support/FailureInjection.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {

using Serials = std::vector<uint32_t>;
using States = std::vector<uint32_t>;

struct Record final : UndoRecord {
    explicit Record(State initialState = State::InStore, int64_t characters = 0) : UndoRecord(initialState) {
        growth = characters;
        ++alive;
    }
    ~Record() override { --alive; }
    static inline int alive = 0;
};

struct UndoHistoryTest : testing::Test {
    ~UndoHistoryTest() override {
        history.Clear();
        EXPECT_EQ(Record::alive, 0) << "every record is freed";
    }
    Record* Push(UndoRecord::State state = UndoRecord::State::InStore, int64_t growth = 0) {
        auto* record = new Record(state, growth);
        history.Push(record);
        return record;
    }
    static States StatesOf(const UndoRecord* head) {
        States states;
        for (; head; head = head->next) states.push_back(static_cast<uint32_t>(head->state));
        return states;
    }

    UndoHistory history;
};

} // namespace

TEST_F(UndoHistoryTest, TheLatestRecordIsFirst) {
    const Record* first = Push();
    const Record* second = Push();
    EXPECT_EQ(history.UndoHead(), second);
    EXPECT_EQ(second->next, first);
    EXPECT_EQ(history.RedoHead(), nullptr);
}

TEST_F(UndoHistoryTest, AnUndoneRecordMovesOverAndBack) {
    const Record* record = Push();
    history.MoveHead(true);
    EXPECT_EQ(history.UndoHead(), nullptr);
    EXPECT_EQ(history.RedoHead(), record);
    history.MoveHead(false);
    EXPECT_EQ(history.UndoHead(), record);
    EXPECT_EQ(history.RedoHead(), nullptr);
}

TEST_F(UndoHistoryTest, ANewRecordFreesWhatCouldBeRedone) {
    Push();
    history.MoveHead(true);
    Push();
    EXPECT_EQ(history.RedoHead(), nullptr);
    EXPECT_EQ(Record::alive, 1);
}

TEST_F(UndoHistoryTest, AnAbandonedGroupBringsTheRedoListBack) {
    const Record* undone = Push();
    history.MoveHead(true);
    ASSERT_TRUE(history.BeginGroup());
    EXPECT_EQ(history.RedoHead(), undone) << "a marker takes nothing away";
    const Record* grouped = Push();
    EXPECT_EQ(history.RedoHead(), nullptr);
    UndoRecord* taken = history.TakeLatest();
    EXPECT_EQ(taken, grouped);
    delete taken;
    taken = history.TakeLatest();
    EXPECT_EQ(taken->state, UndoRecord::State::GroupBegin);
    delete taken;
    history.GroupAbandoned();
    EXPECT_EQ(history.RedoHead(), undone);
    EXPECT_EQ(history.TakeLatest(), nullptr);
}

TEST_F(UndoHistoryTest, WhatWasUndoneWithinAnAbandonedGroupIsGone) {
    const Record* before = Push();
    history.MoveHead(true);
    ASSERT_TRUE(history.BeginGroup());
    Push();
    history.MoveHead(true);
    delete history.TakeLatest(); // the marker
    history.GroupAbandoned();
    EXPECT_EQ(history.RedoHead(), before);
    EXPECT_EQ(Record::alive, 1);
}

TEST_F(UndoHistoryTest, WhatAGroupHasPutAsideIsCommittedAndClearedToo) {
    Push(UndoRecord::State::InEditLine);
    history.MoveHead(true);
    ASSERT_TRUE(history.BeginGroup());
    Push();
    history.MarkCommitted();
    delete history.TakeLatest();
    delete history.TakeLatest(); // the marker
    history.GroupAbandoned();
    EXPECT_EQ(StatesOf(history.RedoHead()), (States{2}));
    ASSERT_TRUE(history.BeginGroup());
    Push();
    history.Clear();
    EXPECT_EQ(Record::alive, 0);
}

TEST_F(UndoHistoryTest, AnEndedGroupForgetsTheRedoList) {
    Push();
    history.MoveHead(true);
    ASSERT_TRUE(history.BeginGroup());
    Push();
    ASSERT_TRUE(history.EndGroup());
    EXPECT_EQ(StatesOf(history.UndoHead()), (States{1, 2, 0}));
    EXPECT_EQ(Record::alive, 1);
}

TEST_F(UndoHistoryTest, WithoutMemoryAGroupNeitherBeginsNorEnds) {
    FailEachAllocation([this] {
        history.Clear();
        const bool hasBegun = history.BeginGroup();
        EXPECT_EQ(StatesOf(history.UndoHead()), hasBegun ? States{0} : States{});
        const bool hasEnded = hasBegun && history.EndGroup();
        if (hasBegun) {
            EXPECT_EQ(StatesOf(history.UndoHead()), hasEnded ? (States{1, 0}) : States{0});
        }
        return hasEnded;
    });
}

TEST_F(UndoHistoryTest, OnlyTheLatestPendingRecordsBecomeCommitted) {
    Push(UndoRecord::State::InEditLine);
    Push(UndoRecord::State::InStore);
    Push(UndoRecord::State::InEditLine);
    ASSERT_TRUE(history.BeginGroup());
    Push(UndoRecord::State::InEditLine);
    history.MarkCommitted();
    EXPECT_EQ(StatesOf(history.UndoHead()), (States{2, 0, 2, 2, 3}));
}

TEST_F(UndoHistoryTest, TheSavedPlaceIsARecordAndNoNumberOfSteps) {
    EXPECT_TRUE(history.IsSaved());
    Push();
    history.MarkSaved();
    history.MoveHead(true);
    EXPECT_FALSE(history.IsSaved());
    Push();
    EXPECT_FALSE(history.IsSaved()) << "another record in the same place";
}

TEST_F(UndoHistoryTest, ThePeakOfAStepIsTheLongestTextOnTheWay) {
    Push(UndoRecord::State::InStore, 1000);
    ASSERT_TRUE(history.BeginGroup());
    Push(UndoRecord::State::InStore, 50);
    Push(UndoRecord::State::InStore, -70);
    ASSERT_TRUE(history.EndGroup());
    EXPECT_EQ(history.PeakOfStep(100, true), 170u) << "the deletion comes back before the insertion goes";
    EXPECT_EQ(history.PeakOfStep(100, false), 100u) << "nothing to redo";
}

TEST_F(UndoHistoryTest, ThePeakIsThatOfTheWholeStepAndOfNoOther) {
    const auto push = [this](const std::vector<int64_t>& growths) {
        for (const int64_t growth : growths) Push(UndoRecord::State::InStore, growth);
    };
    push({-1000});
    ASSERT_TRUE(history.BeginGroup());
    push({100, -100});
    ASSERT_TRUE(history.BeginGroup());
    push({5});
    ASSERT_TRUE(history.EndGroup());
    push({70, -70});
    ASSERT_TRUE(history.EndGroup());
    EXPECT_EQ(history.PeakOfStep(2005, true), 2100u) << "before the group within";
    history.Clear();
    ASSERT_TRUE(history.BeginGroup());
    ASSERT_TRUE(history.BeginGroup());
    push({5});
    ASSERT_TRUE(history.EndGroup());
    push({70, -70});
    ASSERT_TRUE(history.EndGroup());
    push({1000});
    while (history.UndoHead()) history.MoveHead(true);
    EXPECT_EQ(history.PeakOfStep(100, false), 175u) << "after the group within";
}

TEST_F(UndoHistoryTest, JoinedStepsAreOne) {
    Push();
    const uint32_t moment = StepSerial::Latest();
    Push();
    ASSERT_TRUE(history.BeginGroup());
    Push();
    ASSERT_TRUE(history.EndGroup());
    history.JoinSteps(moment);
    EXPECT_EQ(StatesOf(history.UndoHead()), (States{1, 1, 2, 0, 2, 0, 2}));
    history.JoinSteps(StepSerial::Latest());
    EXPECT_EQ(StatesOf(history.UndoHead()), (States{1, 1, 2, 0, 2, 0, 2})) << "nothing was done since";
}

TEST_F(UndoHistoryTest, JoiningLeavesWhatCanBeRedone) {
    const uint32_t moment = StepSerial::Latest();
    Push();
    Push();
    history.MoveHead(true);
    history.JoinSteps(moment);
    EXPECT_EQ(StatesOf(history.UndoHead()), (States{1, 2, 0}));
    EXPECT_EQ(StatesOf(history.RedoHead()), (States{2}));
}

// What was recorded before the moment is no part of the step, also when it was undone and redone since.
TEST_F(UndoHistoryTest, OnlyWhatIsNewerIsJoined) {
    Push();
    Push();
    const uint32_t moment = StepSerial::Latest();
    history.MoveHead(true);
    history.MoveHead(true);
    history.JoinSteps(moment);
    EXPECT_EQ(history.UndoHead(), nullptr);
    history.MoveHead(false);
    history.JoinSteps(moment);
    EXPECT_EQ(StatesOf(history.UndoHead()), (States{2}));
    Push();
    history.JoinSteps(moment);
    EXPECT_EQ(StatesOf(history.UndoHead()), (States{1, 2, 0, 2}));
}

TEST_F(UndoHistoryTest, AJoinedStepIsSavedAfterItsLastRecordOnly) {
    Push();
    const uint32_t moment = StepSerial::Latest();
    Push();
    history.MarkSaved();
    history.JoinSteps(moment);
    EXPECT_TRUE(history.IsSaved());
    const uint32_t second = StepSerial::Latest();
    Push();
    history.MarkSaved();
    Push();
    history.JoinSteps(second);
    EXPECT_FALSE(history.IsSaved()) << "saved in the middle";
}

TEST_F(UndoHistoryTest, WithoutMemoryTheStepsAreNotJoined) {
    const uint64_t failures = FailEachAllocation([&] {
        auto pause = std::make_unique<FailurePause>();
        const uint32_t moment = StepSerial::Latest();
        Push();
        Push();
        pause.reset();
        history.JoinSteps(moment);
        const States states = StatesOf(history.UndoHead());
        EXPECT_TRUE(states == (States{1, 2, 2, 0}) || states == (States{2, 2}));
        history.Clear();
        return states.size() == 4;
    });
    EXPECT_EQ(failures, 2u);
}
