#pragma once

#include "base/Platform.h"

// An open file, read once from its start to its end in pieces that are small enough to stay in the processor's cache.
// The bytes that are not done with stay at the start of the next piece.
class FilePieces {
public:
    static constexpr size_t MaxBytes = 65536; // bytes in a piece

    // Of `opened`, which must outlive this, the first `size` bytes are read, fewer when it has become shorter.
    FilePieces(Platform::File& opened, uint64_t size) : file(opened), wholeSize(size), left(size) {}
    ~FilePieces() { Heap::Free(piece); }
    FilePieces(const FilePieces&) = delete;
    FilePieces& operator=(const FilePieces&) = delete;

    // Reads on until the piece is full. False when the file cannot be read, or without memory.
    [[nodiscard]] bool Fill();
    // The same into memory of the caller's, past the piece; fewer than `most` bytes are the last.
    [[nodiscard]] bool ReadInto(void* out, size_t most, size_t& read);
    // The piece; its bytes may be changed.
    uint8_t* Bytes() { return piece; }
    size_t Count() const { return count; }
    // Whether nothing comes after it.
    bool IsLast() const { return left == 0; }
    // Bytes of the file before the piece, and from its start on.
    uint64_t Offset() const { return wholeSize - left - count; }
    uint64_t Remaining() const { return left + count; }
    // Is done with the first `done` bytes of the piece.
    void Drop(size_t done);
    // Makes the piece one that begins at `offset`, which is not after its start: what was read since then is read
    // again. False when the file cannot be read.
    [[nodiscard]] bool GoBack(uint64_t offset);

private:
    Platform::File& file;
    uint64_t wholeSize;
    uint64_t left; // bytes that are still to be read
    uint8_t* piece = nullptr;
    size_t count = 0;
};
