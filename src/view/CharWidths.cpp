#include "view/CharWidths.h"

#include "base/Heap.h"

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
}

int32_t CharWidths::Load(Char character) {
    const auto first = static_cast<Char>(character & 0xFF00);
    int32_t fetched[PageSize] = {};
    if (!fetch || !fetch(context, first, fetched)) return 0;
    if (uint16_t* page = Heap::AllocateArray<uint16_t>(PageSize)) {
        for (uint32_t i = 0; i < PageSize; ++i) page[i] = Narrow(fetched[i]);
        pages[character >> 8] = page;
    }
    return Narrow(fetched[character & 0xFF]);
}
