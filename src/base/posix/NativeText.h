#pragma once

#include "base/Heap.h"
#include "base/Types.h"

class WString;

// Text of the program as the system wants it: NUL-terminated UTF-8.
class NativeText {
public:
    enum class Kind { Plain, Path }; // a path has its backslashes turned into slashes

    NativeText(const Char* text, Kind kind);
    ~NativeText() { Heap::Free(bytes); }
    NativeText(const NativeText&) = delete;
    NativeText& operator=(const NativeText&) = delete;

    // Null when memory ran out.
    const char* Text() const { return bytes; }

private:
    char* bytes = nullptr;
};

// The way back. False when memory runs out; `out` is then as it was.
bool FromNativeText(const char* text, NativeText::Kind kind, WString& out);
