#include "viewbase/Scrolling.h"

#include <algorithm>

uint64_t ScrollState::Farthest() const {
    const uint64_t shown = page > 1 ? static_cast<uint32_t>(page) : 1;
    return count >= shown ? count - shown + 1 : 0;
}

uint64_t ScrollState::Moved(int64_t distance) const {
    // `position` may be beyond what the bar reaches, where only keys lead.
    if (distance < 0) {
        const auto back = static_cast<uint64_t>(-distance);
        return std::min(position > back ? position - back : 0, Farthest());
    }
    return std::min(position + static_cast<uint64_t>(distance), Farthest());
}

uint64_t ScrollState::After(ScrollRequest request, int32_t step, int32_t track) const {
    // The system holds the bar's position within what the bar reaches; requests start from there.
    const ScrollState held = {count, page, std::min(position, Farthest())};
    switch (request) {
    case ScrollRequest::LineBack:
        return held.Moved(-int64_t{step});
    case ScrollRequest::LineForward:
        return held.Moved(step);
    case ScrollRequest::PageBack:
        return held.Moved(-int64_t{page});
    case ScrollRequest::PageForward:
        return held.Moved(page);
    case ScrollRequest::Track:
        return Tracked(track);
    case ScrollRequest::Minimum:
        return 0;
    case ScrollRequest::Maximum:
        return Farthest();
    }
    return held.position;
}

// By how many bits the bar counts coarser.
uint32_t ScrollState::BarShift() const {
    uint32_t shift = 0;
    while (count >> shift > INT32_MAX) ++shift;
    return shift;
}

// The very end is no multiple of what a coarse bar counts in.
uint64_t ScrollState::Tracked(int32_t track) const {
    const auto units = static_cast<uint64_t>(std::max(track, 0));
    return units < count >> BarShift() ? std::min(units << BarShift(), Farthest()) : Farthest();
}

ScrollBar ScrollState::Bar() const {
    const uint32_t shift = BarShift();
    return {static_cast<int32_t>(count >> shift), page >> shift, static_cast<int32_t>(position >> shift)};
}

void ScrollBars::Show(ScrollAxis axis, const ScrollBar& bar) {
    ScrollBar& last = sent[static_cast<uint32_t>(axis)];
    if (bar == last || !surface.HasWindow()) return;
    last = bar;
    surface.SetScrollBar(axis, bar);
}
