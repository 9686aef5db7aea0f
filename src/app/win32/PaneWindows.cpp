#include "app/win32/PaneWindows.h"

#include "document/Document.h"
#include "settings/AdditionalSettings.h"
#include "settings/win32/DrawingObjects.h"
#include "viewbase/win32/View.h"

namespace {

constexpr wchar_t ClassName[] = L"OrvaneVWnd";

void ResetScrollBars(HWND window) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    SetScrollInfo(window, SB_VERT, &info, FALSE);
    SetScrollInfo(window, SB_HORZ, &info, FALSE);
}

// The document's side of a window's view; null when the document has forgotten it.
DocumentView* DocumentSide(View& view) {
    const Document* document = view.GetDocument();
    if (!document) return nullptr;
    ViewNode* next = nullptr;
    do {
        DocumentView* candidate = document->EnumViews(next, next);
        if (candidate && candidate->AsView() == &view) return candidate;
    } while (next);
    return nullptr;
}

PaneArea AreaOf(SIZE size) { return {static_cast<uint32_t>(size.cx), static_cast<uint32_t>(size.cy)}; }

// A pane's frame and scroll bars, what the view shows before its text, and one character.
PaneRoom RoomIn(SIZE area, const View& view) {
    const UINT dpi = DrawingObjects::Dpi();
    const int frame = GetSystemMetricsForDpi(SM_CXEDGE, dpi) * 2;
    return {AreaOf(area),
            frame + GetSystemMetricsForDpi(SM_CXVSCROLL, dpi) + view.TextLeft() + DrawingObjects::AverageWidth(),
            frame + GetSystemMetricsForDpi(SM_CYHSCROLL, dpi) + DrawingObjects::LineHeight()};
}

bool IsLastView(const Document& document) {
    ViewNode* next = nullptr;
    document.EnumViews(nullptr, next);
    return next == nullptr;
}

} // namespace

bool PaneWindows::Register(HINSTANCE instance) {
    WNDCLASSEXW definition = {};
    definition.cbSize = sizeof(definition);
    definition.style = CS_DBLCLKS;
    definition.lpfnWndProc = DefWindowProcW;
    definition.hInstance = instance;
    definition.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    definition.lpszClassName = ClassName;
    return windowClass.Register(definition);
}

bool PaneWindows::MakeWindow(Pane& pane) {
    constexpr DWORD Style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_HSCROLL | WS_VSCROLL;
    const auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(parent, GWLP_HINSTANCE));
    pane.window = CreateWindowExW(WS_EX_CLIENTEDGE, ClassName, L"", Style, 0, 0, 0, 0, parent,
                                  reinterpret_cast<HMENU>(static_cast<UINT_PTR>(pane.number)), instance, nullptr);
    if (pane.window && !drawing) SendMessageW(static_cast<HWND>(pane.window), WM_SETREDRAW, FALSE, 0);
    return pane.window != nullptr;
}

Pane* PaneWindows::AddFirst() {
    Pane* pane = layout.MakeFirst();
    if (!pane) return nullptr;
    if (!MakeWindow(*pane)) {
        delete pane;
        return nullptr;
    }
    layout.Adopt(pane, nullptr, false);
    return pane;
}

bool PaneWindows::Split(Pane& pane, bool vertical, View& view) {
    Pane* made = layout.MakeHalf(pane, vertical, RoomIn(shownArea, view));
    if (!made) return false;
    if (!MakeWindow(*made)) {
        delete made;
        return false;
    }
    SetView(*made, view);
    layout.Adopt(made, &pane, vertical);
    return true;
}

void PaneWindows::Close(Pane& pane) {
    ReleaseView(pane);
    const HWND doomed = static_cast<HWND>(pane.window);
    Pane* heir = nullptr;
    static_cast<void>(layout.Close(&pane, heir)); // of several panes, so that it is taken out
    active = heir ? heir : layout.Head();
    ::DestroyWindow(doomed);
    Focus(*active);
}

void PaneWindows::CloseAll() {
    active = nullptr;
    for (Pane* pane = layout.Head(); pane; pane = pane->next) {
        ReleaseView(*pane);
        ::DestroyWindow(static_cast<HWND>(pane->window));
        pane->window = nullptr;
    }
    layout.Clear();
}

