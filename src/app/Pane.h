#pragma once

#include "base/Heap.h"
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
    static constexpr uint32_t Whole = 65536;

    NativeWindow window = nullptr;
    uint32_t number = 0; // the child window's identifier
    View* view = nullptr;
    uint32_t left = 0;
    uint32_t top = 0;
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t dragEdges = 0; // PaneEdge bits: the edges that the current drag moves
    Pane* next = nullptr;   // in order of creation
    Pane* previous = nullptr;
    bool isHeir = false; // while a neighbour is closed: takes over some of its area
};
