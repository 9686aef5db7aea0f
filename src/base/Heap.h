#pragma once

#include "base/Types.h"

#include <new>

// The only source of memory. A new block is zero-filled; a request that cannot be met returns null
// and nothing is thrown.
namespace Heap {

// Takes the process heap before, and gives it up after, every other operation here.
void Start();
void Stop();

[[nodiscard]] void* Allocate(size_t bytes);

// Makes `block` (of `oldBytes`, or null) `newBytes` long, in place when the system can. Bytes beyond
// `oldBytes` are zero. Returns the block, which may have moved; on failure null, with `block` left
// as it was.
[[nodiscard]] void* Resize(void* block, size_t oldBytes, size_t newBytes);

// Accepts null.
void Free(void* block);

template <class T> [[nodiscard]] T* AllocateArray(size_t count) {
    return count > SIZE_MAX / sizeof(T) ? nullptr : static_cast<T*>(Allocate(count * sizeof(T)));
}

// For tests: asked before every Allocate and Resize; an answer of true makes that call fail. Null
// (the normal state) lets everything through.
using FailureHook = bool (*)();
void SetFailureHook(FailureHook hook);

} // namespace Heap

// Base of every class whose objects are made with `new`, which then returns null on failure.
// The zero fill is not relied on for fields: a compiler may assume that an object has no value
// before its constructor ran, so fields have initialisers of their own.
class HeapObject {
public:
    static void* operator new(size_t bytes) noexcept { return Heap::Allocate(bytes); }
    static void* operator new(size_t, void* place) noexcept { return place; }
    static void operator delete(void* block) noexcept { Heap::Free(block); }
    static void operator delete(void*, void*) noexcept {}
};
