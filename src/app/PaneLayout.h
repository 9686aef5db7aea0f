#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/Types.h"

class View;

namespace PaneEdge {
constexpr uint32_t Left = 1;
constexpr uint32_t Top = 2;
constexpr uint32_t Right = 4;
constexpr uint32_t Bottom = 8;
constexpr uint32_t Vertical = Left | Right;
constexpr uint32_t Horizontal = Top | Bottom;
} // namespace PaneEdge

// One pane. Left, top, width and height are fractions of the pane area, 16.16.
struct Pane : HeapObject {
    NativeWindow window = nullptr;
    uint32_t number = 0; // the child window's identifier
    View* view = nullptr;
    uint32_t left = 0;
    uint32_t top = 0;
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t dragEdges = 0; // PaneEdge bits: the edges that the present drag moves
    Pane* next = nullptr;   // in order of creation
    Pane* previous = nullptr;
    bool isHeir = false; // while a neighbour is closed: takes over some of its area
};

struct PixelRect {
    int32_t x = 0;
    int32_t y = 0;
    int32_t width = 0;
    int32_t height = 0;
};

// The pane area in pixels and the least that a pane's window has to measure for a character to fit in.
struct PaneRoom {
    uint32_t areaWidth = 0;
    uint32_t areaHeight = 0;
    int32_t minimumWidth = 0;
    int32_t minimumHeight = 0;
};

// Where the panes lie. It knows no windows: `window` and `view` of a pane are its user's, who gives
// them up before the pane is freed. Pixels are those of the pane area, which begins at (0, 0).
class PaneLayout {
public:
    static constexpr uint32_t Whole = 65536;
    static constexpr uint32_t FirstNumber = 8192;
    static constexpr uint32_t HitPixels = 2;
    static constexpr uint32_t MinimumPixels = 32;

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
    // (null when none could take it); a neighbour that thereby grows over other panes cuts them back. A
    // pane that is left alone fills the area. The only pane is not taken out: false.
    bool Close(Pane* pane, Pane*& heir);
    // Gives what rounding left between the panes to the panes beside it; Close and BeginDrag do so first.
    void CloseSlivers();
    // Frees all panes.
    void Clear();

    // The pane's window in an area of that size. Neither side is ever negative.
    static PixelRect Rectangle(const Pane& pane, uint32_t areaWidth, uint32_t areaHeight);

    // The kinds of edges (PaneEdge bits of all panes together) that a pointer touches, those beside an
    // empty place included; the area's own borders are none.
    uint32_t EdgesAt(int32_t x, int32_t y, uint32_t areaWidth, uint32_t areaHeight) const;
    // Marks these edges as moved by a drag and returns what EdgesAt does. Edges that touch a moved one
    // across a gap move along.
    uint32_t BeginDrag(int32_t x, int32_t y, uint32_t areaWidth, uint32_t areaHeight);
    // Moves the marked edges as near to the pointer as the minimum size and the other panes allow.
    void Drag(int32_t x, int32_t y, uint32_t areaWidth, uint32_t areaHeight);
    void EndDrag();

private:
    Pane* GiveAway(const Pane& closed);
    void CutBackBeside(const Pane& heir, const Pane& closed);

    List<Pane> panes;
    uint32_t nextNumber = FirstNumber;
};
