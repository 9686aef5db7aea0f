#pragma once

#include "app/Pane.h"
#include "base/List.h"

struct PixelRect {
    int32_t x = 0;
    int32_t y = 0;
    int32_t width = 0;
    int32_t height = 0;
};

// The size of the area that the panes share, in pixels.
struct PaneArea {
    uint32_t width = 0;
    uint32_t height = 0;

    bool IsEmpty() const { return width == 0 || height == 0; }
};

// The pane area and the least pixels that a pane's window has to measure for a character to fit in.
struct PaneRoom {
    PaneArea area;
    int32_t minimumWidth = 0;
    int32_t minimumHeight = 0;
};

// Where the panes lie; PaneDrag moves the gaps between them. It knows no windows: `window` and `view` of a pane are
// its user's, who gives them up before the pane is freed. Pixels are those of the pane area, which begins at (0, 0).
class PaneLayout {
public:
    static constexpr uint32_t FirstNumber = 8192;

    PaneLayout() = default;
    ~PaneLayout();
    PaneLayout(const PaneLayout&) = delete;
    PaneLayout& operator=(const PaneLayout&) = delete;

    bool IsEmpty() const { return panes.IsEmpty(); }
    Pane* Head() const { return panes.head; }
    // The neighbours in order of creation, wrapping at the ends.
    Pane* Next(const Pane& pane) const { return pane.next ? pane.next : panes.head; }
    Pane* Previous(const Pane& pane) const { return pane.previous ? pane.previous : panes.tail; }

    // A numbered pane that covers the whole area; not yet in the layout. Null without memory.
    Pane* MakeFirst();
    // A numbered pane that covers the right (vertical) or lower half of `pane`, which itself is left as
    // it is; not yet in the layout. Null without memory, and when the halves would be smaller than `room`
    // allows or nothing at all.
    Pane* MakeHalf(const Pane& pane, bool vertical, const PaneRoom& room);
    // Puts a made pane into the layout, halving the pane it was made from (null for the first pane).
    void Adopt(Pane* made, Pane* halved, bool vertical);
    // Takes `pane` out and frees it. Its area goes to its neighbours, of which the first is returned
    // (null when none could take it); a neighbour that grows over other panes cuts them back. A
    // pane that is left alone fills the area. The only pane is not taken out: false.
    [[nodiscard]] bool Close(Pane* pane, Pane*& heir);
    // Gives what rounding left between the panes to the panes beside it; closing and dragging do so first.
    void CloseSlivers();
    // No drag moves an edge any more, as it is after every change of the layout that the drag did not make.
    void UnmarkEdges();
    // Frees all panes.
    void Clear();

    // The pane's window in an area of that size. Neither side is ever negative.
    static PixelRect Rectangle(const Pane& pane, PaneArea area);

private:
    List<Pane> panes;
    uint32_t nextNumber = FirstNumber;
};
