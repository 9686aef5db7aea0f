#include "base/Heap.h"

#include "base/SystemHeap.h"

namespace {

// Process-wide, as the heap is: whoever allocates holds no object of it.
Heap::FailureHook failureHook = nullptr;

bool ShouldFail() { return failureHook && failureHook(); }

} // namespace

void Heap::Start() { SystemHeap::Start(); }

void Heap::Stop() { SystemHeap::Stop(); }

void* Heap::Allocate(size_t bytes) { return ShouldFail() ? nullptr : SystemHeap::Allocate(bytes); }

void* Heap::Resize(void* block, size_t oldBytes, size_t newBytes) {
    if (ShouldFail()) return nullptr;
    return block ? SystemHeap::Resize(block, oldBytes, newBytes) : SystemHeap::Allocate(newBytes);
}

void Heap::Free(void* block) {
    if (block) SystemHeap::Free(block);
}

void Heap::SetFailureHook(FailureHook hook) { failureHook = hook; }
