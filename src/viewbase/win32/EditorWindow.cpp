#include "viewbase/win32/EditorWindow.h"

#include "base/Platform.h"
#include "base/win32/Input.h"
#include "document/DocumentView.h"
#include "resource.h"
#include "viewbase/HostCalls.h"
#include "viewbase/win32/Clipboard.h"
#include "viewbase/win32/TextPainter.h"
#include "viewbase/win32/ViewFont.h"

#include <algorithm>

namespace {

constexpr UINT_PTR DragTimerNumber = 1;
constexpr UINT DragPeriod = 100; // milliseconds

} // namespace

bool EditorWindow::CreateIn(NativeWindow parent) {
    if (!parent) return true;
    const HWND created = ViewClass::CreateIn(static_cast<HWND>(parent), this);
    if (created) Attach(created);
    return created != nullptr;
}

void EditorWindow::DestroyView() {
    const HWND doomed = window;
    // A window that was made for a view has had it as its user data from the start; a pane's had none before.
    const bool ownWindow = doomed && previousProcedure && previousUserData;
    Detach();
    // Only a window that was made for this view goes with it; a pane's stays with its pane.
    if (ownWindow) ::DestroyWindow(doomed);
    delete this; // takes the editor out of its document
}

Document* EditorWindow::Attach(HWND newWindow) {
    Document* document = View::Attach(newWindow);
    Input().OnAttached();
    if (focused) reader.Shown(window);
    return document;
}

void EditorWindow::Detach() {
    EndDrag(); // the window, still ours, gets the message that it has lost the mouse
    reader.Leave();
    View::Detach();
}

void EditorWindow::OnSize(SettingsEffect kind) {
    if (!window) return;
    RECT client = {};
    GetClientRect(window, &client);
    backBuffer.Rebuild(client.right, Metrics().lineHeight);
    LoadBeamCursor();
    Input().OnSize(kind == SettingsEffect::Engine);
}

LRESULT EditorWindow::WindowProc(UINT message, WPARAM wparam, LPARAM lparam) {
    if (HandleMouse(message, wparam, lparam)) return 0;
    switch (message) {
    case WM_SETFOCUS:
        focused = true;
        Input().OnFocus();
        break;
    case WM_PAINT:
        OnPaint();
        return 0;
    // Every pixel is drawn by WM_PAINT; erasing first would flicker.
    case WM_ERASEBKGND:
        return 1;
    case WM_TIMER:
        if (wparam == DragTimerNumber) Input().Drag().OnTimer();
        if (wparam == ScreenReader::TimerNumber) reader.OnTimer(window);
        return 0;
    case WM_GETOBJECT:
        if (const LRESULT answer = reader.Answer(window, wparam, lparam)) return answer;
        break;
    case WM_HSCROLL:
        OnScrollMessage(ScrollAxis::Horizontal, LOWORD(wparam));
        return 0;
    case WM_VSCROLL:
        OnScrollMessage(ScrollAxis::Vertical, LOWORD(wparam));
        return 0;
    case WM_CONTEXTMENU:
        if (OnContextMenu(lparam)) return 0;
        break;
    case WM_DESTROY:
        reader.Leave();
        break;
    case WM_NCDESTROY:
        // A window that is destroyed gets no WM_CAPTURECHANGED.
        dragTimer.Stop();
        Input().Drag().OnCaptureLost();
        break;
    default:
        break;
    }
    return View::WindowProc(message, wparam, lparam);
}

bool EditorWindow::HandleMouse(UINT message, WPARAM wparam, LPARAM lparam) {
    const ClientPoint point = {GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam)};
    switch (message) {
    case WM_MOUSEMOVE:
        Input().Drag().OnMouseMove(point);
        return true;
    case WM_LBUTTONDOWN:
        Input().Drag().OnLeftButtonDown(point, (wparam & MK_SHIFT) != 0);
        return true;
    case WM_LBUTTONUP:
        Input().Drag().OnLeftButtonUp();
        return true;
    // However the capture has ended: EndDrag comes here as well.
    case WM_CAPTURECHANGED:
        dragTimer.Stop();
        Input().Drag().OnCaptureLost();
        return true;
    case WM_MOUSEWHEEL:
        OnWheel(wparam);
        return true;
    default:
        return false;
    }
}

void EditorWindow::OnPaint() {
    const PaintDc target(window);
    PaintRows(target.Get(), target.Area().top, target.Area().bottom);
}

void EditorWindow::Draw(HDC target, RowSource& rows) {
    RECT client = {};
    GetClientRect(window, &client);
    TextPainter(target, DrawsUnbuffered() ? nullptr : backBuffer.Dc(), client.right, rows).DrawAll();
}

void EditorWindow::OnWheel(WPARAM wparam) {
    UINT lines = 3;
    if (!SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0)) lines = 3;
    // "One screen at a time" is the value -1.
    const int perNotch = lines == WHEEL_PAGESCROLL ? Input().VisibleLines() : static_cast<int>(lines);
    Input().OnWheel({GET_WHEEL_DELTA_WPARAM(wparam), perNotch, (GET_KEYSTATE_WPARAM(wparam) & MK_CONTROL) != 0});
}

