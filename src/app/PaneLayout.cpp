#include "app/PaneLayout.h"

#include "app/PaneFacing.h"
#include "app/PaneHeirs.h"

#include <algorithm>
#include <initializer_list>

namespace {

// Extends a side of the pane over the sliver that it faces, where it faces nothing wider.
void ExtendOverSliver(Pane* head, const PaneAxis& axis, Pane& pane, bool high) {
    uint32_t reach = Pane::Whole;
    bool isBesideEmpty = false;
    VisitFacing(head, axis, pane, high, [&](const Facing& facing) {
        reach = std::min(reach, facing.gap);
        isBesideEmpty = isBesideEmpty || (!facing.Touches() && !facing.IsThin());
    });
    if (isBesideEmpty || reach > SliverUnits) return;
    if (!high) pane.*axis.start -= reach;
    pane.*axis.size += reach;
}

int32_t Scaled(uint32_t fraction, uint32_t pixels) { return static_cast<int32_t>(uint64_t{fraction} * pixels >> 16); }

// Pixels are left between panes: the gap that the mouse takes hold of. A pane as long as the area has none.
int32_t PixelStart(uint32_t start, uint32_t pixels) { return Scaled(start, pixels) + (start != 0); }

int32_t PixelSize(uint32_t size, uint32_t pixels) {
    const int32_t scaled = Scaled(size, pixels) - (size != Pane::Whole);
    return scaled < 0 ? 0 : scaled;
}

void FillArea(Pane& pane) {
    pane.left = pane.top = 0;
    pane.width = pane.height = Pane::Whole;
}

bool HalfHasRoom(const Pane& pane, const PaneAxis& axis, const PaneRoom& room) {
    if (pane.*axis.size < 2) return false;
    const bool vertical = &axis == &PaneAxisX;
    return PixelSize(vertical ? pane.width / 2 : pane.width, room.area.width) >= room.minimumWidth &&
           PixelSize(vertical ? pane.height : pane.height / 2, room.area.height) >= room.minimumHeight;
}

} // namespace

PaneLayout::~PaneLayout() { Clear(); }

Pane* PaneLayout::MakeFirst() {
    auto* const pane = new Pane;
    if (!pane) return nullptr;
    pane->number = nextNumber++;
    FillArea(*pane);
    return pane;
}

Pane* PaneLayout::MakeHalf(const Pane& pane, bool vertical, const PaneRoom& room) {
    const PaneAxis& axis = vertical ? PaneAxisX : PaneAxisY;
    if (!HalfHasRoom(pane, axis, room)) return nullptr;
    Pane* const half = MakeFirst();
    if (!half) return nullptr;
    half->left = pane.left;
    half->top = pane.top;
    half->width = pane.width;
    half->height = pane.height;
    half->*axis.size /= 2;
    half->*axis.start += half->*axis.size;
    return half;
}

void PaneLayout::Adopt(Pane* made, Pane* halved, bool vertical) {
    UnmarkEdges();
    // Only now: until the half had its window, the pane was to keep its size.
    if (halved) halved->*(vertical ? PaneAxisX : PaneAxisY).size /= 2;
    panes.Append(made);
}

bool PaneLayout::Close(Pane* pane, Pane*& heir) {
    heir = nullptr;
    if (panes.head == panes.tail) return false;
    UnmarkEdges();
    CloseSlivers();
    heir = GiveAreaAway(panes.head, *pane);
    panes.Remove(pane);
    delete pane;
    // Whatever halving and dragging have rounded off, nobody else is there to have it.
    if (panes.head == panes.tail) FillArea(*panes.head);
    return true;
}

void PaneLayout::CloseSlivers() {
    // Rounding cuts the right and lower sides, so extending these restores what was there before the
    // splits. The other sides are for what is left beside an empty place.
    for (const bool high : {true, false})
        for (const PaneAxis* axis : {&PaneAxisX, &PaneAxisY})
            for (Pane* pane = panes.head; pane; pane = pane->next) ExtendOverSliver(panes.head, *axis, *pane, high);
}

void PaneLayout::UnmarkEdges() {
    for (Pane* pane = panes.head; pane; pane = pane->next) pane->dragEdges = 0;
}

void PaneLayout::Clear() {
    while (Pane* pane = panes.TakeHead()) delete pane;
}

PixelRect PaneLayout::Rectangle(const Pane& pane, PaneArea area) {
    return {PixelStart(pane.left, area.width), PixelStart(pane.top, area.height), PixelSize(pane.width, area.width),
            PixelSize(pane.height, area.height)};
}
