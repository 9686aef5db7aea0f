#include "app/MacroPlayer.h"
#include "app/Macros.h"
#include "document/StepSerial.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

// Records in words what a macro does.
class FakeStage final : public MacroStage {
public:
    void SuspendRedraw() override { calls.push_back("suspend"); }
    void ResumeRedraw() override { calls.push_back("resume"); }
    uint32_t HeldModifiers() const override { return MacroModifier::Ctrl; }
    uint32_t PhysicalModifiers() const override { return MacroModifier::Alt; }
    void SetModifiers(uint32_t modifiers) override { calls.push_back("modifiers " + std::to_string(modifiers)); }
    bool TakeEscape() override { return escapeBefore != 0 && --escapeBefore == 0; }
    void Send(const MacroEvent& event) override {
        calls.push_back("send " + std::to_string(event.firstParameter));
        if (whileSending) whileSending();
    }
    void JoinSteps(uint32_t after) override { calls.push_back("join " + std::to_string(after)); }

    std::vector<std::string> calls;
    std::function<void()> whileSending;
    int escapeBefore = 0; // the n-th event from now; 0 for none
};

class MacroPlayerTest : public ::testing::Test {
protected:
    void Record(std::initializer_list<uint32_t> keys) {
        EXPECT_TRUE(macros.ToggleRecording());
        for (const uint32_t key : keys)
            macros.RecordMessage({MacroTarget::ActiveView, MacroMessage::KeyDown, key, 0, 0});
        EXPECT_TRUE(macros.ToggleRecording());
    }
    using Calls = std::vector<std::string>;

    Macros macros;
    FakeStage stage;
    MacroPlayer player{macros, stage};
};

TEST_F(MacroPlayerTest, EventsAreSentInOrderWithRedrawSuspendedAndTheKeysPutBack) {
    Record({10, 20, 30});
    stage.whileSending = [&] { EXPECT_TRUE(macros.IsPlaying()); };
    EXPECT_TRUE(player.Play());
    EXPECT_EQ(stage.calls, (Calls{"suspend", "send 10", "send 20", "send 30", "modifiers 2", "resume"}));
    EXPECT_FALSE(macros.IsPlaying());
}

TEST_F(MacroPlayerTest, WhileRecordingPlayOnlyEndsThat) {
    EXPECT_TRUE(macros.ToggleRecording());
    EXPECT_FALSE(player.Play());
    EXPECT_FALSE(macros.IsRecording());
    EXPECT_TRUE(stage.calls.empty());
}

TEST_F(MacroPlayerTest, AMacroThatPlaysItselfIsPlayedOnce) {
    Record({10, 20});
    stage.whileSending = [&] { EXPECT_FALSE(player.Play()); };
    EXPECT_TRUE(player.Play());
    EXPECT_EQ(stage.calls.size(), 5u);
}

TEST_F(MacroPlayerTest, AViewEndsThePlaybackAfterTheEventThatItHandles) {
    Record({10, 20});
    stage.whileSending = [&] { macros.StopPlayback(); };
    EXPECT_TRUE(player.Play());
    EXPECT_EQ(stage.calls, (Calls{"suspend", "send 10", "modifiers 4", "resume"}));
}

TEST_F(MacroPlayerTest, EscapeEndsItAndTheKeysAreThoseThatAreDown) {
    Record({10, 20, 30});
    stage.escapeBefore = 2;
    EXPECT_TRUE(player.Play());
    EXPECT_EQ(stage.calls, (Calls{"suspend", "send 10", "modifiers 4", "resume"}));
}

TEST_F(MacroPlayerTest, AfterADialogTheKeysAreThoseThatAreDown) {
    Record({10});
    player.DialogClosed(); // before: of no account
    EXPECT_TRUE(player.Play());
    EXPECT_EQ(stage.calls[2], "modifiers 2");
    stage.calls.clear();
    stage.whileSending = [&] { player.DialogClosed(); };
    EXPECT_TRUE(player.Play());
    EXPECT_EQ(stage.calls, (Calls{"suspend", "send 10", "modifiers 4", "resume"}));
}

TEST_F(MacroPlayerTest, RepeatedItIsPlayedThatOftenWithRedrawSuspendedOnce) {
    Record({10, 20});
    const std::string join = "join " + std::to_string(StepSerial::Latest());
    stage.whileSending = [] { StepSerial::Next(); }; // it edits
    EXPECT_EQ(player.Repeat(3), RepeatResult::Played);
    EXPECT_EQ(stage.calls, (Calls{join, "suspend", "send 10", "send 20", "send 10", "send 20", "send 10", "send 20",
                                  "modifiers 2", "resume", join}));
    EXPECT_FALSE(macros.IsPlaying());
}

TEST_F(MacroPlayerTest, PlayedOnceWithoutRepeatItsStepsStayWhatTheyAre) {
    Record({10});
    EXPECT_TRUE(player.Play());
    EXPECT_EQ(stage.calls, (Calls{"suspend", "send 10", "modifiers 2", "resume"}));
}

TEST_F(MacroPlayerTest, WhatEndsThePlaybackEndsAllRepetitions) {
    Record({10, 20});
    int sent = 0;
    stage.whileSending = [&] {
        if (++sent == 3) macros.StopPlayback();
    };
    EXPECT_EQ(player.Repeat(5), RepeatResult::Played);
    EXPECT_EQ(sent, 3);
    stage.whileSending = nullptr;
    stage.calls.clear();
    stage.escapeBefore = 4;
    EXPECT_EQ(player.Repeat(1000000), RepeatResult::Played);
    EXPECT_EQ(stage.calls.size(), 3u + 5u) << "what was done until then is one step as well";
    EXPECT_EQ(stage.calls.back(), stage.calls.front());
    EXPECT_FALSE(macros.IsPlaying());
}

TEST_F(MacroPlayerTest, NeitherRepeatNorPlayRunsInsideARepetition) {
    Record({10});
    stage.whileSending = [&] {
        EXPECT_EQ(player.Repeat(2), RepeatResult::IsPlaying);
        EXPECT_FALSE(player.Play());
    };
    EXPECT_EQ(player.Repeat(2), RepeatResult::Played);
    EXPECT_EQ(stage.calls.size(), 7u);
}

TEST_F(MacroPlayerTest, WithoutAMacroNothingIsRepeated) {
    EXPECT_EQ(player.Repeat(2), RepeatResult::IsEmpty);
    EXPECT_TRUE(stage.calls.empty());
    EXPECT_FALSE(macros.IsPlaying());
}

TEST_F(MacroPlayerTest, ARecordingGoesOnWhenAMacroIsToBeRepeated) {
    EXPECT_TRUE(macros.ToggleRecording());
    macros.RecordMessage({MacroTarget::ActiveView, MacroMessage::KeyDown, 10, 0, 0});
    EXPECT_EQ(player.Repeat(2), RepeatResult::IsRecording);
    EXPECT_TRUE(macros.IsRecording());
    EXPECT_TRUE(stage.calls.empty());
}

} // namespace
