// Keys that the frame takes before their windows, and keyboard macros.
#include "app/KeyDispatch.h"
#include "app/win32/MainFrame.h"
#include "base/win32/Input.h"
#include "document/TextBuffer.h"
#include "viewbase/win32/View.h"

namespace {

bool IsDown(int key) { return GetKeyState(key) < 0; }

uint32_t HeldModifiers() {
    return (IsDown(VK_SHIFT) ? MacroModifier::Shift : 0) | (IsDown(VK_CONTROL) ? MacroModifier::Ctrl : 0) |
           (IsDown(VK_MENU) ? MacroModifier::Alt : 0);
}

constexpr BYTE Down = 0x80;

BYTE KeyState(uint32_t modifiers, uint32_t modifier) { return (modifiers & modifier) != 0 ? Down : BYTE{0}; }

void SetModifiers(BYTE (&keys)[256], uint32_t modifiers) {
    keys[VK_SHIFT] = KeyState(modifiers, MacroModifier::Shift);
    keys[VK_CONTROL] = KeyState(modifiers, MacroModifier::Ctrl);
    keys[VK_MENU] = KeyState(modifiers, MacroModifier::Alt);
    SetKeyboardState(keys);
}

uint32_t PhysicalModifiers() {
    const auto held = [](int key, uint32_t modifier) { return GetAsyncKeyState(key) < 0 ? modifier : 0; };
    return held(VK_SHIFT, MacroModifier::Shift) | held(VK_CONTROL, MacroModifier::Ctrl) |
           held(VK_MENU, MacroModifier::Alt);
}

} // namespace

bool MainFrame::PreDispatchKey(const MSG& message) {
    KeyPress press;
    press.isDown = message.message == WM_KEYDOWN;
    press.isUp = message.message == WM_KEYUP;
    press.key = static_cast<uint32_t>(message.wParam);
    press.shift = IsDown(VK_SHIFT);
    press.ctrl = IsDown(VK_CONTROL);
    press.alt = IsDown(VK_MENU);
    press.recording = macros.IsRecording();
    press.playing = macros.IsPlaying();
    press.switching = switching;
    press.hasActivePane = panes.Active() != nullptr;
    const KeyDecision decision = DecideKey(press);
    const bool acted = CarryOut(decision);
    if (decision.swallow == Swallow::Yes || (decision.swallow == Swallow::IfActed && acted)) return true;
    return macros.IsRecording() &&
           macros.RecordMessage(message.hwnd == window, message.message, static_cast<uint32_t>(message.wParam),
                                static_cast<uint32_t>(message.lParam), HeldModifiers());
}

bool MainFrame::CarryOut(const KeyDecision& decision) {
    switch (decision.action) {
    case KeyAction::SelectMacroSlot: {
        macros.SelectSlot(decision.index);
        WString text;
        if (macros.SelectedText(text)) SetStatusText(StatusField::Message, text.Text());
        return true;
    }
    case KeyAction::ShowDocument:
        ShowDocument(documents.At(decision.index), panes.Active());
        return true;
    case KeyAction::LeaveOutput:
        return LeaveOutputDocument();
    case KeyAction::ShowNextInMru:
        ShowByUse(true);
        return true;
    case KeyAction::ShowPreviousInMru:
        ShowByUse(false);
        return true;
    case KeyAction::FinishSwitching:
        FinishSwitching();
        return true;
    default:
        return false;
    }
}

// Escape in an output document goes back to the document used before it.
bool MainFrame::LeaveOutputDocument() {
    Document* document = ActiveDocument();
    bool running = false;
    if (!document || GetFocus() != static_cast<HWND>(panes.Active()->window)) return false;
    if (!document->GetOutputState(running)) return false;
    for (Document* earlier = documents.NextInMru(document); earlier && earlier != document;
         earlier = documents.NextInMru(earlier))
        if (!earlier->GetOutputState(running)) {
            ShowDocument(earlier, panes.Active());
            return true;
        }
    return false;
}

void MainFrame::ShowByUse(bool nextInMru) {
    const Document* document = ActiveDocument();
    switching = true;
    ShowDocument(nextInMru ? documents.NextInMru(document) : documents.PreviousInMru(document), panes.Active());
}

void MainFrame::FinishSwitching() {
    switching = false;
    if (panes.Active() && panes.Active()->view) ViewActivated(panes.Active()->view);
}

void MainFrame::RecordMacro() {
    if (!macros.ToggleRecording()) return;
    // The end of a drag would be locked out with the rest of the mouse.
    if (macros.IsRecording()) ReleaseCapture();
    RebuildTitle();
}

void MainFrame::PlayMacro() {
    if (macros.BeginPlayback())
        PlayEvents();
    else
        RebuildTitle();
}

void MainFrame::PlayEvents() {
    ForEachView([](View& view) { view.SuspendRedraw(false); });
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    const uint32_t saved = HeldModifiers();
    dialogClosed = false;
    for (const MacroEvent* event = macros.FirstEvent(); event && macros.IsPlaying(); event = event->next) {
        // The way out of a macro that does not end soon enough.
        if (TakeQueuedEscape()) {
            macros.StopPlayback();
            break;
        }
        const Pane* pane = panes.Active();
        const HWND target = event->toFrame ? window : pane ? static_cast<HWND>(pane->window) : nullptr;
        if (!target) continue;
        SetModifiers(keys, event->modifiers);
        MSG message = {};
        message.hwnd = target;
        message.message = event->message;
        message.wParam = event->firstParameter;
        message.lParam = static_cast<LPARAM>(event->secondParameter);
        if (!PreDispatchKey(message)) SendMessageW(target, message.message, message.wParam, message.lParam);
    }
    // The release of keys that were held waits in the queue, unless a dialog of the macro has taken it out or it
    // went with an Escape that broke something off.
    SetModifiers(keys, dialogClosed || !macros.IsPlaying() ? PhysicalModifiers() : saved);
    ForEachView([](View& view) { view.SuspendRedraw(true); });
    macros.StopPlayback();
}
