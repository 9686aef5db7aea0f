#include "viewbase/CharWidths.h"

#include "base/Heap.h"
#include "base/Scan.h"
#include "viewbase/TextDirection.h"

#include <algorithm>

namespace {

uint16_t Narrow(int32_t width) { return static_cast<uint16_t>(width < 0 ? 0 : width > 0xFFFF ? 0xFFFF : width); }

} // namespace

void CharWidths::SetSource(Fetch newFetch, void* newContext) {
    Clear();
    fetch = newFetch;
    context = newContext;
}

void CharWidths::Clear() {
    for (uint16_t*& page : pages) {
        Heap::Free(page);
        page = nullptr;
    }
    printableKnown = false;
}

int32_t CharWidths::PrintableWidth() {
    if (printableKnown) return printable;
    const int32_t width = Of(u' ');
    if (!pages[0]) return 0; // no memory for the page: asked again the next time
    const uint16_t* const page = pages[0];
    const bool alike = std::all_of(page + u' ', page + u'~' + 1, [=](uint16_t other) { return other == width; });
    printable = alike ? width : 0;
    printableKnown = true;
    return printable;
}

uint32_t CharWidths::PrintableWithin(const Char* text, uint32_t count, int64_t room) {
    const int32_t width = PrintableWidth();
    if (width == 0 || room < width) return 0;
    const int64_t fitting = room / width;
    return static_cast<uint32_t>(Scan::FindUnprintable(text, fitting < count ? static_cast<size_t>(fitting) : count));
}

int32_t CharWidths::Load(uint32_t character) {
    const uint32_t first = character - character % PageSize;
    int32_t fetched[PageSize] = {};
    if (!fetch || !fetch(context, first, fetched)) return 0;
    for (uint32_t i = 0; i < PageSize && first <= 0xFFFF; ++i) {
        const auto drawn = static_cast<Char>(first + i);
        // A mark is no control itself, so that this leads to one more page at most.
        if (TextDirection::KindOf(drawn) == TextDirection::Kind::Control) fetched[i] = Of(TextDirection::MarkOf(drawn));
    }
    if (uint16_t* page = Heap::AllocateArray<uint16_t>(PageSize)) {
        for (uint32_t i = 0; i < PageSize; ++i) page[i] = Narrow(fetched[i]);
        pages[character / PageSize] = page;
    }
    return Narrow(fetched[character % PageSize]);
}
