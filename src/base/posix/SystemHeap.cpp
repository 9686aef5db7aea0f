#include "base/SystemHeap.h"

#include <cstdlib>
#include <cstring>

namespace {

// No object may be larger, and asking the library for one is an error to the sanitizers.
constexpr size_t LargestBlock = PTRDIFF_MAX;

// A request for nothing still returns a block of its own, as the Windows heap does.
size_t AtLeastOne(size_t bytes) { return bytes ? bytes : 1; }

} // namespace

void SystemHeap::Start() {}

void SystemHeap::Stop() {}

void* SystemHeap::Allocate(size_t bytes) { return bytes > LargestBlock ? nullptr : std::calloc(AtLeastOne(bytes), 1); }

void* SystemHeap::Resize(void* block, size_t oldBytes, size_t newBytes) {
    if (newBytes > LargestBlock) return nullptr;
    auto* resized = static_cast<char*>(std::realloc(block, AtLeastOne(newBytes)));
    if (resized && newBytes > oldBytes) std::memset(resized + oldBytes, 0, newBytes - oldBytes);
    return resized;
}

void SystemHeap::Free(void* block) { std::free(block); }
