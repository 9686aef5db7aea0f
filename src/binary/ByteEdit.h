#pragma once

#include "base/Heap.h"
#include "binary/HexDocumentView.h"

// Where a hex view's caret was before an edit and where it goes after it.
struct HexViewState {
    HexCaret before;
    HexCaret after;
};

// One edit of a binary document: bytes of the file and what they become. Records form singly linked lists, most recent
// first.
struct ByteEdit : HeapObject {
    // One byte is held inline, several in a buffer of their own.
    union Bytes {
        uint8_t one;
        uint8_t* several;
    };

    ByteEdit() = default;
    ~ByteEdit() {
        if (!multi) return;
        Heap::Free(oldBytes.several);
        Heap::Free(newBytes.several);
    }
    ByteEdit(const ByteEdit&) = delete;
    ByteEdit& operator=(const ByteEdit&) = delete;

    // Makes room for `size` bytes on both sides; false without memory.
    [[nodiscard]] bool Prepare(size_t size) {
        count = size;
        if (size == 1) return true;
        multi = true;
        oldBytes.several = Heap::AllocateArray<uint8_t>(size);
        newBytes.several = Heap::AllocateArray<uint8_t>(size);
        return oldBytes.several && newBytes.several;
    }
    uint8_t* Old() { return multi ? oldBytes.several : &oldBytes.one; }
    uint8_t* New() { return multi ? newBytes.several : &newBytes.one; }

    bool multi = false; // more than one byte
    uint64_t offset = 0;
    Bytes oldBytes = {.several = nullptr};
    Bytes newBytes = {.several = nullptr};
    size_t count = 0;
    ByteEdit* next = nullptr;
    HexDocumentView* view = nullptr; // may be gone
    HexViewState state;
    uint32_t serial = 0; // of StepSerial
    bool joined = false; // to the edit made before it: they are one step
};
