#include "view/LineStates.h"

#include "base/Assert.h"
#include "base/Scan.h"

LineStates::Entry LineStates::NearestBefore(uint32_t offset) const {
    size_t low = 0;
    size_t high = entries.Count();
    while (low < high) {
        const size_t middle = (low + high) / 2;
        if (entries[middle].offset <= offset) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    // Painting asks for one line after the other: the place asked for last is often nearer than any entry.
    const Entry found = low ? entries[low - 1] : Entry();
    return last.offset <= offset && last.offset > found.offset ? last : found;
}

uint32_t LineStates::At(SyntaxEngine& engine, const Char* text, uint32_t offset) {
    Entry at = NearestBefore(offset);
    ORVANE_ASSERT(at.offset <= offset);
    // The engine is that of all views, and carries on from whatever line was coloured last.
    engine.SetCarriedState(at.carried);
    while (offset - at.offset > Step) {
        const uint32_t from = at.offset + Step;
        const auto feed = static_cast<uint32_t>(Scan::FindLineFeed(text + from, offset - from));
        if (feed >= offset - from) break;
        const uint32_t next = from + feed + 1;
        at.state = engine.ScanLines(text + at.offset, next - at.offset, at.state);
        at.carried = engine.CarriedState();
        at.offset = next;
        // Entries ascend: between those that there are none is added. Without memory nothing is remembered, and the
        // next question takes longer.
        if (entries.IsEmpty() || entries.Last().offset < next) static_cast<void>(entries.Append(at));
    }
    at.state = engine.ScanLines(text + at.offset, offset - at.offset, at.state);
    at.carried = engine.CarriedState();
    at.offset = offset;
    last = at;
    return at.state;
}

void LineStates::ForgetAfter(uint32_t offset) {
    // A line that starts at `offset` itself keeps its state: that depends on the text before it.
    size_t kept = entries.Count();
    while (kept && entries[kept - 1].offset > offset) --kept;
    entries.Truncate(kept);
    if (last.offset > offset) last = Entry();
}
