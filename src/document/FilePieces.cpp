#include "document/FilePieces.h"

#include <algorithm>
#include <cstring>

bool FilePieces::Fill() {
    if (!piece) piece = Heap::AllocateArray<uint8_t>(MaxBytes);
    size_t read = 0;
    if (!piece || !ReadInto(piece + count, MaxBytes - count, read)) return false;
    count += read;
    return true;
}

bool FilePieces::ReadInto(void* out, size_t most, size_t& read) {
    read = 0;
    const size_t wanted = static_cast<size_t>(std::min<uint64_t>(most, left));
    if (wanted && !file.Read(out, wanted, read)) return false;
    left -= read;
    if (read == wanted) return true;
    // Another program has made the file shorter.
    wholeSize -= left;
    left = 0;
    return true;
}

void FilePieces::Drop(size_t done) {
    count -= done;
    std::memmove(piece, piece + done, count);
}

bool FilePieces::GoBack(uint64_t offset) {
    if (offset == Offset()) return true;
    if (!file.Seek(offset)) return false;
    left = wholeSize - offset;
    count = 0;
    return Fill();
}
