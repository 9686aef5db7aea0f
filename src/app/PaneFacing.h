#pragma once

#include "app/PaneAxis.h"

// What lies beside the sides of a pane, for dragging, closing and the slivers of rounding. Panes that
// overlap the pane are not beside it.

// Halving rounds down, which leaves a unit between panes. CloseSlivers runs before every drag and close,
// and a pane can be halved at most 16 times in between, so up to this much counts as touching. It is a
// pixel in an area of 4096.
constexpr uint32_t SliverUnits = 16;

// What lies beside one side of a pane in a group of rows (columns, for the other axis).
struct Facing {
    Pane* pane;    // the nearest one, null up to the border of the area
    uint32_t edge; // where that begins; 0 or Pane::Whole for the border
    uint32_t gap;  // from the pane's side to `edge`
    uint32_t rows; // the length of the side that faces it

    bool Touches() const { return gap <= SliverUnits; }
    bool IsThin() const { return rows <= SliverUnits; }
};

// The end of the group of rows that begins at `row`, at most `end`: up to there the same panes lie beside
// each other.
uint32_t NextRow(const Pane* head, const PaneAxis& axis, uint32_t row, uint32_t end);

// What `from` faces in a row on its high (right, lower) or its low side.
Facing FacingInRow(Pane* head, const PaneAxis& axis, const Pane& from, uint32_t row, bool high);

// Calls visit(const Facing&) for each group of rows of the pane, from the first on.
template <class Visit> void VisitFacing(Pane* head, const PaneAxis& axis, const Pane& pane, bool high, Visit visit) {
    const uint32_t end = axis.CrossEnd(pane);
    for (uint32_t row = axis.CrossStart(pane), next = 0; row < end; row = next) {
        next = NextRow(head, axis, row, end);
        Facing facing = FacingInRow(head, axis, pane, row, high);
        facing.rows = next - row;
        visit(facing);
    }
}
