#pragma once

#include "viewbase/EditorSurface.h"

// What a drag of the mouse selects.
class DragTarget {
public:
    // The left button went down at `point`; with Shift held the selection there is extended. False when there is
    // nothing to be selected.
    [[nodiscard]] virtual bool BeginSelection(ClientPoint point, bool extend) = 0;
    // The mouse is at `point` with the button still held: the selection reaches up to there. Asked again and again
    // as time goes by, so that a mouse held above or below the window scrolls on.
    virtual void ExtendSelection(ClientPoint point) = 0;

protected:
    ~DragTarget() = default;
};

// A selection that follows the mouse while the left button is held. Capturing the mouse and the timer are the
// window's (see EditorSurface).
class DragSelection {
public:
    DragSelection(EditorSurface& window, DragTarget& selected) : surface(window), target(selected) {}
    DragSelection(const DragSelection&) = delete;
    DragSelection& operator=(const DragSelection&) = delete;

    void OnLeftButtonDown(ClientPoint at, bool shift);
    void OnMouseMove(ClientPoint at);
    void OnTimer();
    void OnLeftButtonUp();
    // The capture went to another window, or was released.
    void OnCaptureLost();

private:
    EditorSurface& surface;
    DragTarget& target;
    bool active = false;
    ClientPoint point; // where the mouse was last
};
