#pragma once

#include "viewbase/EditorSurface.h"

#include <algorithm>

// Coordinates far outside of the window stay outside of it.
inline int32_t Saturate(int64_t value) {
    return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

// What a scroll bar asks for.
enum class ScrollRequest : uint32_t { LineBack, LineForward, PageBack, PageForward, Track, Minimum, Maximum };

// How far a view is scrolled along one axis, in rows or in pixels.
struct ScrollState {
    uint64_t count = 0;    // that there are
    int32_t page = 0;      // that are seen at a time
    uint64_t position = 0; // the first one seen

    // The farthest that bar and wheel reach: with one more than there is at the end of the window.
    uint64_t Farthest() const;
    // Where a request leads. `step` is what a line's worth is, `track` where the bar was dragged to.
    uint64_t After(ScrollRequest request, int32_t step, int32_t track) const;
    // `distance` further, back when that is below 0.
    uint64_t Moved(int64_t distance) const;
    // The bar, in coarser units when its 31 bits do not hold the count.
    ScrollBar Bar() const;

private:
    uint32_t BarShift() const;
    uint64_t Tracked(int32_t track) const;
};

// The scroll bars of a view's window as it shows them. Setting one costs more than painting the window, so that
// only a change is passed on.
class ScrollBars {
public:
    explicit ScrollBars(EditorSurface& window) : surface(window) {}
    ScrollBars(const ScrollBars&) = delete;
    ScrollBars& operator=(const ScrollBars&) = delete;

    // Without a window nothing happens.
    void Show(ScrollAxis axis, const ScrollBar& bar);
    // The view has another window, whose bars were never set.
    void Forget() { sent[0] = sent[1] = NeverSent; }

private:
    static constexpr ScrollBar NeverSent = {-1, -1, -1};

    EditorSurface& surface;
    ScrollBar sent[2] = {NeverSent, NeverSent};
};
