#include "binary/FileWindow.h"

#include "base/Assert.h"
#include "base/Heap.h"

#include <algorithm>
#include <cstring>

bool FileWindow::Open(const Char* fileName) {
    using Mode = Platform::File::Mode;
    Close();
    bool opened = file.Open(fileName, Mode::ReadWrite);
    if (!opened) {
        opened = file.Open(fileName, Mode::ReadShared);
        readOnly = true;
    }
    if (opened && file.GetSize(size) && AllocateWindow()) return true;
    Close();
    return false;
}

void FileWindow::Close() {
    file.Close();
    size = 0;
    readOnly = false;
    Heap::Free(block);
    block = window = nullptr;
    start = 0;
    valid = 0;
}

// On a cache line's start: there the system copies what it reads measurably faster.
bool FileWindow::AllocateWindow() {
    block = Heap::AllocateArray<uint8_t>(CacheLine + Room + Capacity);
    if (!block) return false;
    window = block + Room + (CacheLine - reinterpret_cast<uintptr_t>(block) % CacheLine);
    return true;
}

// Writing past the end of a file that has become shorter would make it grow, and what is written into one that was
// deleted or replaced would be lost.
bool FileWindow::MayBeWritten(const Char* fileName) {
    uint64_t sizeNow = 0;
    return !readOnly && file.GetSize(sizeNow) && sizeNow >= size && !file.IsDeleted() && file.IsAt(fileName);
}

uint32_t FileWindow::PageBytes(uint64_t pageStart) const {
    if (pageStart >= size) return 0;
    return static_cast<uint32_t>(std::min<uint64_t>(PageSize, size - pageStart));
}

// Never reads past the end: that would be one more call only to learn that nothing is there.
bool FileWindow::ReadAt(uint64_t offset, uint8_t* destination, uint32_t count, uint32_t& read) {
    const uint64_t left = offset < size ? size - offset : 0;
    const auto wanted = static_cast<size_t>(std::min<uint64_t>(count, left));
    size_t got = 0;
    const bool done = file.ReadAt(offset, destination, wanted, got) || ReadSectors(offset, destination, wanted, got);
    read = static_cast<uint32_t>(got);
    return done;
}

// A read fails as a whole when the device cannot deliver some of its bytes: sector by sector everything before them
// is read.
bool FileWindow::ReadSectors(uint64_t offset, uint8_t* destination, size_t count, size_t& read) {
    constexpr size_t Sector = 512;
    size_t got = 0;
    for (read = 0; read < count; read += got) {
        const size_t part = std::min(count - read, Sector - static_cast<size_t>((offset + read) % Sector));
        if (!file.ReadAt(offset + read, destination + read, part, got)) return false;
        if (got == 0) break; // the file has become shorter
    }
    return true;
}

bool FileWindow::Holds(uint64_t offset, uint32_t count) const {
    return offset >= start && offset - start + count <= valid;
}

bool FileWindow::Fill(uint64_t newStart) {
    start = newStart;
    return ReadAt(start, window, Capacity, valid);
}

bool FileWindow::Ensure(uint64_t offset, uint32_t count) {
    ORVANE_ASSERT(count <= Capacity);
    const uint64_t first = std::min(offset, size);
    count = static_cast<uint32_t>(std::min<uint64_t>(count, size - first));
    if (Holds(first, count)) return true;
    if (!window) return false;
    uint64_t newStart = offset;
    if (offset >= size) {
        // Past the end it shows the last bytes of the file.
        newStart = size > Capacity ? size - Capacity : 0;
    } else if (offset < start) {
        // Keeps the bytes before for a walk backwards, as many as leave room for the range.
        const uint32_t before = std::min(PageSize, Capacity - count);
        newStart = offset > before ? offset - before : 0;
    }
    if (Fill(newStart) || Holds(first, count)) return true;
    // What cannot be read may lie before the range.
    return newStart < first && (Fill(first) || Holds(first, count));
}

bool FileWindow::Advance(uint32_t kept) {
    ORVANE_ASSERT(kept <= Room);
    std::memmove(window - kept, window + valid - kept, kept);
    return Ensure(End(), 1);
}
