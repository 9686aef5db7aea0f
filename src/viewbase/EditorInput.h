#pragma once

#include "viewbase/DragSelection.h"
#include "viewbase/MouseWheel.h"
#include "viewbase/Scrolling.h"

// What a window passes on to the editor that it shows. Coordinates are client pixels.
class EditorInput {
public:
    virtual void OnAttached() = 0;                // after the window was taken over and OnSize ran
    virtual void OnSize(bool coloursChanged) = 0; // after the back buffer was rebuilt
    virtual void OnFocus() = 0;                   // before the host is told
    virtual void OnKeyDown(uint32_t key) = 0;     // a virtual-key code
    virtual void OnChar(Char character) = 0;
    virtual void OnScroll(ScrollAxis axis, ScrollRequest request, int32_t trackPosition) = 0;
    virtual void OnWheel(const WheelTurn& turn) = 0;
    // Takes what the left button and the moves of the mouse do.
    virtual DragSelection& Drag() = 0;

    // Lines that fit into the window.
    virtual int32_t VisibleLines() const = 0;
    // Repaints everything, now or once redraw is resumed.
    virtual void Invalidate() = 0;
    // Until redraw is resumed nothing is invalidated; calls nest.
    virtual void SuspendRedraw() = 0;
    virtual void ResumeRedraw() = 0;

protected:
    ~EditorInput() = default;
};
