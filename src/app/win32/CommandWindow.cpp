#include "app/win32/CommandWindow.h"

#include "app/CommandContext.h"
#include "app/PaneViews.h"
#include "base/win32/WindowText.h"
#include "settings/Settings.h"
#include "settings/win32/DrawingObjects.h"

bool CommandWindow::Create(HWND frame, HINSTANCE instance) {
    // Screen readers call a field by the label before it, also by one that is not seen.
    CreateWindowExW(0, WC_STATICW, L"Command", WS_CHILD, 0, 0, 0, 0, frame, nullptr, instance, nullptr);
    window = CreateWindowExW(0, WC_EDITW, L"", WS_CHILD | WS_CLIPSIBLINGS | WS_BORDER | ES_AUTOHSCROLL, 0, 0, 0, 0,
                             frame, nullptr, instance, nullptr);
    if (!window) return false;
    // The control's own limit of 30,000 characters would cut long paths and scripts typed as one line.
    SendMessageW(window, EM_SETLIMITTEXT, 0, 0);
    ApplyFont();
    return keys.Set(window, EditProc, this);
}

void CommandWindow::Show(bool show) {
    if (visible == show) return;
    // The focus goes first: hiding a focused window would hand it to the frame.
    if (!show && panes.Active())
        panes.Focus(*panes.Active());
    else if (!show)
        panes.FocusFrame();
    visible = show;
    ShowWindow(window, show ? SW_SHOW : SW_HIDE);
    context.LayOut();
    if (show) SetFocus(window);
    context.RefreshTitle();
    context.RefreshStatus();
}

bool CommandWindow::TakesFocusBack() {
    const bool takes = visible && wasFocused;
    wasFocused = false;
    return takes;
}

void CommandWindow::SetText(const Char* text) { SetWindowTextW(window, Wide(text)); }

void CommandWindow::OnTextChanged() {
    if (!replacing) prompt.TextChanged();
}

bool CommandWindow::GetText(WString& out) const { return TextOfWindow(window, out); }

void CommandWindow::ApplyFont() { font.Apply(window, &NONCLIENTMETRICSW::lfMessageFont); }

HBRUSH CommandWindow::ApplyColours(HDC target) const {
    SetTextColor(target, settings.TextFg);
    SetBkColor(target, settings.TextBg);
    return DrawingObjects::BackgroundBrush();
}

int CommandWindow::Height() const {
    const WindowDc dc(window);
    const SelectedObject selected(dc.Get(), font.Get() ? font.Get() : GetStockObject(SYSTEM_FONT));
    TEXTMETRICW metrics = {};
    GetTextMetricsW(dc.Get(), &metrics);
    return metrics.tmHeight + 2 * GetSystemMetrics(SM_CXBORDER);
}

LRESULT CALLBACK CommandWindow::EditProc(HWND edit, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                                         DWORD_PTR data) {
    CommandWindow& self = *reinterpret_cast<CommandWindow*>(data);
    switch (message) {
    case WM_NCDESTROY:
        self.keys.Remove();
        break;
    case WM_KEYDOWN:
        if (self.OnKeyDown(wparam)) return 0;
        break;
    case WM_CHAR:
        // The control would beep at the characters of the keys handled above.
        if (wparam == VK_RETURN || wparam == VK_ESCAPE || wparam == VK_TAB) return 0;
        break;
    case WM_SETFOCUS: {
        const LRESULT result = DefSubclassProc(edit, message, wparam, lparam);
        SendMessageW(edit, EM_SETSEL, 0, -1);
        return result;
    }
    default:
        break;
    }
    return DefSubclassProc(edit, message, wparam, lparam);
}

bool CommandWindow::OnKeyDown(WPARAM key) {
    switch (key) {
    case VK_RETURN:
        Enter();
        return true;
    case VK_ESCAPE:
        Show(false);
        return true;
    case VK_UP:
        Replace(prompt.Older(), AtEnd);
        return true;
    case VK_DOWN:
        Replace(prompt.Newer(), AtEnd);
        return true;
    case VK_F8:
        FindPrefix();
        return true;
    case VK_TAB:
        Complete(GetKeyState(VK_SHIFT) >= 0);
        return true;
    default:
        return false;
    }
}

void CommandWindow::Enter() {
    WString text;
    if (!GetText(text)) return;
    prompt.Enter(context, text.Text(), SendMessageW(window, EM_CANUNDO, 0, 0) != 0);
    SendMessageW(window, EM_SETSEL, 0, -1);
}

void CommandWindow::Complete(bool forward) {
    WString text;
    if (GetText(text)) Replace(prompt.Complete(text.Text(), forward), AtEnd);
}

void CommandWindow::FindPrefix() {
    WString text;
    DWORD caret = 0;
    SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&caret), 0);
    if (GetText(text)) Replace(prompt.FindPrefix(text.Text(), caret), caret);
}

void CommandWindow::Replace(const Char* text, uint32_t caret) {
    if (!text) return;
    replacing = true;
    SetWindowTextW(window, Wide(text));
    replacing = false;
    const int position = caret == AtEnd ? GetWindowTextLengthW(window) : static_cast<int>(caret);
    SendMessageW(window, EM_SETSEL, static_cast<WPARAM>(position), position);
    SendMessageW(window, EM_SCROLLCARET, 0, 0);
}
