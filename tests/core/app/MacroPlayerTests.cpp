#include "app/MacroPlayer.h"
#include "app/Macros.h"

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

    std::vector<std::string> calls;
    std::function<void()> whileSending;
    int escapeBefore = 0; // the n-th event from now; 0 for none
};

class MacroPlayerTest : public ::testing::Test {
protected:
    void Record(std::initializer_list<uint32_t> keys) {
        EXPECT_TRUE(macros.ToggleRecording());
        for (const uint32_t key : keys) macros.RecordMessage(false, MacroMessage::KeyDown, key, 0, 0);
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

} // namespace
