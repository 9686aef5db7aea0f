#include "app/PaneDrag.h"

#include "app/PaneFacing.h"

#include <algorithm>
#include <initializer_list>

// In every row the edges on both sides of a gap have to move together,
// or panes would overlap or leave a hole. So a moved edge takes along the edges that touch it on the
// other side, also where the pointer does not reach them: at a gap that ends in a T, for example.

namespace {

constexpr uint32_t Whole = Pane::Whole;

uint32_t FractionOf(int32_t pixels, uint32_t area) {
    if (pixels <= 0 || area == 0) return 0;
    return static_cast<uint32_t>(std::min<uint64_t>(static_cast<uint64_t>(pixels) * Whole / area, Whole));
}

uint32_t FractionOfLength(uint32_t pixels, uint32_t area) {
    return static_cast<uint32_t>(uint64_t{pixels} * Whole / area);
}

// Everything but the border of the area can be dragged: a gap, and the side of an empty place.
bool IsDraggable(Pane* head, const PaneAxis& axis, const Pane& pane, bool high) {
    bool found = false;
    VisitFacing(head, axis, pane, high,
                [&](const Facing& facing) { found = found || facing.pane || !facing.Touches(); });
    return found;
}

bool IsWithin(uint32_t position, uint32_t start, uint32_t end, uint32_t slack) {
    return position + slack >= start && position <= end + slack;
}

struct Pointer {
    uint32_t along;
    uint32_t across;
    uint32_t slackAlong;
    uint32_t slackAcross;
};

// The edges of `pane` along one axis that the pointer touches.
uint32_t TouchedEdges(Pane* head, const PaneAxis& axis, const Pane& pane, const Pointer& pointer) {
    if (!IsWithin(pointer.across, axis.CrossStart(pane), axis.CrossEnd(pane), pointer.slackAcross)) return 0;
    uint32_t edges = 0;
    for (const bool high : {false, true}) {
        const uint32_t edge = high ? axis.End(pane) : axis.Start(pane);
        if (IsWithin(pointer.along, edge, edge, pointer.slackAlong) && IsDraggable(head, axis, pane, high))
            edges |= high ? axis.highEdge : axis.lowEdge;
    }
    return edges;
}

// Marks the edges that touch marked ones, until there are no more.
void MarkTouching(Pane* head, const PaneAxis& axis) {
    bool grown = false;
    const auto mark = [&](const Facing& facing, uint32_t edge) {
        if (!facing.pane || !facing.Touches() || (facing.pane->dragEdges & edge)) return;
        facing.pane->dragEdges |= edge;
        grown = true;
    };
    do {
        grown = false;
        for (Pane* pane = head; pane; pane = pane->next) {
            if (pane->dragEdges & axis.highEdge)
                VisitFacing(head, axis, *pane, true, [&](const Facing& facing) { mark(facing, axis.lowEdge); });
            if (pane->dragEdges & axis.lowEdge)
                VisitFacing(head, axis, *pane, false, [&](const Facing& facing) { mark(facing, axis.highEdge); });
        }
    } while (grown);
}

// Where the marked edges may be put; empty when `low` is above `high`.
struct Range {
    int64_t low = 0;
    int64_t high = Whole;
    // The far sides of the empty places that the edges face; out of reach without one.
    int64_t emptyLow = -1;
    int64_t emptyHigh = Whole + 1;

    void AtLeast(int64_t position) { low = std::max(low, position); }
    void AtMost(int64_t position) { high = std::min(high, position); }