void PaneWindows::ReleaseView(Pane& pane) {
    View* view = pane.view;
    pane.view = nullptr;
    if (!view) return;
    view->Detach();
    const Document* document = view->GetDocument();
    DocumentView* side = DocumentSide(*view);
    if (side && document && !IsLastView(*document)) side->Destroy();
}

void PaneWindows::SetView(Pane& pane, View& view) {
    if (pane.view == &view) return;
    ReleaseView(pane);
    pane.view = &view;
    view.SetHost(&host);
    // Of many files that are opened at once most are never seen, and to attach a view takes longer than its file.
    if (drawing) AttachView(pane);
    MarkActive();
}

void PaneWindows::AttachView(const Pane& pane) {
    View* const view = pane.view;
    if (!view || view->GetWindow()) return;
    const HWND window = static_cast<HWND>(pane.window);
    ResetScrollBars(window);
    view->Attach(window);
    // The focus stays with the window, so the system sends the new view no message.
    if (GetFocus() == window) SendMessageW(window, WM_SETFOCUS, 0, 0);
    view->Invalidate();
}

void PaneWindows::SetActive(Pane* pane) {
    active = pane;
    MarkActive();
}

void PaneWindows::MarkActive() {
    const Pane* const first = layout.Head();
    const bool marks = additionalSettings.MarkActivePane && first && first->next;
    for (const Pane* pane = first; pane; pane = pane->next)
        if (pane->view) pane->view->SetMarked(marks && pane == active);
}

View* PaneWindows::AttachedView() {
    if (!active) return nullptr;
    AttachView(*active);
    return active->view;
}

void PaneWindows::GoToLine(const Pane& pane, uint32_t line) { pane.view->GoToLine(line, false); }

void PaneWindows::Focus(const Pane& pane) {
    const HWND window = static_cast<HWND>(pane.window);
    // A close may leave panes that overlap.
    if (layout.Next(pane) != &pane)
        SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (GetFocus() != window) SetFocus(window);
}

Pane* PaneWindows::PaneOf(const View* view) const {
    for (Pane* pane = layout.Head(); pane; pane = pane->next)
        if (pane->view == view) return pane;
    return nullptr;
}

Document* PaneWindows::DocumentIn(const Pane& pane) const { return pane.view ? pane.view->GetDocument() : nullptr; }

void PaneWindows::SetRedraw(bool on) {
    drawing = on;
    for (const Pane* pane = layout.Head(); pane; pane = pane->next) {
        const HWND window = static_cast<HWND>(pane->window);
        if (on) AttachView(*pane);
        SendMessageW(window, WM_SETREDRAW, on, 0);
        if (on) RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
    }
}

void PaneWindows::LayOut(SIZE area) {
    shownArea = area;
    MarkActive();
    const PaneArea filled = AreaOf({area.cx > 0 ? area.cx : 0, area.cy > 0 ? area.cy : 0});
    for (const Pane* pane = layout.Head(); pane; pane = pane->next) {
        const PixelRect place = PaneLayout::Rectangle(*pane, filled);
        MoveWindow(static_cast<HWND>(pane->window), place.x, place.y, place.width, place.height, TRUE);
    }
}

HCURSOR PaneWindows::CursorAt(POINT point, SIZE area) const {
    const uint32_t edges = splitter.EdgesAt({point.x, point.y}, AreaOf(area));
    const bool sideways = (edges & PaneEdge::Vertical) != 0;
    const bool upright = (edges & PaneEdge::Horizontal) != 0;
    if (sideways && upright) return LoadCursorW(nullptr, IDC_SIZEALL);
    if (sideways) return LoadCursorW(nullptr, IDC_SIZEWE);
    return LoadCursorW(nullptr, upright ? IDC_SIZENS : IDC_ARROW);
}

bool PaneWindows::BeginDrag(POINT point, SIZE area) {
    dragging = splitter.Begin({point.x, point.y}, AreaOf(area)) != 0;
    if (dragging) capture.Take(parent);
    return dragging;
}

bool PaneWindows::Drag(POINT point, SIZE area) {
    if (!dragging) return false;
    splitter.MoveTo({point.x, point.y}, AreaOf(area));
    LayOut(area);
    return true;
}

void PaneWindows::EndDrag() {
    if (!dragging) return;
    dragging = false;
    splitter.End();
    capture.Release();
}
