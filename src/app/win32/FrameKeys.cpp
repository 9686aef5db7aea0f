#include "app/win32/FrameKeys.h"

#include "app/DocumentDisplay.h"
#include "app/DocumentList.h"
#include "app/KeyDispatch.h"
#include "app/Macros.h"
#include "app/win32/FrameScreen.h"
#include "app/win32/PaneWindows.h"
#include "viewbase/ViewHost.h"
#include "viewbase/win32/InputMethod.h"

namespace {

bool IsDown(int key) { return GetKeyState(key) < 0; }

} // namespace

uint32_t HeldModifiers() {
    return (IsDown(VK_SHIFT) ? MacroModifier::Shift : 0) | (IsDown(VK_CONTROL) ? MacroModifier::Ctrl : 0) |
           (IsDown(VK_MENU) ? MacroModifier::Alt : 0);
}

bool FrameKeys::PreDispatch(const MSG& message) {
    KeyPress press;
    press.isDown = message.message == WM_KEYDOWN;
    press.isUp = message.message == WM_KEYUP;
    press.key = static_cast<uint32_t>(message.wParam);
    press.recording = macros.IsRecording();
    press.playing = macros.IsPlaying();
    press.switching = display.IsSwitching();
    // The state of the keyboard takes longer to get than most messages to handle, and they have no use for it.
    if (press.isDown || press.switching) {
        press.shift = IsDown(VK_SHIFT);
        press.ctrl = IsDown(VK_CONTROL);
        press.alt = IsDown(VK_MENU);
    }
    press.hasActivePane = panes.Active() != nullptr;
    if (EndsSwitching(press)) display.FinishSwitching();
    const KeyDecision decision = DecideKey(press);
    const bool acted = CarryOut(decision);
    if (decision.swallow == Swallow::Yes || (decision.swallow == Swallow::IfActed && acted)) return true;
    return macros.IsRecording() && macros.RecordMessage(InputOf(message));
}

MacroInput FrameKeys::InputOf(const MSG& message) const {
    const auto first = static_cast<uint32_t>(message.wParam);
    const auto second = static_cast<uint32_t>(message.lParam);
    // Recorded as a typed character, without the modifiers held when the input method committed it.
    if (message.message == InputMethod::ComposedCharacter)
        return {MacroTarget::ActiveView, MacroMessage::Character, first, second, 0};
    const MacroTarget target = message.hwnd == frame ? MacroTarget::Frame : MacroTarget::ActiveView;
    return {target, message.message, first, second, HeldModifiers()};
}

bool FrameKeys::CarryOut(const KeyDecision& decision) {
    switch (decision.action) {
    case KeyAction::SelectMacroSlot: {
        macros.SelectSlot(decision.index);
        WString text;
        if (macros.SelectedText(text)) screen.SetStatusText(StatusField::Message, text.Text());
        return true;
    }
    case KeyAction::ShowDocument:
        display.ShowInActive(documents.At(decision.index));
        return true;
    case KeyAction::LeaveOutput:
        return LeaveOutput();
    case KeyAction::ShowNextInMru:
        display.SwitchInMru(true);
        return true;
    case KeyAction::ShowPreviousInMru:
        display.SwitchInMru(false);
        return true;
    default:
        return false;
    }
}

// Escape is the command window's own while that has the focus.
bool FrameKeys::LeaveOutput() {
    const Pane* const pane = panes.Active();
    return pane && GetFocus() == static_cast<HWND>(pane->window) && display.LeaveOutput();
}
