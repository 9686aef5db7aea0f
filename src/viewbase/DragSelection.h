#pragma once

#include "viewbase/EditorSurface.h"

// A selection that follows the mouse while the left button is held. The window's capture and timer belong to
// it. What the selection reaches is the view's to decide.
class DragSelection {
public:
    explicit DragSelection(EditorSurface& window) : surface(window) {}
    DragSelection(const DragSelection&) = delete;
    DragSelection& operator=(const DragSelection&) = delete;

    bool IsActive() const { return active; }
    // Where the mouse was last. The timer asks again for the same point: held above or below the window, the
    // mouse scrolls on.
    ClientPoint Point() const { return point; }

    void Begin(ClientPoint at);
    // The mouse was moved. False, with nothing to be done, while no button is held.
    [[nodiscard]] bool MoveTo(ClientPoint at);
    // The button was released.
    void End();
    // The capture went to another window, or back by End.
    void OnCaptureLost();

private:
    EditorSurface& surface;
    bool active = false;
    ClientPoint point;
};
