#include "app/PaneAxis.h"
#include "app/PaneLayout.h"

#include <initializer_list>

// Who takes over the area of a closed pane.

namespace {

// One kind of neighbour that may take over a closed pane's area, by the axis along which it grows and
// by the side of the closed pane on which it lies.
struct HeirKind {
    const PaneAxis& axis;
    bool isBehind; // below or to the right
};

constexpr HeirKind heirKinds[] = {{PaneAxisY, true}, {PaneAxisY, false}, {PaneAxisX, true}, {PaneAxisX, false}};

bool Touches(const Pane& pane, const Pane& closed, const HeirKind& kind) {
    const PaneAxis& axis = kind.axis;
    return kind.isBehind ? axis.Start(pane) == axis.End(closed) : axis.End(pane) == axis.Start(closed);
}

// Round 0 demands the same span across the axis. Round 1 takes narrower panes too, but only those that
// lie within the closed pane's span: one that sticks out would grow over its own neighbour.
bool FitsAcross(const Pane& pane, const Pane& closed, const PaneAxis& axis, bool exactly) {
    if (exactly)
        return axis.CrossStart(pane) == axis.CrossStart(closed) && axis.CrossEnd(pane) == axis.CrossEnd(closed);
    return axis.CrossStart(pane) >= axis.CrossStart(closed) && axis.CrossEnd(pane) <= axis.CrossEnd(closed);
}

void TakeOver(Pane& pane, const Pane& closed, const HeirKind& kind) {
    if (kind.isBehind) pane.*kind.axis.start = kind.axis.Start(closed);
    pane.*kind.axis.size += closed.*kind.axis.size;
}

} // namespace

Pane* PaneLayout::GiveAway(const Pane& closed) {
    for (const bool exactly : {true, false}) {
        for (const HeirKind& kind : heirKinds) {
            Pane* first = nullptr;
            for (Pane* pane = panes.head; pane; pane = pane->next) {
                if (pane == &closed || !Touches(*pane, closed, kind)) continue;
                if (!FitsAcross(*pane, closed, kind.axis, exactly)) continue;
                TakeOver(*pane, closed, kind);
                if (!first) first = pane;
            }
            if (first) return first;
        }
    }
    return nullptr;
}
