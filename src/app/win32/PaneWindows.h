#pragma once

#include "app/PaneDrag.h"
#include "app/PaneViews.h"
#include "base/win32/Handles.h"

class ViewHost;

// The panes as windows: PaneLayout says where they lie; this makes their windows, puts views into them
// and moves the focus between them.
class PaneWindows final : public PaneViews {
public:
    explicit PaneWindows(ViewHost& viewHost) : host(viewHost) {}
    PaneWindows(const PaneWindows&) = delete;
    PaneWindows& operator=(const PaneWindows&) = delete;

    // The class of the panes' windows, for as long as this lives.
    [[nodiscard]] bool Register(HINSTANCE instance);
    void SetFrame(HWND frame) { parent = frame; }

    // Null without an active view.
    View* ActiveView() const { return active ? active->view : nullptr; }
    // The same, attached to its window: for what keys and menu items do.
    View* AttachedView();
    // Whether the panes, and those that are still to be made, draw anything; on again they draw it all. A view that is
    // set meanwhile is attached only then, or by AttachedView.
    void SetRedraw(bool on);
    // Places all windows in an area that begins at the client's origin, and follows the settings.
    void LayOut(SIZE area);

    // PaneViews.
    Pane* Active() const override { return active; }
    void SetActive(Pane* pane) override;
    Pane* First() const override { return layout.Head(); }
    Pane* Next(const Pane& pane) const override { return layout.Next(pane); }
    Pane* PaneOf(const View* view) const override;
    Document* DocumentIn(const Pane& pane) const override;
    Pane* AddFirst() override;
    bool Split(Pane& pane, bool vertical, View& view) override;
    void Close(Pane& pane) override;
    void CloseAll() override;
    void SetView(Pane& pane, View& view) override;
    void GoToLine(const Pane& pane, uint32_t line) override;
    void Focus(const Pane& pane) override;
    void FocusFrame() override { SetFocus(parent); }

    // The splitter: cursors, and a drag with the mouse captured by the frame.
    HCURSOR CursorAt(POINT point, SIZE area) const;
    bool BeginDrag(POINT point, SIZE area);
    bool Drag(POINT point, SIZE area); // false when no drag is in progress
    void EndDrag();

private:
    bool MakeWindow(Pane& pane);
    // Of several panes the active one, if the additional setting MarkActivePane says so.
    void MarkActive();
    // A view that leaves a pane lives on with its document only when it is the document's last.
    static void ReleaseView(Pane& pane);
    // Nothing for a pane whose view is attached already, and for one without a view.
    static void AttachView(const Pane& pane);

    WindowClass windowClass;
    HWND parent = nullptr;
    ViewHost& host;
    PaneLayout layout;
    PaneDrag splitter{layout};
    SIZE shownArea = {}; // of the last LayOut
    Pane* active = nullptr;
    bool dragging = false;
    MouseCapture capture; // while dragging
    bool drawing = true;
};
