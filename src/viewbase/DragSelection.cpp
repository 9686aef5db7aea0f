#include "viewbase/DragSelection.h"

void DragSelection::Begin(ClientPoint at) {
    active = true;
    point = at;
    surface.BeginDrag();
}

bool DragSelection::MoveTo(ClientPoint at) {
    if (active) point = at;
    return active;
}

// Releasing the capture is reported like any other loss of it, and that ends the drag.
void DragSelection::End() {
    if (active) surface.EndDrag();
}

void DragSelection::OnCaptureLost() {
    if (!active) return;
    active = false;
    surface.EndDrag();
}
