#include "base/SystemHeap.h"

#include "base/List.h"
#include "base/win32/Handles.h"
#include "base/win32/Windows.h"

#include <algorithm>
#include <cstring>

// Small blocks live in the process heap. A large one gets a range of addresses twice its size, of which
// only what is used is backed by memory: it then grows in place for a long time, where the heap would
// copy it (170 ms for 200 MB). Like all of the program this is used by one thread only.

namespace {

constexpr size_t LargeSize = size_t{1} << 20;
// How many times its size the range of a block is.
constexpr size_t RangeFactor = 2;
constexpr size_t OutgrownRangeFactor = 16;
// A block that even that would not be enough for gets a range that no text outgrows.
constexpr size_t LargestOutgrown = size_t{1} << 24;
constexpr size_t LargestRange = sizeof(void*) > 4 ? size_t{1} << 34 : 0;
// What the system aligns its ranges of addresses to; memory is committed in steps of the same size.
constexpr size_t Granularity = size_t{64} * 1024;

// The header at the start of a range; the block follows it. Its size keeps blocks aligned to cache lines.
struct alignas(64) LargeBlock {
    LargeBlock* next = nullptr;
    LargeBlock* previous = nullptr;
    size_t reserved = 0; // bytes from this header on, as is `committed`
    size_t committed = 0;

    uint8_t* Start() { return reinterpret_cast<uint8_t*>(this); }
    uint8_t* Content() { return reinterpret_cast<uint8_t*>(this + 1); }
};

struct ProcessHeap {
    HANDLE system = nullptr; // for small blocks: the system's own
    List<LargeBlock> largeBlocks;
};

// Process-wide: a block that is freed says nothing but its address.
ProcessHeap heap;

// Objects of static life allocate before the start and free after the end.
HANDLE SmallBlocks() {
    if (!heap.system) heap.system = GetProcessHeap();
    return heap.system;
}

size_t RoundUp(size_t bytes) { return (bytes + Granularity - 1) & ~(Granularity - 1); }

// The header of `block`, or null when it is one of the process heap's. A range starts at a multiple of
// the granularity, so a large block is always one header above such a multiple; a small one is there only
// by chance, and only then is the (short) list walked.
LargeBlock* LargeBlockOf(void* block) {
    if (reinterpret_cast<uintptr_t>(block) % Granularity != sizeof(LargeBlock)) return nullptr;
    LargeBlock* large = heap.largeBlocks.head;
    while (large && large->Content() != block) large = large->next;
    return large;
}

size_t RangeOf(size_t needed, bool isOutgrown) {
    if (!isOutgrown) return needed * RangeFactor;
    return needed > LargestOutgrown ? std::max(needed * RangeFactor, LargestRange) : needed * OutgrownRangeFactor;
}

void* Reserve(size_t bytes) { return VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_READWRITE); }

void* AllocateLarge(size_t bytes, bool isOutgrown) {
    if (bytes > SIZE_MAX / (2 * OutgrownRangeFactor)) return nullptr;
    const size_t needed = RoundUp(bytes + sizeof(LargeBlock));
    size_t reserved = RangeOf(needed, isOutgrown);
    AddressRange range(Reserve(reserved));
    // Where addresses are short a smaller reservation may still succeed: halves it, down to what is needed.
    while (!range.IsValid() && reserved > needed) {
        reserved = std::max(RoundUp(reserved / 2), needed);
        range.Reset(Reserve(reserved));
    }
    if (!range.IsValid() || !VirtualAlloc(range.Get(), needed, MEM_COMMIT, PAGE_READWRITE)) return nullptr;
    auto* const large = new (range.Detach()) LargeBlock;
    large->reserved = reserved;
    large->committed = needed;
    heap.largeBlocks.Append(large);
    return large->Content();
}

void FreeLarge(LargeBlock* large) {
    heap.largeBlocks.Remove(large);
    const AddressRange range(large);
}

bool ResizeInPlace(LargeBlock* large, size_t oldBytes, size_t newBytes) {
    if (newBytes > large->reserved - sizeof(LargeBlock)) return false;
    const size_t needed = RoundUp(newBytes + sizeof(LargeBlock));
    // A block grown back may find its own old bytes in the pages that stayed committed; only new pages are
    // zero by themselves.
    const size_t oldRoom = large->committed - sizeof(LargeBlock);
    if (needed > large->committed) {
        if (!VirtualAlloc(large->Start() + large->committed, needed - large->committed, MEM_COMMIT, PAGE_READWRITE))
            return false;
    } else if (needed < large->committed) {
        VirtualFree(large->Start() + needed, large->committed - needed, MEM_DECOMMIT);
    }
    large->committed = needed;
    if (newBytes > oldBytes) std::memset(large->Content() + oldBytes, 0, std::min(newBytes, oldRoom) - oldBytes);
    return true;
}

} // namespace

void SystemHeap::Start() { heap.system = GetProcessHeap(); }

void SystemHeap::Stop() { heap.system = nullptr; }

void* SystemHeap::Allocate(size_t bytes) {
    return bytes < LargeSize ? HeapAlloc(SmallBlocks(), HEAP_ZERO_MEMORY, bytes) : AllocateLarge(bytes, false);
}

void* SystemHeap::Resize(void* block, size_t oldBytes, size_t newBytes) {
    LargeBlock* const large = LargeBlockOf(block);
    if (large) {
        if (ResizeInPlace(large, oldBytes, newBytes)) return block;
    } else if (newBytes < LargeSize) {
        constexpr DWORD InPlace = HEAP_ZERO_MEMORY | HEAP_REALLOC_IN_PLACE_ONLY;
        if (HeapReAlloc(SmallBlocks(), InPlace, block, newBytes)) return block;
    }
    const bool isOutgrown = large && newBytes > oldBytes;
    void* const moved = isOutgrown ? AllocateLarge(newBytes, true) : Allocate(newBytes);
    if (!moved) return nullptr;
    std::memcpy(moved, block, std::min(oldBytes, newBytes));
    Free(block);
    return moved;
}

void SystemHeap::Free(void* block) {
    LargeBlock* const large = LargeBlockOf(block);
    if (large)
        FreeLarge(large);
    else
        HeapFree(SmallBlocks(), 0, block);
}
