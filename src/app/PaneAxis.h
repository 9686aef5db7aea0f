#pragma once

#include "app/Pane.h"

// One direction of the pane area, so that what holds for columns is written once and holds for rows.
struct PaneAxis {
    uint32_t Pane::*start;
    uint32_t Pane::*size;
    uint32_t Pane::*crossStart;
    uint32_t Pane::*crossSize;
    uint32_t lowEdge; // PaneEdge bits
    uint32_t highEdge;

    constexpr uint32_t Start(const Pane& pane) const { return pane.*start; }
    constexpr uint32_t End(const Pane& pane) const { return pane.*start + pane.*size; }
    constexpr uint32_t CrossStart(const Pane& pane) const { return pane.*crossStart; }
    constexpr uint32_t CrossEnd(const Pane& pane) const { return pane.*crossStart + pane.*crossSize; }
};

inline constexpr PaneAxis PaneAxisX = {&Pane::left,   &Pane::width,   &Pane::top,
                                       &Pane::height, PaneEdge::Left, PaneEdge::Right};
inline constexpr PaneAxis PaneAxisY = {&Pane::top,   &Pane::height, &Pane::left,
                                       &Pane::width, PaneEdge::Top, PaneEdge::Bottom};
