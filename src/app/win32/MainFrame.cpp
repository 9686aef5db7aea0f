#include "app/win32/MainFrame.h"

#include "app/FrameTitle.h"
#include "app/win32/Application.h"
#include "document/Document.h"
#include "document/win32/WindowPollTimer.h"
#include "resource.h"
#include "settings/win32/DrawingObjects.h"
#include "view/win32/View.h"

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
        LayOut();
        return 0;
    case WM_SETFOCUS:
        OnFocus();
        return 0;
    case WM_COMMAND:
        if (ExecuteMenuCommand(LOWORD(wparam))) return 0;
        break;
    case WM_INITMENUPOPUP:
        OnMenuOpens(reinterpret_cast<HMENU>(wparam));
        return 0;
    case WM_SETCURSOR:
        if (OnSetCursor(lparam)) return TRUE;
        break;
    case WM_ACTIVATEAPP:
        // Posted: a question may not be asked while the system is still activating the window.
        if (wparam) PostMessageW(window, CheckFilesMessage, 0, 0);
        break;
    case WM_DROPFILES:
        OnDropFiles(reinterpret_cast<HDROP>(wparam));
        return 0;
    case WM_DPICHANGED:
        OnDpiChanged(wparam, lparam);
        return 0;
    case WM_CLOSE:
        if (MayExit(*this)) Leave();
        return 0;
    case WM_QUERYENDSESSION:
        return MayExit(*this);
    case WM_ENDSESSION:
        if (wparam) Leave();
        return 0;
    case WM_HELP:
        OpenHelp();
        return TRUE;
    case QuitNowMessage:
        Leave();
        return 0;
    case CheckFilesMessage:
        foreignChanges.Run(*this);
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

void MainFrame::OnFocus() {
    if (commandWindow.IsVisible() && !panes.Active())
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

SIZE MainFrame::PaneArea() const {
    RECT client = {};
    GetClientRect(window, &client);
    const LONG below = statusBar.Height() + (commandWindow.IsVisible() ? commandWindow.Height() : 0);
    return {client.right, client.bottom > below ? client.bottom - below : 0};
}

void MainFrame::LayOut() {
    layoutPending = batchDepth > 0;
    if (layoutPending || !statusBar.Window()) return;
    RECT client = {};
    GetClientRect(window, &client);
    statusBar.Layout(client.right);
    if (commandWindow.IsVisible()) {
        const int height = commandWindow.Height();
        MoveWindow(commandWindow.Window(), 0, client.bottom - statusBar.Height() - height, client.right, height, TRUE);
    }
    panes.LayOut(PaneArea());
}

void MainFrame::RefreshTitle() {
    if (batchDepth > 0) return; // EndBatch does it once for all
    WString text;
    const Document* active = activeView ? activeView->GetDocument() : nullptr;
    if (BuildTitle(active, macros.IsRecording(), text)) SetWindowTextW(window, Wide(text.Text()));
    if (BuildStatusText(commandWindow.IsVisible(), commands.console, text)) statusBar.SetField(0, text.Text());
}

void MainFrame::EndBatch() {
    if (--batchDepth > 0) return;
    if (layoutPending) LayOut();
    RefreshTitle();
    if (unopened.IsEmpty()) return;
    WString failed(static_cast<WString&&>(unopened));
    ReportOpenFailure(failed.Text());
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
    RefreshTitle();
}

void MainFrame::DocumentChanged(Document* document) {
    if (activeView && activeView->GetDocument() == document) RefreshTitle();
}

void MainFrame::CheckChangedOnDisk(Document* document, bool running) {
    DocumentChanged(document);
    // Posted, since a command's end is noticed in the middle of a poll.
    if (!running) PostMessageW(window, CheckFilesMessage, 0, 0);
}

int MainFrame::ShowMessage(NativeWindow owner, const Char* text, uint32_t style) {
    return MessageBoxW(owner ? static_cast<HWND>(owner) : window, Wide(text), L"Orvane", style);
}

Answer MainFrame::AskUser(const Char* text, MessageKind kind) {
    static constexpr UINT Styles[] = {MB_OK | MB_ICONINFORMATION, MB_OK | MB_ICONWARNING, MB_YESNO | MB_ICONQUESTION,
                                      MB_YESNOCANCEL | MB_ICONQUESTION};
    switch (ShowMessage(nullptr, text, Styles[static_cast<int>(kind)])) {
    case IDYES:
        return Answer::Yes;
    case IDNO:
        return Answer::No;
    case IDOK:
        return Answer::Ok;
    default:
        return Answer::Cancel;
    }
}
