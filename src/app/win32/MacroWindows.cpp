#include "app/win32/MacroWindows.h"

#include "app/Macros.h"
#include "app/win32/AllViews.h"
#include "app/win32/FrameKeys.h"
#include "app/win32/PaneWindows.h"
#include "base/win32/Input.h"

namespace {

BYTE KeyState(uint32_t modifiers, uint32_t modifier) {
    constexpr BYTE Down = 0x80;
    return (modifiers & modifier) != 0 ? Down : BYTE{0};
}

} // namespace

void MacroWindows::SuspendRedraw() {
    ForEachView(documents, [](View& view) { view.SuspendRedraw(false); });
}

void MacroWindows::ResumeRedraw() {
    ForEachView(documents, [](View& view) { view.SuspendRedraw(true); });
}

uint32_t MacroWindows::HeldModifiers() const { return ::HeldModifiers(); }

uint32_t MacroWindows::PhysicalModifiers() const {
    const auto held = [](int key, uint32_t modifier) { return GetAsyncKeyState(key) < 0 ? modifier : 0; };
    return held(VK_SHIFT, MacroModifier::Shift) | held(VK_CONTROL, MacroModifier::Ctrl) |
           held(VK_MENU, MacroModifier::Alt);
}

void MacroWindows::SetModifiers(uint32_t modifiers) {
    BYTE states[256] = {};
    GetKeyboardState(states);
    states[VK_SHIFT] = KeyState(modifiers, MacroModifier::Shift);
    states[VK_CONTROL] = KeyState(modifiers, MacroModifier::Ctrl);
    states[VK_MENU] = KeyState(modifiers, MacroModifier::Alt);
    SetKeyboardState(states);
}

bool MacroWindows::TakeEscape() { return TakeQueuedEscape(); }

void MacroWindows::Send(const MacroEvent& event) {
    const View* const view = panes.AttachedView();
    const HWND target = event.target == MacroTarget::Frame ? frame : view ? view->GetWindow() : nullptr;
    if (!target) return;
    SetModifiers(event.modifiers);
    MSG message = {};
    message.hwnd = target;
    message.message = event.message;
    message.wParam = event.firstParameter;
    message.lParam = static_cast<LPARAM>(event.secondParameter);
    if (!keys.PreDispatch(message)) SendMessageW(target, message.message, message.wParam, message.lParam);
}

void MacroWindows::JoinSteps(uint32_t after) {
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next) node->document->JoinSteps(after);
}
