#include "app/KeyDispatch.h"
#include "app/Macros.h"
#include "core/app/FakeFrame.h"
#include "support/FailureInjection.h"
#include "viewbase/ViewHost.h"

#include <gtest/gtest.h>

namespace {

constexpr uint32_t KeyDown = 256;
constexpr uint32_t KeyUp = 257;
constexpr uint32_t Character = 258;
constexpr uint32_t Command = 273;

// The first parameters of the current slot's events.
std::vector<uint32_t> Recorded(const Macros& macros) {
    std::vector<uint32_t> parameters;
    for (const MacroEvent* event = macros.FirstEvent(); event; event = event->next)
        parameters.push_back(event->firstParameter);
    return parameters;
}

std::u16string SlotText(const Macros& macros) {
    WString text;
    EXPECT_TRUE(macros.SelectedText(text));
    return text.Text();
}

void RecordKey(Macros& macros, uint32_t key) {
    EXPECT_FALSE(macros.RecordMessage({MacroTarget::ActiveView, KeyDown, key, 0, 0}));
}

TEST(Macros, StartIdleInSlotZero) {
    const Macros macros;
    EXPECT_EQ(macros.State(), MacroState::Idle);
    EXPECT_EQ(SlotText(macros), u"Macro 0 selected");
    EXPECT_EQ(macros.FirstEvent(), nullptr);
}

TEST(Macros, RecordEventsInOrderWithAllTheirFields) {
    Macros macros;
    EXPECT_TRUE(macros.ToggleRecording());
    EXPECT_EQ(macros.State(), MacroState::Recording);
    EXPECT_FALSE(macros.RecordMessage({MacroTarget::Frame, Command, 40012, 1, MacroModifier::Ctrl}));
    EXPECT_FALSE(
        macros.RecordMessage({MacroTarget::ActiveView, Character, u'x', 7, MacroModifier::Shift | MacroModifier::Alt}));
    EXPECT_TRUE(macros.ToggleRecording());
    EXPECT_EQ(macros.State(), MacroState::Idle);
    const MacroEvent* event = macros.FirstEvent();
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(event->target, MacroTarget::Frame);
    EXPECT_EQ(event->message, Command);
    EXPECT_EQ(event->firstParameter, 40012u);
    EXPECT_EQ(event->secondParameter, 1u);
    EXPECT_EQ(event->modifiers, 2u);
    event = event->next;
    ASSERT_NE(event, nullptr);
    EXPECT_EQ(event->target, MacroTarget::ActiveView);
    EXPECT_EQ(event->message, Character);
    EXPECT_EQ(event->firstParameter, uint32_t{u'x'});
    EXPECT_EQ(event->secondParameter, 7u);
    EXPECT_EQ(event->modifiers, 5u);
    EXPECT_EQ(event->next, nullptr);
}

TEST(Macros, RecordKeysCharactersAndCommandsOnly) {
    Macros macros;
    macros.ToggleRecording();
    for (const uint32_t message : {KeyDown, KeyUp, Character, Command})
        EXPECT_FALSE(macros.RecordMessage({MacroTarget::ActiveView, message, message, 0, 0}));
    // Dead keys, system keys, timers and what lies around the mouse messages pass unrecorded.
    for (const uint32_t message : {0u, 15u, 255u, 259u, 260u, 272u, 274u, 275u, 511u, 526u, 1024u})
        EXPECT_FALSE(macros.RecordMessage({MacroTarget::ActiveView, message, message, 0, 0})) << message;
    EXPECT_EQ(Recorded(macros), (std::vector<uint32_t>{KeyDown, KeyUp, Character, Command}));
}

TEST(Macros, MouseClicksDoNothingWhileRecording) {
    Macros macros;
    EXPECT_FALSE(macros.RecordMessage({MacroTarget::ActiveView, 513, 0, 0, 0})); // not recording yet
    macros.ToggleRecording();
    for (uint32_t message = 512; message <= 525; ++message)
        EXPECT_TRUE(macros.RecordMessage({MacroTarget::ActiveView, message, 0, 0, 0})) << message;
    EXPECT_TRUE(Recorded(macros).empty());
}

TEST(Macros, RecordNothingWhileIdle) {
    Macros macros;
    RecordKey(macros, 1);
    EXPECT_TRUE(Recorded(macros).empty());
}

TEST(Macros, ANewRecordingReplacesTheSlot) {
    Macros macros;
    macros.ToggleRecording();
    RecordKey(macros, 1);
    macros.ToggleRecording();
    EXPECT_EQ(Recorded(macros), std::vector<uint32_t>{1});
    macros.ToggleRecording();
    RecordKey(macros, 2);
    RecordKey(macros, 3);
    macros.ToggleRecording();
    EXPECT_EQ(Recorded(macros), (std::vector<uint32_t>{2, 3}));
}

TEST(Macros, RecordingAndStoppingAtOnceLeavesTheSlotEmpty) {
    Macros macros;
    macros.ToggleRecording();
    RecordKey(macros, 1);
    macros.ToggleRecording();
    macros.ToggleRecording();
    macros.ToggleRecording();
    EXPECT_TRUE(Recorded(macros).empty());
    EXPECT_TRUE(macros.BeginPlayback()); // plays nothing
}

TEST(Macros, KeepTenSlotsApart) {
    Macros macros;
    for (uint32_t slot = 0; slot < Macros::SlotCount; ++slot) {
        macros.SelectSlot(slot);
        macros.ToggleRecording();
        RecordKey(macros, 100 + slot);
        macros.ToggleRecording();
    }
    for (uint32_t slot = 0; slot < Macros::SlotCount; ++slot) {
        macros.SelectSlot(slot);
        EXPECT_EQ(Recorded(macros), std::vector<uint32_t>{100 + slot});
    }
}

TEST(Macros, ASlotOutsideTheTenBecomesZero) {
    Macros macros;
    for (const uint32_t slot : {10u, 11u, UINT32_MAX}) {
        macros.SelectSlot(5);
        macros.SelectSlot(slot);
        EXPECT_EQ(SlotText(macros), u"Macro 0 selected");
    }
}

TEST(Macros, NameTheSelectedSlot) {
    Macros macros;
    macros.SelectSlot(7);
    WString text;
    EXPECT_TRUE(macros.SelectedText(text));
    EXPECT_EQ(Str(text), u"Macro 7 selected");
}

TEST(Macros, PlayWhileRecordingOnlyEndsTheRecording) {
    Macros macros;
    macros.ToggleRecording();
    RecordKey(macros, 1);
    EXPECT_FALSE(macros.BeginPlayback());
    EXPECT_EQ(macros.State(), MacroState::Idle);
    EXPECT_EQ(Recorded(macros), std::vector<uint32_t>{1});
}

TEST(Macros, RecordAndPlayAreIgnoredWhilePlaying) {
    Macros macros;
    macros.ToggleRecording();
    RecordKey(macros, 1);
    macros.ToggleRecording();
    EXPECT_TRUE(macros.BeginPlayback());
    EXPECT_EQ(macros.State(), MacroState::Playing);
    EXPECT_FALSE(macros.BeginPlayback());
    EXPECT_FALSE(macros.ToggleRecording());
    EXPECT_TRUE(macros.IsPlaying());
    RecordKey(macros, 2);
    EXPECT_EQ(Recorded(macros), std::vector<uint32_t>{1});
    macros.StopPlayback();
    EXPECT_EQ(macros.State(), MacroState::Idle);
    EXPECT_TRUE(macros.BeginPlayback());
}

TEST(Macros, AnEventWithoutMemoryIsLeftOut) {
    const uint64_t failures = FailEachAllocation([] {
        Macros macros;
        macros.ToggleRecording();
        RecordKey(macros, 1);
        RecordKey(macros, 2);
        return Recorded(macros).size() == 2;
    });
    EXPECT_EQ(failures, 2u);
}

struct Decision {
    KeyAction action;
    uint32_t index;
    Swallow swallow;
    bool operator==(const Decision&) const = default;
};

Decision DecisionOn(const KeyPress& press) {
    const KeyDecision decision = DecideKey(press);
    return {decision.action, decision.index, decision.swallow};
}

constexpr Decision Nothing = {KeyAction::None, 0, Swallow::No};

TEST(KeyDispatch, CtrlDigitShowsADocumentAndIsNotSwallowed) {
    for (uint32_t digit = 0; digit <= 9; ++digit) {
        const KeyPress press = {.isDown = true, .key = FrameKey::Digit0 + digit, .ctrl = true};
        const uint32_t index = digit == 0 ? 9 : digit - 1;
        EXPECT_EQ(DecisionOn(press), (Decision{KeyAction::ShowDocument, index, Swallow::No})) << digit;
    }
}

TEST(KeyDispatch, CtrlShiftDigitSelectsTheSlot) {
    for (uint32_t digit = 0; digit <= 9; ++digit) {
        const KeyPress press = {.isDown = true, .key = FrameKey::Digit0 + digit, .shift = true, .ctrl = true};
        EXPECT_EQ(DecisionOn(press), (Decision{KeyAction::SelectMacroSlot, digit, Swallow::Yes})) << digit;
    }
}

TEST(KeyDispatch, CtrlShift5WhileRecordingLeavesTheSlot) {
    KeyPress press = {.isDown = true, .key = FrameKey::Digit0 + 5, .shift = true, .ctrl = true, .recording = true};
    EXPECT_EQ(DecisionOn(press), (Decision{KeyAction::None, 5, Swallow::Yes}));
    press.recording = false;
    press.playing = true;
    EXPECT_EQ(DecisionOn(press), (Decision{KeyAction::None, 5, Swallow::Yes}));
}

TEST(KeyDispatch, DigitsAreLeftAloneWithoutCtrlAndWithAltGr) {
    EXPECT_EQ(DecisionOn({.isDown = true, .key = FrameKey::Digit0 + 1}), Nothing);
    EXPECT_EQ(DecisionOn({.isDown = true, .key = FrameKey::Digit0 + 7, .ctrl = true, .alt = true}), Nothing);
    EXPECT_EQ(DecisionOn({.isUp = true, .key = FrameKey::Digit0 + 1, .ctrl = true}), Nothing);
    EXPECT_EQ(DecisionOn({.isDown = true, .key = FrameKey::Digit0 - 1, .ctrl = true}), Nothing);
    EXPECT_EQ(DecisionOn({.isDown = true, .key = FrameKey::Digit9 + 1, .ctrl = true}), Nothing);
}

TEST(KeyDispatch, EscapeLeavesAnOutputDocument) {
    EXPECT_EQ(DecisionOn({.isDown = true, .key = ViewKey::Escape}),
              (Decision{KeyAction::LeaveOutput, 0, Swallow::IfActed}));
    EXPECT_EQ(DecisionOn({.isUp = true, .key = ViewKey::Escape}), Nothing);
}

TEST(KeyDispatch, CtrlTabWalksTheOrderOfUse) {
    KeyPress press = {.isDown = true, .key = FrameKey::Tab, .ctrl = true, .hasActivePane = true};
    EXPECT_EQ(DecisionOn(press), (Decision{KeyAction::ShowNextInMru, 0, Swallow::Yes}));
    press.shift = true;
    EXPECT_EQ(DecisionOn(press), (Decision{KeyAction::ShowPreviousInMru, 0, Swallow::Yes}));
    press.alt = true;
    EXPECT_EQ(DecisionOn(press), Nothing) << "AltGr";
    press.alt = false;
    press.hasActivePane = false;
    EXPECT_EQ(DecisionOn(press), Nothing);
    EXPECT_EQ(DecisionOn({.isDown = true, .key = FrameKey::Tab, .hasActivePane = true}), Nothing);
}

TEST(KeyDispatch, ThatCtrlIsUpEndsTheSwitchHoweverItCameAbout) {
    // Its release, also where the state is not that of the message; then whatever comes after a release that went
    // elsewhere.
    EXPECT_TRUE(EndsSwitching({.isUp = true, .key = FrameKey::Ctrl, .switching = true}));
    EXPECT_TRUE(EndsSwitching({.isUp = true, .key = FrameKey::Ctrl, .ctrl = true, .switching = true}));
    EXPECT_TRUE(EndsSwitching({.isUp = true, .key = FrameKey::Tab, .switching = true}));
    EXPECT_TRUE(EndsSwitching({.key = FrameKey::Ctrl, .alt = true, .switching = true}));
    EXPECT_TRUE(EndsSwitching({.switching = true}));
    EXPECT_FALSE(EndsSwitching({.isDown = true, .key = FrameKey::Tab, .ctrl = true, .switching = true}));
    EXPECT_FALSE(EndsSwitching({.ctrl = true, .switching = true}));
    EXPECT_FALSE(EndsSwitching({.isUp = true, .key = FrameKey::Ctrl}));
}

TEST(KeyDispatch, OtherMessagesAreNone) {
    EXPECT_EQ(DecisionOn({.key = ViewKey::Escape, .ctrl = true, .switching = true}), Nothing);
}

} // namespace
