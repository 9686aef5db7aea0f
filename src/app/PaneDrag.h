#pragma once

#include "app/PaneLayout.h"

// Drags the gaps between the panes of a layout. Points and sizes are pixels of the pane area, which begins at (0, 0).
class PaneDrag {
public:
    static constexpr uint32_t HitPixels = 2;
    static constexpr uint32_t MinimumPixels = 32;

    explicit PaneDrag(PaneLayout& dragged) : layout(dragged) {}
    PaneDrag(const PaneDrag&) = delete;
    PaneDrag& operator=(const PaneDrag&) = delete;

    // The kinds of edges (PaneEdge bits of all panes together) that a pointer touches, those beside an empty place
    // included; the area's own borders are none.
    uint32_t EdgesAt(int32_t x, int32_t y, uint32_t areaWidth, uint32_t areaHeight) const;
    // Marks these edges as moved by a drag and returns what EdgesAt does. Edges that touch a moved one across a gap
    // move along.
    uint32_t Begin(int32_t x, int32_t y, uint32_t areaWidth, uint32_t areaHeight);
    // Moves the marked edges as near to the pointer as the minimum size and the other panes allow.
    void MoveTo(int32_t x, int32_t y, uint32_t areaWidth, uint32_t areaHeight);
    void End() { layout.UnmarkEdges(); }

private:
    PaneLayout& layout;
};