void EditorWindow::OnScrollMessage(ScrollAxis axis, WORD code) {
    static constexpr ScrollRequest Requests[] = {
        ScrollRequest::LineBack, ScrollRequest::LineForward, ScrollRequest::PageBack, ScrollRequest::PageForward,
        ScrollRequest::Track,    ScrollRequest::Track,       ScrollRequest::Minimum,  ScrollRequest::Maximum,
    };
    if (code >= sizeof(Requests) / sizeof(Requests[0])) return; // the end of a scroll asks for nothing
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    // The message itself has only 16 bits of the position.
    info.fMask = SIF_TRACKPOS;
    GetScrollInfo(window, axis == ScrollAxis::Vertical ? SB_VERT : SB_HORZ, &info);
    Input().OnScroll(axis, Requests[code], info.nTrackPos);
}

void EditorWindow::OnKeyDown(uint32_t key, uint32_t, uint32_t) { Input().OnKeyDown(key); }

void EditorWindow::OnChar(Char character, uint32_t, uint32_t) { Input().OnChar(character); }

void EditorWindow::TakeFocus() {
    if (window) SetFocus(window);
}

ClientSize EditorWindow::Size() const {
    RECT client = {};
    if (window) GetClientRect(window, &client);
    return {client.right, client.bottom};
}

const ViewMetrics& EditorWindow::Metrics() const { return ViewFont::Metrics(); }

void EditorWindow::InvalidateAll() {
    if (!window) return;
    InvalidateRect(window, nullptr, TRUE);
    reader.Changed(window);
}

void EditorWindow::InvalidateStrip(int32_t top, int32_t bottom) {
    if (!window) return;
    RECT strip = {};
    GetClientRect(window, &strip);
    strip.top = top;
    strip.bottom = bottom;
    InvalidateRect(window, &strip, TRUE);
    reader.Changed(window);
}

void EditorWindow::ShowCaretAt(ClientPoint point) {
    if (!window) return;
    View::ShowCaretAt({point.x, point.y}, Metrics());
    reader.Changed(window);
}

void EditorWindow::RenewCaret() {
    if (!IsCaretShown()) return;
    HideCaret();
    View::ShowCaretAt(CaretPlace(), Metrics());
}

void EditorWindow::SetScrollBar(ScrollAxis axis, const ScrollBar& bar) {
    if (!window) return;
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    // A bar that cannot scroll stays, disabled: without it the client area would be larger, and laid out again.
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMax = bar.maximum;
    info.nPage = static_cast<UINT>(bar.page);
    info.nPos = bar.position;
    SetScrollInfo(window, axis == ScrollAxis::Vertical ? SB_VERT : SB_HORZ, &info, TRUE);
}

void EditorWindow::BeginDrag() {
    if (!window) return;
    capture.Take(window);
    dragTimer.Set(window, DragTimerNumber, DragPeriod); // without it only moves of the mouse scroll
}

void EditorWindow::EndDrag() { capture.Release(); }

bool EditorWindow::ReadClipboard(WString& text, bool& wholeLine) { return Clipboard::Read(window, text, wholeLine); }

void EditorWindow::WriteClipboard(const ClipboardItem* items, uint32_t count) {
    if (!Clipboard::Write(window, items, count) && host)
        host->ShowMessage(window, HostCalls::CopyFailed, MessageKind::Warning);
}

// Asked for by a click, `place` is a point of the screen; by a key it is -1, and the menu opens below the caret. The
// menu's commands go to the active view, which this one becomes first.
bool EditorWindow::OnContextMenu(LPARAM place) {
    // The command that was chosen from it was recorded, too.
    if (host && host->GetMacroState() == MacroState::Playing) return true;
    RECT client = {};
    GetClientRect(window, &client);
    POINT point = {GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    const bool byKey = point.x == -1 && point.y == -1;
    if (byKey) {
        // The caret may be out of sight.
        point.x = std::clamp(CaretPlace().x, LONG{0}, client.right);
        point.y = std::clamp(CaretPlace().y + Metrics().lineHeight, LONG{0}, client.bottom);
        ClientToScreen(window, &point);
    } else {
        POINT inside = point;
        ScreenToClient(window, &inside);
        if (!PtInRect(&client, inside)) return false; // the scroll bars have a menu of their own
    }
    TakeFocus();
    const MenuHandle menu(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDR_CONTEXT_MENU)));
    if (menu.IsValid())
        TrackPopupMenu(GetSubMenu(menu.Get(), 0), TPM_RIGHTBUTTON, point.x, point.y, 0, GetParent(window), nullptr);
    return true;
}

uint64_t EditorWindow::Ticks() const { return Platform::Ticks(); }

void EditorWindow::SetWaitCursor(bool wait) {
    if (wait)
        cursorBeforeWait = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    else
        SetCursor(cursorBeforeWait);
}

bool EditorWindow::TakeEscape() { return TakeQueuedEscape(); }