    // The allowed place that is nearest. One that would leave less than `slack` of an empty place closes
    // it: at the border of a screen no pointer gets farther.
    uint32_t Nearest(int64_t position, int64_t slack) const {
        position = std::clamp(position, low, high);
        if (emptyLow == low && position - low <= slack) position = low;
        if (emptyHigh == high && high - position <= slack) position = high;
        return static_cast<uint32_t>(position);
    }
};

// A marked edge stops at what it faces across an empty place, and beside such a place it only moves
// forward: nothing would cover what it left.
void LimitEdge(Pane* head, const PaneAxis& axis, const Pane& pane, bool high, Range& range) {
    VisitFacing(head, axis, pane, high, [&](const Facing& facing) {
        if (facing.pane && facing.Touches()) return;
        if (high) {
            range.AtMost(facing.edge);
            if (facing.IsThin()) return;
            range.AtLeast(axis.End(pane));
            range.emptyHigh = std::min<int64_t>(range.emptyHigh, facing.edge);
        } else {
            range.AtLeast(facing.edge);
            if (facing.IsThin()) return;
            range.AtMost(axis.Start(pane));
            range.emptyLow = std::max<int64_t>(range.emptyLow, facing.edge);
        }
    });
}

Range AllowedRange(Pane* head, const PaneAxis& axis, int64_t minimum) {
    Range range;
    const uint32_t both = axis.lowEdge | axis.highEdge;
    for (const Pane* pane = head; pane; pane = pane->next) {
        if ((pane->dragEdges & both) == both) return {1, 0}; // it is as narrow as a gap
        if (pane->dragEdges & axis.highEdge) {
            range.AtLeast(axis.Start(*pane) + minimum);
            LimitEdge(head, axis, *pane, true, range);
        } else if (pane->dragEdges & axis.lowEdge) {
            range.AtMost(axis.End(*pane) - minimum);
            LimitEdge(head, axis, *pane, false, range);
        }
    }
    return range;
}

void MoveEdges(Pane* head, const PaneAxis& axis, uint32_t position) {
    for (Pane* pane = head; pane; pane = pane->next) {
        const uint32_t end = pane->dragEdges & axis.highEdge ? position : axis.End(*pane);
        if (pane->dragEdges & axis.lowEdge) pane->*axis.start = position;
        pane->*axis.size = end - axis.Start(*pane);
    }
}

void DragAxis(Pane* head, const PaneAxis& axis, uint32_t position, uint32_t area) {
    uint32_t marked = 0;
    for (const Pane* pane = head; pane; pane = pane->next) marked |= pane->dragEdges & (axis.lowEdge | axis.highEdge);
    if (!marked || area == 0) return;
    // Moving along the other axis may have brought other edges together.
    MarkTouching(head, axis);
    const Range range = AllowedRange(head, axis, FractionOfLength(PaneDrag::MinimumPixels, area));
    if (range.low > range.high) return; // some pane is too small already
    MoveEdges(head, axis, range.Nearest(position, FractionOfLength(PaneDrag::HitPixels, area)));
}

// The edges of one pane that the pointer touches; the area is not empty.
uint32_t EdgesOf(Pane* head, const Pane& pane, PanePoint point, PaneArea area) {
    const uint32_t slackX = FractionOfLength(PaneDrag::HitPixels, area.width);
    const uint32_t slackY = FractionOfLength(PaneDrag::HitPixels, area.height);
    const uint32_t left = FractionOf(point.x, area.width);
    const uint32_t top = FractionOf(point.y, area.height);
    return TouchedEdges(head, PaneAxisX, pane, {left, top, slackX, slackY}) |
           TouchedEdges(head, PaneAxisY, pane, {top, left, slackY, slackX});
}

} // namespace

uint32_t PaneDrag::EdgesAt(PanePoint point, PaneArea area) const {
    uint32_t edges = 0;
    if (area.IsEmpty()) return edges;
    for (const Pane* pane = layout.Head(); pane; pane = pane->next) edges |= EdgesOf(layout.Head(), *pane, point, area);
    return edges;
}

uint32_t PaneDrag::Begin(PanePoint point, PaneArea area) {
    End();
    layout.CloseSlivers();
    uint32_t edges = 0;
    if (area.IsEmpty()) return edges;
    for (Pane* pane = layout.Head(); pane; pane = pane->next) {
        pane->dragEdges = EdgesOf(layout.Head(), *pane, point, area);
        edges |= pane->dragEdges;
    }
    return edges;
}

void PaneDrag::MoveTo(PanePoint point, PaneArea area) {
    DragAxis(layout.Head(), PaneAxisX, FractionOf(point.x, area.width), area.width);
    DragAxis(layout.Head(), PaneAxisY, FractionOf(point.y, area.height), area.height);
}
