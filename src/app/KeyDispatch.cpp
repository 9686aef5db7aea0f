#include "app/KeyDispatch.h"

namespace {

KeyDecision DecideDigit(const KeyPress& press) {
    const uint32_t digit = press.key - FrameKey::Digit0;
    if (!press.shift) return {KeyAction::ShowDocument, digit == 0 ? 9 : digit - 1, Swallow::No};
    const bool busy = press.recording || press.playing;
    return {busy ? KeyAction::None : KeyAction::SelectMacroSlot, digit, Swallow::Yes};
}

KeyDecision DecideKeyDown(const KeyPress& press) {
    const bool isDigit = press.key >= FrameKey::Digit0 && press.key <= FrameKey::Digit9;
    // Ctrl and Alt together are the AltGr of keyboards that type brackets and braces with it.
    if (isDigit && press.ctrl && !press.alt) return DecideDigit(press);
    if (press.key == ViewKey::Escape) return {KeyAction::LeaveOutput, 0, Swallow::IfActed};
    if (press.key == FrameKey::Tab && press.ctrl && !press.alt && press.hasActivePane)
        return {press.shift ? KeyAction::ShowPreviousInMru : KeyAction::ShowNextInMru, 0, Swallow::Yes};
    return {};
}

} // namespace

bool EndsSwitching(const KeyPress& press) {
    return press.switching && (!press.ctrl || (press.isUp && press.key == FrameKey::Ctrl));
}

KeyDecision DecideKey(const KeyPress& press) { return press.isDown ? DecideKeyDown(press) : KeyDecision{}; }
