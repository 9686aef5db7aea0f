#include "app/PaneFacing.h"

#include <initializer_list>

uint32_t NextRow(const Pane* head, const PaneAxis& axis, uint32_t row, uint32_t end) {
    uint32_t next = end;
    for (const Pane* pane = head; pane; pane = pane->next)
        for (const uint32_t edge : {axis.CrossStart(*pane), axis.CrossEnd(*pane)})
            if (edge > row && edge < next) next = edge;
    return next;
}

Facing FacingInRow(Pane* head, const PaneAxis& axis, const Pane& from, uint32_t row, bool high) {
    Facing facing = {nullptr, high ? Pane::Whole : 0, 0, 0};
    for (Pane* pane = head; pane; pane = pane->next) {
        if (pane == &from || row < axis.CrossStart(*pane) || row >= axis.CrossEnd(*pane)) continue;
        // Panes that overlap `from` along the axis are skipped: the gap is never negative.
        if (high ? axis.Start(*pane) < axis.End(from) : axis.End(*pane) > axis.Start(from)) continue;
        const uint32_t edge = high ? axis.Start(*pane) : axis.End(*pane);
        if (facing.pane && (high ? edge >= facing.edge : edge <= facing.edge)) continue;
        facing.pane = pane;
        facing.edge = edge;
    }
    facing.gap = high ? facing.edge - axis.End(from) : axis.Start(from) - facing.edge;
    return facing;
}
