#include "app/win32/MainFrame.h"

#include "app/win32/Application.h"
#include "document/Document.h"
#include "document/win32/WindowPollTimer.h"
#include "resource.h"
#include "settings/win32/DrawingObjects.h"
#include "viewbase/win32/View.h"

MainFrame* mainFrame = nullptr;

namespace {

constexpr wchar_t ClassName[] = L"OrvaneMain";

} // namespace

MainFrame::MainFrame() { mainFrame = this; }

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
    return RegisterClassExW(&definition) != 0 && PaneWindows::Register(instance);
}

void MainFrame::UnregisterClasses(HINSTANCE instance) {
    UnregisterClassW(ClassName, instance);
    PaneWindows::Unregister(instance);
}

bool MainFrame::Create(HINSTANCE instance) {
    CreateWindowExW(WS_EX_ACCEPTFILES, ClassName, L"Orvane", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, instance, this);
    if (!window) return false;
    DrawingObjects::SetMetricsListener(OnMetricsChanged);
    DrawingObjects::RebuildForDpi(GetDpiForWindow(window));
    ShowWindow(window, SW_SHOWDEFAULT);
    UpdateWindow(window);
    return true;
}

LRESULT CALLBACK MainFrame::WindowProc(HWND frame, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE) mainFrame->window = frame;
    if (!mainFrame || mainFrame->window != frame) return DefWindowProcW(frame, message, wparam, lparam);
    return mainFrame->OnMessage(message, wparam, lparam);
}

LRESULT MainFrame::OnMessage(UINT message, WPARAM wparam, LPARAM lparam) {
    if (OnMouse(message, lparam)) return 0;
    switch (message) {
    case WM_CREATE:
        return OnCreate() ? 0 : -1;
    case WM_SIZE:
        LayOutNow();
        return 0;
    case WM_ACTIVATE:
        OnActivate(LOWORD(wparam) != WA_INACTIVE);
        break;
    case WM_ENABLE:
        if (wparam) OnEnabled();
        return 0;
    case WM_SETFOCUS:
        OnFocus();
        return 0;
    case WM_COMMAND:
        if (lparam && reinterpret_cast<HWND>(lparam) == commandWindow.Window()) {
            if (HIWORD(wparam) == EN_CHANGE) commandWindow.OnTextChanged();
            return 0;
        }
        // Posted by another program, it would reach the frame beneath an open dialog, too.
        if (!IsWindowEnabled(window) || ExecuteMenuCommand(LOWORD(wparam))) return 0;
        break;
    case WM_INITMENUPOPUP:
        if (HIWORD(lparam)) break; // the system menu
        OnMenuOpens(reinterpret_cast<HMENU>(wparam));
        return 0;
    case WM_SETCURSOR:
        if (OnSetCursor(lparam)) return TRUE;
        break;
    case WM_ACTIVATEAPP:
        OnApplicationActivated(wparam != 0);
        break;
    case WM_DROPFILES:
        OnDropFiles(reinterpret_cast<HDROP>(wparam));
        return 0;
    case WM_DPICHANGED:
        OnDpiChanged(wparam, lparam);
        return 0;
    case WM_CLOSE:
        if (IsWindowEnabled(window) && MayLeave()) Leave();
        return 0;
    case WM_QUERYENDSESSION:
        return MayLeave();
    case WM_ENDSESSION:
        // Everything has been asked. Beneath an open dialog all stays as it is until the process ends.
        if (wparam && IsWindowEnabled(window)) Leave();
        return 0;
    case WM_HELP:
        OpenHelp();
        return TRUE;
    case QuitNowMessage:
        LeaveNow();
        return 0;
    case CheckFilesMessage:
        CheckFiles();
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    case WM_NCDESTROY:
        window = nullptr;
        return 0;
    default:
        break;
    }
    return DefWindowProcW(window, message, wparam, lparam);
}

// The gaps between the panes are the frame's own client area.
bool MainFrame::OnMouse(UINT message, LPARAM lparam) {
    const POINT point = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
    switch (message) {
    case WM_LBUTTONDOWN:
        return panes.BeginDrag(point, PaneArea());
    case WM_MOUSEMOVE:
        return panes.Drag(point, PaneArea());
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
        panes.EndDrag();
        return true;
    default:
        return false;
    }
}

