#include "app/PaneHeirs.h"

#include "app/PaneFacing.h"

#include <initializer_list>

namespace {

// One kind of neighbour that may take over a closed pane's area, by the axis along which it grows and
// by the side of the closed pane on which it lies.
struct HeirKind {
    const PaneAxis& axis;
    bool isAfter; // below or to the right
};

constexpr HeirKind heirKinds[] = {{PaneAxisY, true}, {PaneAxisY, false}, {PaneAxisX, true}, {PaneAxisX, false}};

// The length of the closed pane's side along which `pane` touches it.
uint32_t SharedSide(Pane* head, const Pane& pane, const Pane& closed, const HeirKind& kind) {
    uint32_t length = 0;
    VisitFacing(head, kind.axis, closed, kind.isAfter, [&](const Facing& facing) {
        if (facing.pane == &pane && facing.Touches()) length += facing.rows;
    });
    return length;
}

// `exactly` asks for the same span across the axis. Otherwise a pane qualifies that is no wider than the closed one and
// touches more than a corner of it.
bool IsHeir(Pane* head, const Pane& pane, const Pane& closed, const HeirKind& kind, bool exactly) {
    const PaneAxis& axis = kind.axis;
    const uint32_t shared = SharedSide(head, pane, closed, kind);
    if (exactly)
        return shared > 0 && axis.CrossStart(pane) == axis.CrossStart(closed) &&
               axis.CrossEnd(pane) == axis.CrossEnd(closed);
    return shared > SliverUnits && pane.*axis.crossSize <= closed.*axis.crossSize;
}

// All of them before any grows, which changes what lies beside the closed pane. Returns the first.
Pane* MarkHeirs(Pane* head, const Pane& closed, const HeirKind& kind, bool exactly) {
    Pane* first = nullptr;
    for (Pane* pane = head; pane; pane = pane->next) {
        pane->isHeir = IsHeir(head, *pane, closed, kind, exactly);
        if (pane->isHeir && !first) first = pane;
    }
    return first;
}

// The pane then covers the sliver between the two as well.
void TakeOver(Pane& pane, const Pane& closed, const HeirKind& kind) {
    const PaneAxis& axis = kind.axis;
    const uint32_t end = kind.isAfter ? axis.End(pane) : axis.End(closed);
    if (kind.isAfter) pane.*axis.start = axis.Start(closed);
    pane.*axis.size = end - axis.Start(pane);
}

bool Overlap(const Pane& a, const Pane& b) {
    return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
           b.top < a.top + a.height;
}

// What is left of a pane on one side of another.
struct Remainder {
    const PaneAxis* axis;
    uint32_t start;
    uint32_t size;
};

// Cuts `pane` back to the largest rectangle next to an heir that grew over it. A pane that would be left with almost
// nothing keeps its place: two panes that overlap are better than one too small to find.
void ShrinkBeside(Pane& pane, const Pane& heir) {
    constexpr uint32_t Smallest = Pane::Whole / 32;
    Remainder best = {nullptr, 0, 0};
    uint64_t bestArea = 0;
    const auto consider = [&](const PaneAxis& axis, uint32_t start, uint32_t end) {
        const uint64_t area = end > start ? uint64_t{end - start} * (pane.*axis.crossSize) : 0;
        if (area <= bestArea || end - start < Smallest) return;
        best = {&axis, start, end - start};
        bestArea = area;
    };
    for (const PaneAxis* axis : {&PaneAxisX, &PaneAxisY}) {
        consider(*axis, axis->Start(pane), axis->Start(heir));
        consider(*axis, axis->End(heir), axis->End(pane));
    }
    if (!best.axis) return;
    pane.*best.axis->start = best.start;
    pane.*best.axis->size = best.size;
}

void CutBackBeside(Pane* head, const Pane& heir, const Pane& closed) {
    for (Pane* pane = head; pane; pane = pane->next)
        if (!pane->isHeir && pane != &closed && Overlap(*pane, heir)) ShrinkBeside(*pane, heir);
}

} // namespace

Pane* GiveAreaAway(Pane* head, const Pane& closed) {
    for (const bool exactly : {true, false}) {
        for (const HeirKind& kind : heirKinds) {
            Pane* const first = MarkHeirs(head, closed, kind, exactly);
            if (!first) continue;
            for (Pane* pane = first; pane; pane = pane->next) {
                if (!pane->isHeir) continue;
                TakeOver(*pane, closed, kind);
                CutBackBeside(head, *pane, closed);
            }
            for (Pane* pane = first; pane; pane = pane->next) pane->isHeir = false;
            return first;
        }
    }
    return nullptr;
}
