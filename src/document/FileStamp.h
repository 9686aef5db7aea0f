#pragma once

#include "base/Platform.h"

// What tells one state of a file from another: the time of its last write, by the clock of who wrote it, and its size.
struct FileStamp {
    Platform::FileTime time = 0;
    uint64_t size = 0;

    bool operator==(const FileStamp& other) const { return time == other.time && size == other.size; }
    bool operator!=(const FileStamp& other) const { return !(*this == other); }
};

// Of an open file, or of any: that blocks no other user of the file and is blocked by none. False, and `stamp` as it
// was, when it cannot be read.
[[nodiscard]] bool ReadStamp(Platform::File& file, FileStamp& stamp);
[[nodiscard]] bool ReadStamp(const Char* name, FileStamp& stamp);
