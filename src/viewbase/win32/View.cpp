#include "viewbase/win32/View.h"

#include "base/Surrogates.h"
#include "viewbase/win32/Clipboard.h"

namespace {

constexpr wchar_t ClassName[] = L"OrvaneView";

View* ViewOf(HWND window) { return reinterpret_cast<View*>(GetWindowLongPtrW(window, GWLP_USERDATA)); }

// WM_UNICHAR, with which input tools send characters that no key types: says that it is supported and posts the WM_CHAR
// messages that keys would make, so that macros record them. The system's own conversion would truncate code points
// above U+FFFF.
LRESULT OnCodePoint(HWND window, WPARAM codePoint, LPARAM flags) {
    if (codePoint == UNICODE_NOCHAR) return TRUE;
    if (codePoint > 0x10FFFF) return FALSE;
    const auto character = static_cast<uint32_t>(codePoint);
    const bool isPair = character > 0xFFFF;
    PostMessageW(window, WM_CHAR, isPair ? Surrogates::FirstOf(character) : codePoint, flags);
    if (isPair) PostMessageW(window, WM_CHAR, Surrogates::SecondOf(character), flags);
    return FALSE;
}

// Serves both the windows of class OrvaneView and the pane windows that a view has taken over.
LRESULT CALLBACK ViewWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lparam);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
        return DefWindowProcW(window, message, wparam, lparam);
    }
    View* view = ViewOf(window);
    // Until Attach the view does not know this window: early messages are not for it.
    if (!view || view->GetWindow() != window) return DefWindowProcW(window, message, wparam, lparam);
    return view->WindowProc(message, wparam, lparam);
}

} // namespace

bool ViewClass::Register(HINSTANCE instance) {
    WNDCLASSEXW definition = {};
    definition.cbSize = sizeof(definition);
    // Without CS_DBLCLKS there are no double clicks.
    definition.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    definition.lpfnWndProc = ViewWindowProc;
    definition.hInstance = instance;
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.lpszClassName = ClassName;
    return windowClass.Register(definition) && Clipboard::WholeLineFormat() != 0;
}

HWND ViewClass::CreateIn(HWND parent, View* view) {
    RECT client = {};
    GetClientRect(parent, &client);
    return CreateWindowExW(0, ClassName, L"", WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL | WS_CLIPCHILDREN, 0, 0,
                           client.right, client.bottom, parent, nullptr, GetModuleHandleW(nullptr), view);
}

uint32_t View::SetHost(ViewHost* newHost) {
    host = newHost;
    return 1;
}

Document* View::Attach(HWND newWindow) {
    window = newWindow;
    // The view first and then the procedure, which looks for it there; Detach reverses the order.
    previousUserData = SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    previousProcedure =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ViewWindowProc)));
    focused = GetFocus() == window;
    OnSize(SettingsEffect::Layout);
    return GetDocument();
}

void View::Detach() {
    if (!window) return;
    HideCaret();
    focused = false;
    // A shared system cursor: never destroyed.
    beamCursor = nullptr;
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(previousProcedure));
    SetWindowLongPtrW(window, GWLP_USERDATA, previousUserData);
    window = nullptr;
}

void View::DestroyWindow() {
    if (!window) return;
    const HWND doomed = window;
    ::DestroyWindow(doomed);
    window = nullptr;
}

LRESULT View::WindowProc(UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_KEYDOWN:
        OnKeyDown(static_cast<uint32_t>(wparam), LOWORD(lparam), HIWORD(lparam));
        return 0;
    case WM_KEYUP:
        OnKeyUp(static_cast<uint32_t>(wparam), LOWORD(lparam), HIWORD(lparam));
        return DefWindowProcW(window, message, wparam, lparam); // which makes a WM_CONTEXTMENU of the Menu key
    case WM_CHAR:
        OnChar(static_cast<Char>(wparam), LOWORD(lparam), HIWORD(lparam));
        return 0;
    case WM_UNICHAR:
        return OnCodePoint(window, wparam, lparam);
    case WM_SIZE:
        OnSize(SettingsEffect::Layout);
        return 0;
    case WM_SETFOCUS:
        focused = true;
        if (host) host->ViewActivated(this);
        return 0;
    case WM_KILLFOCUS:
        focused = false;
        HideCaret();
        return 0;
    case WM_SETCURSOR:
        return OnSetCursor(wparam, lparam);
    case WM_MOUSEACTIVATE:
        return OnMouseActivate(wparam, lparam);
    case WM_NCPAINT:
        return OnFramePaint(wparam, lparam);
    case WM_NCDESTROY: {
        const HWND dying = window;
        caret.Destroy();
        focused = false;
        window = nullptr;
        return DefWindowProcW(dying, message, wparam, lparam);
    }
    default:
        return DefWindowProcW(window, message, wparam, lparam);
    }
}

LRESULT View::OnSetCursor(WPARAM wparam, LPARAM lparam) {
    if (beamCursor && reinterpret_cast<HWND>(wparam) == window && LOWORD(lparam) == HTCLIENT) {
        SetCursor(beamCursor);
        return 1;
    }
    return DefWindowProcW(window, WM_SETCURSOR, wparam, lparam);
}

// The click that brings the editor to the front must not move the caret.
LRESULT View::OnMouseActivate(WPARAM wparam, LPARAM lparam) {
    const HWND top = reinterpret_cast<HWND>(wparam);
    const HWND focus = GetFocus();
    if (focus != top && !IsChild(top, focus)) return MA_ACTIVATEANDEAT;
    return DefWindowProcW(window, WM_MOUSEACTIVATE, wparam, lparam);
}

void View::SetMarked(bool mark) {
    if (mark == marked) return;
    marked = mark;
    if (window) RedrawWindow(window, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
}

// The system draws the scroll bars and an edge, over which the mark goes: it takes no room.
LRESULT View::OnFramePaint(WPARAM wparam, LPARAM lparam) {
    const LRESULT result = DefWindowProcW(window, WM_NCPAINT, wparam, lparam);
    if (!marked) return result;
    RECT frame = {};
    POINT client = {};
    GetWindowRect(window, &frame);
    ClientToScreen(window, &client);
    const LONG thickness = client.x - frame.left;
    OffsetRect(&frame, -frame.left, -frame.top);
    const WindowDc target = WindowDc::WithFrame(window);
    for (LONG i = 0; i < thickness; ++i) {
        FrameRect(target.Get(), &frame, GetSysColorBrush(COLOR_HIGHLIGHT));
        InflateRect(&frame, -1, -1);
    }
    return result;
}

void View::LoadBeamCursor() {
    if (!beamCursor) beamCursor = LoadCursorW(nullptr, IDC_IBEAM);
}

void View::ShowCaretAt(POINT place, const ViewMetrics& metrics) {
    const int width = CaretPixels(metrics);
    if (!caret.IsCreated() || caretHeight != metrics.lineHeight || caretWidth != width) {
        caretHeight = metrics.lineHeight;
        caretWidth = width;
        if (!caret.Create(window, width, caretHeight)) return;
    }
    // Moving it to where it is would cost as much as any other move.
    if (!caret.IsShown() || !caretPlaced || caretPlace.x != place.x || caretPlace.y != place.y)
        SetCaretPos(place.x, place.y);
    caretPlace = place;
    caretPlaced = true;
    caret.Show();
}
