#include "app/win32/MainFrame.h"

#include "app/win32/FrameRequests.h"
#include "app/win32/OpeningMenu.h"
#include "app/win32/ToolMenu.h"
#include "base/win32/ChildWindows.h"
#include "resource.h"
#include "settings/win32/DrawingObjects.h"
#include "viewbase/win32/View.h"

#include <initializer_list>

// Process-wide, as there is one frame: for callbacks to which the system passes nothing of ours.
MainFrame* mainFrame = nullptr;

namespace {

constexpr wchar_t ClassName[] = L"OrvaneMain";

// In full: a name that was cut off might be that of another file.
bool DroppedName(HDROP drop, UINT index, WString& name) {
    const UINT length = DragQueryFileW(drop, index, nullptr, 0);
    return length != 0 && name.Reserve(length + 1) && DragQueryFileW(drop, index, Wide(name.Data()), length + 1) &&
           name.Assign(name.Data());
}

// Programs of the user's own level may drop files onto an elevated one only if it lets these messages in.
void AllowDrops(HWND frame) {
    constexpr UINT CopyGlobalData = 0x0049; // carries the names; the system's headers do not name it
    for (const UINT message : {UINT{WM_DROPFILES}, UINT{WM_COPYDATA}, CopyGlobalData})
        ChangeWindowMessageFilterEx(frame, message, MSGFLT_ALLOW, nullptr);
}

} // namespace

MainFrame::MainFrame(SettingsStore& store, RecoveryServices& recovery)
    : parts(commands, *this, leaving, store, recovery) {
    mainFrame = this;
}

MainFrame::~MainFrame() { mainFrame = nullptr; }

bool MainFrame::RegisterClasses(HINSTANCE instance) {
    WNDCLASSEXW definition = {};
    definition.cbSize = sizeof(definition);
    definition.lpfnWndProc = WindowProc;
    definition.hInstance = instance;
    definition.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(IDI_ORVANE));
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_3DFACE + 1));
    definition.lpszMenuName = MAKEINTRESOURCEW(IDR_MAIN_MENU);
    definition.lpszClassName = ClassName;
    return windowClass.Register(definition) && parts.panes.Register(instance);
}

bool MainFrame::Create(HINSTANCE instance) {
    if (!RegisterClasses(instance)) return false;
    const HWND made =
        CreateWindowExW(WS_EX_ACCEPTFILES, ClassName, L"Orvane", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, nullptr);
    if (!made) return false;
    AllowDrops(made);
    DrawingObjects::SetMetricsListener(OnMetricsChanged);
    DrawingObjects::RebuildForDpi(GetDpiForWindow(made));
    ShowWindow(made, SW_SHOWDEFAULT);
    UpdateWindow(made);
    return true;
}

LRESULT CALLBACK MainFrame::WindowProc(HWND frame, UINT message, WPARAM wparam, LPARAM lparam) {
    if (mainFrame && message == WM_NCCREATE) mainFrame->parts.window = frame;
    if (!mainFrame || mainFrame->parts.window != frame) return DefWindowProcW(frame, message, wparam, lparam);
    return mainFrame->OnMessage(message, wparam, lparam);
}

LRESULT MainFrame::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    if (OnMouse(message, lparam) || OnRequest(message, wparam)) return 0;
    switch (message) {
    case WM_CREATE:
        return OnCreate() ? 0 : -1;
    case WM_SIZE:
        parts.batch.LayOutNow();
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wparam) == WA_INACTIVE) parts.commandWindow.OnFrameDeactivated();
        break;
    case WM_ENABLE:
        if (wparam) OnEnabled();
        return 0;
    case WM_SETFOCUS:
        OnFocus();
        return 0;
    case WM_COMMAND:
        if (OnCommand(wparam, lparam)) return 0;
        break;
    case WM_INITMENUPOPUP:
        if (HIWORD(lparam)) break; // the system menu
        UpdateOpeningMenu(reinterpret_cast<HMENU>(wparam), parts.documents, menu);
        return 0;
    case WM_SETCURSOR:
        if (OnSetCursor(lparam)) return TRUE;
        break;
    case WM_ACTIVATEAPP:
        OnApplicationActivated(wparam != 0);
        break;
    case WM_CTLCOLOREDIT:
        return reinterpret_cast<LRESULT>(parts.commandWindow.ApplyColours(reinterpret_cast<HDC>(wparam)));
    case WM_QUERYENDSESSION:
        return parts.leaving.QueryEndSession();
    case WM_HELP:
        menu.Execute(IDM_ONLINE_HELP);
        return TRUE;
    default:
        OnSystemChanged(message, wparam, lparam);
    }
    return DefWindowProcW(parts.window, message, wparam, lparam);
}

// What others ask of the frame and expect no answer to.
bool MainFrame::OnRequest(UINT message, WPARAM wparam) {
    switch (message) {
    case WM_DROPFILES:
        OnDropFiles(reinterpret_cast<HDROP>(wparam));
        return true;
    case WM_CLOSE:
        parts.leaving.Close();
        return true;
    case WM_ENDSESSION:
        parts.leaving.EndSession(wparam != 0);
        return true;
    case FrameRequests::QuitNow:
        parts.leaving.LeaveNow();
        return true;
    case FrameRequests::CheckFiles:
        parts.leaving.CheckFiles();
        return true;
    case FrameRequests::AskUnsaved:
        parts.leaving.AskUnsaved();
        return true;
    case WM_TIMER:
        OnTimer(wparam);
        return true;
    case WM_DESTROY:
        PostQuitMessage(0);
        return true;
    case WM_NCDESTROY:
        parts.window = nullptr;
        return true;
    default:
        return false;
    }
}

