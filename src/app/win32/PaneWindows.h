#pragma once

#include "app/PaneLayout.h"
#include "base/win32/Windows.h"

class ViewHost;

// The panes as windows: PaneLayout says where they lie; this makes their windows, puts views into them
// and moves the focus between them.
class PaneWindows {
public:
    PaneWindows() = default;
    PaneWindows(const PaneWindows&) = delete;
    PaneWindows& operator=(const PaneWindows&) = delete;

    static bool Register(HINSTANCE instance);
    static void Unregister(HINSTANCE instance);
    void Start(HWND frame, ViewHost* viewHost) { parent = frame, host = viewHost; }

    // The first pane, covering everything; null on failure.
    Pane* AddFirst();
    // Splits `pane`; the new half shows `view`. False on failure, which changes nothing.
    bool Split(Pane* pane, bool vertical, View* view);
    // Gives a pane's area to its neighbours, of which the first becomes active and gets the focus (the
    // first pane of all when none could take the area). Not for the only pane.
    void Close(Pane* pane);
    // Releases every view and destroys every pane; no pane is active then.
    void CloseAll();

    // Shows `view` in the pane, releasing the one it showed.
    void SetView(Pane* pane, View* view);
    Pane* PaneOf(const View* view) const;
    // Whether the panes, and those that are still to be made, draw anything; on again they draw it all.
    void SetRedraw(bool on);
    // Places all windows in an area that begins at the client's origin.
    void LayOut(SIZE area);

    Pane* Active() const { return active; }
    void SetActive(Pane* pane) { active = pane; }
    Pane* First() const { return layout.Head(); }
    Pane* Next(const Pane& pane) const { return layout.Next(pane); }
    bool IsOnly(const Pane& pane) const { return layout.Next(pane) == &pane; }
    static void Focus(const Pane& pane) { SetFocus(static_cast<HWND>(pane.window)); }
    void FocusNext(bool forward);

    // The splitter: cursors, and a drag with the mouse captured by the frame.
    HCURSOR CursorAt(POINT point, SIZE area) const;
    bool BeginDrag(POINT point, SIZE area);
    bool Drag(POINT point, SIZE area); // false when no drag is in progress
    void EndDrag();

private:
    bool MakeWindow(Pane& pane);
    // A view that leaves a pane lives on with its document only when it is the document's last.
    static void ReleaseView(Pane& pane);

    HWND parent = nullptr;
    ViewHost* host = nullptr;
    PaneLayout layout;
    Pane* active = nullptr;
    bool dragging = false;
    bool drawing = true;
};