bool MainFrame::OnCreate() {
    panes.Start(window, this);
    PollOnWindow(window);
    RebuildToolMenu();
    return statusBar.Create(window, Application::globals.instance) &&
           commandWindow.Create(*this, Application::globals.instance);
}

void MainFrame::OnActivate(bool active) {
    if (!active) commandWindowFocused = GetFocus() == commandWindow.Window();
}

void MainFrame::OnApplicationActivated(bool active) {
    if (active) {
        // Posted: a question may not be asked while the system is still activating the window.
        PostMessageW(window, CheckFilesMessage, 0, 0);
    } else if (switching) {
        // The release of Ctrl will go to another program.
        switching = false;
        if (Document* document = ActiveDocument()) documents.Touch(document);
    }
}

// A dialog of the frame was closed, and with it the last one: what had to wait for that comes now.
void MainFrame::OnEnabled() {
    dialogClosed = true;
    if (checkPending) PostMessageW(window, CheckFilesMessage, 0, 0);
    if (leavePending) PostMessageW(window, QuitNowMessage, 0, 0);
    checkPending = leavePending = false;
}

void MainFrame::OnFocus() {
    const bool toCommandWindow = commandWindow.IsVisible() && (commandWindowFocused || !panes.Active());
    commandWindowFocused = false;
    if (toCommandWindow)
        SetFocus(commandWindow.Window());
    else if (panes.Active())
        PaneWindows::Focus(*panes.Active());
}

bool MainFrame::OnSetCursor(LPARAM lparam) const {
    POINT point = {};
    if (LOWORD(lparam) != HTCLIENT || !GetCursorPos(&point) || !ScreenToClient(window, &point)) return false;
    // A child may lie there: the message of a child that did not set a cursor itself comes here too.
    if (ChildWindowFromPoint(window, point) != window) return false;
    SetCursor(panes.CursorAt(point, PaneArea()));
    return true;
}

void MainFrame::OnDpiChanged(WPARAM wparam, LPARAM lparam) {
    const RECT& place = *reinterpret_cast<const RECT*>(lparam);
    DrawingObjects::RebuildForDpi(LOWORD(wparam));
    commandWindow.ApplyFont();
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void MainFrame::CheckFiles() {
    if (IsWindowEnabled(window))
        externalChanges.Run(*this);
    else
        checkPending = true;
}

// A second request that comes while the questions of the first are open waits for their answers.
bool MainFrame::MayLeave() {
    if (asksToLeave) return false;
    asksToLeave = true;
    const bool may = MayExit(*this);
    asksToLeave = false;
    return may;
}

// Beneath an open dialog nothing is closed: its caller still works with a document or a view.
void MainFrame::LeaveNow() {
    if (IsWindowEnabled(window))
        Leave();
    else
        leavePending = true;
}

// From here on nothing asks any more: documents and panes go before the window does.
void MainFrame::Leave() {
    macros.StopPlayback();
    activeView = nullptr;
    panes.CloseAll();
    sharedOutput = nullptr;
    while (!documents.IsEmpty()) documents.Remove(documents.At(0));
    commandWindow.Release();
    DestroyWindow(window);
}

void MainFrame::ShowCommandWindow(bool show) {
    if (commandWindow.IsVisible() == show) return;
    if (show) {
        commandWindow.SetVisible(true);
        LayOut();
        SetFocus(commandWindow.Window());
    } else {
        // The focus goes first: hiding a focused window would hand it to the frame.
        if (panes.Active())
            PaneWindows::Focus(*panes.Active());
        else
            SetFocus(window);
        commandWindow.SetVisible(false);
        LayOut();
    }
    RefreshTitle();
}

void MainFrame::ViewActivated(View* view) {
    Pane* pane = panes.PaneOf(view);
    if (!pane) return;
    panes.SetActive(pane);
    activeView = view;
    if (GetFocus() != view->GetWindow()) SetFocus(view->GetWindow());
    if (!switching) documents.Touch(view->GetDocument());
    RebuildTitle();
}

void MainFrame::DocumentChanged(Document* document) {
    if (activeView && activeView->GetDocument() == document) RebuildTitle();
}

void MainFrame::CheckChangedOnDisk(Document* document, bool running) {
    DocumentChanged(document);
    // Posted, since a command's end is noticed in the middle of a poll.
    if (!running) PostMessageW(window, CheckFilesMessage, 0, 0);
}
