#pragma once

#include "app/PaneLayout.h"

// Where the pointer is, in pixels from the upper left corner of the pane area; perhaps outside.
struct PanePoint {
    int32_t x = 0;
    int32_t y = 0;
};

// Drags the gaps between the panes of a layout.
class PaneDrag {
public:
    static constexpr uint32_t HitPixels = 2;
    static constexpr uint32_t MinimumPixels = 32;

    explicit PaneDrag(PaneLayout& dragged) : layout(dragged) {}
    PaneDrag(const PaneDrag&) = delete;
    PaneDrag& operator=(const PaneDrag&) = delete;

    // The kinds of edges (PaneEdge bits of all panes together) that a pointer touches, those beside an empty place
    // included; the area's own borders are none.
    uint32_t EdgesAt(PanePoint point, PaneArea area) const;
    // Marks these edges as moved by a drag and returns what EdgesAt does. Edges that touch a moved one across a gap
    // move along.
    uint32_t Begin(PanePoint point, PaneArea area);
    // Moves the marked edges as near to the pointer as the minimum size and the other panes allow.
    void MoveTo(PanePoint point, PaneArea area);
    void End() { layout.UnmarkEdges(); }

private:
    PaneLayout& layout;
};