// The gaps between the panes are the frame's own client area.
bool MainFrame::OnMouse(UINT message, LPARAM lparam) {
    const POINT point = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
    switch (message) {
    case WM_LBUTTONDOWN:
        return parts.panes.BeginDrag(point, parts.screen.PaneArea());
    case WM_MOUSEMOVE:
        return parts.panes.Drag(point, parts.screen.PaneArea());
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
        parts.panes.EndDrag();
        return true;
    default:
        return false;
    }
}

bool MainFrame::OnCreate() {
    RebuildToolMenu(GetMenu(parts.window));
    const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(parts.window, GWLP_HINSTANCE));
    return parts.Create(parts.window, instance);
}

bool MainFrame::OnCommand(WPARAM wparam, LPARAM lparam) {
    if (lparam && reinterpret_cast<HWND>(lparam) == parts.commandWindow.Window()) {
        if (HIWORD(wparam) == EN_CHANGE) parts.commandWindow.OnTextChanged();
        return true;
    }
    // Posted by another program, it would come while a dialog is open, too, or a long operation runs.
    return leaving.HasOpenDialog() || leaving.IsInLongOperation() || menu.Execute(LOWORD(wparam));
}

void MainFrame::OnApplicationActivated(bool active) {
    // Posted: a question may not be asked while the system is still activating the window.
    if (!active) return parts.display.AbandonSwitching();
    leaving.PostCheckFiles();
    parts.leaving.UserIsBack();
}

// A dialog of the frame was closed, and with it the last one.
void MainFrame::OnEnabled() {
    parts.player.DialogClosed();
    parts.leaving.DialogClosed();
}

void MainFrame::OnFocus() {
    const Pane* const pane = parts.panes.Active();
    if (parts.commandWindow.TakesFocusBack() || (!pane && parts.commandWindow.IsVisible()))
        SetFocus(parts.commandWindow.Window());
    else if (pane)
        parts.panes.Focus(*pane);
}

bool MainFrame::OnSetCursor(LPARAM lparam) const {
    POINT point = {};
    if (LOWORD(lparam) != HTCLIENT || !GetCursorPos(&point) || !ScreenToClient(parts.window, &point)) return false;
    // A child may be there: the message of a child that did not set a cursor itself comes here too.
    if (ChildWindowFromPoint(parts.window, point) != parts.window) return false;
    SetCursor(parts.panes.CursorAt(point, parts.screen.PaneArea()));
    return true;
}

void MainFrame::OnSystemChanged(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_DPICHANGED:
        return OnDpiChanged(wparam, lparam);
    case WM_SETTINGCHANGE:
        parts.settings.FollowSystemColours();                 // High Contrast is a setting as well
        DrawingObjects::RebuildForDpi(DrawingObjects::Dpi()); // if that has failed
        return FollowSystemFonts();
    case WM_SYSCOLORCHANGE:
        parts.settings.FollowSystemColours();
        return SendToChildren(parts.window, message, wparam, lparam);
    default:
        break;
    }
}

void MainFrame::OnDpiChanged(WPARAM wparam, LPARAM lparam) {
    const RECT& place = *reinterpret_cast<const RECT*>(lparam);
    DrawingObjects::RebuildForDpi(LOWORD(wparam));
    SetWindowPos(parts.window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    FollowSystemFonts();
}

// The size of the window may be what it was, and nothing else would lay out its parts.
void MainFrame::FollowSystemFonts() {
    parts.screen.ApplyFonts();
    parts.batch.LayOutNow();
}

void MainFrame::OnDropFiles(HDROP drop) {
    const DroppedFiles files(drop);
    // While a dialog is open the frame takes nothing.
    const UINT count = leaving.HasOpenDialog() ? 0 : DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    // The program that they came from has been in front.
    if (count > 0) SetForegroundWindow(parts.window);
    commands.BeginBatch();
    WString path;
    for (UINT i = 0; i < count; ++i)
        if (DroppedName(drop, i, path)) commands.OpenText(path.Text(), NoLine, false);
    commands.EndBatch();
}

void MainFrame::OnMetricsChanged() {
    if (mainFrame) mainFrame->parts.settings.OnMetricsChanged();
}

void MainFrame::StartJournalTimer() {
    // Setting it again would begin its period again.
    if (!journalTimer.IsSet()) journalTimer.Set(parts.window, JournalTimer, JournalPeriod);
}

void MainFrame::OnTimer(WPARAM number) {
    if (number != JournalTimer) return parts.pollTimer.Tick(number);
    if (!FlushJournals(parts.documents)) journalTimer.Stop();
}

bool MainFrame::OpenFileAtLine(const Char* path, uint32_t line) { return commands.OpenText(path, line, false); }

void MainFrame::DocumentChanged(Document* document) {
    StartJournalTimer();
    if (parts.display.Active() == document) parts.batch.RefreshTitle();
}

void MainFrame::CheckChangedOnDisk(Document* document, bool running) {
    DocumentChanged(document);
    // Posted, since a command's end is noticed in the middle of a poll.
    if (!running) leaving.PostCheckFiles();
}

Answer MainFrame::ShowMessage(NativeWindow owner, const Char* text, MessageKind kind) {
    return parts.messages.Show(static_cast<HWND>(owner), text, kind);
}
