#include "viewbase/DragSelection.h"

void DragSelection::OnLeftButtonDown(ClientPoint at, bool shift) {
    if (!target.BeginSelection(at, shift)) return;
    active = true;
    point = at;
    surface.BeginDrag();
}

void DragSelection::OnMouseMove(ClientPoint at) {
    point = at;
    OnTimer();
}

void DragSelection::OnTimer() {
    if (active) target.ExtendSelection(point);
}

// Releasing the capture is reported like any other loss of it, and that ends the drag.
void DragSelection::OnLeftButtonUp() {
    if (active) surface.EndDrag();
}

void DragSelection::OnCaptureLost() {
    if (!active) return;
    active = false; // first: the end of the drag releases the capture, which is reported here again
    surface.EndDrag();
}
