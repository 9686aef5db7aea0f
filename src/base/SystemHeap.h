#pragma once

#include "base/Types.h"

// What Heap takes from the system; implemented by base/win32 and base/posix. The rules are those of the operations of
// Heap that have the same names.
namespace SystemHeap {

void Start();
void Stop();
void* Allocate(size_t bytes);
void* Resize(void* block, size_t oldBytes, size_t newBytes);
void Free(void* block);

} // namespace SystemHeap
