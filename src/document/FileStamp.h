#pragma once

#include "base/Platform.h"

// What tells one state of a file from another: the time of its last write, by the clock of who wrote it, and its size.
struct FileStamp {
    Platform::FileTime time = 0;
    uint64_t size = 0;

    bool operator==(const FileStamp& other) const { return time == other.time && size == other.size; }
    bool operator!=(const FileStamp& other) const { return !(*this == other); }
};

// Reads the stamp of an open file or of a path, without blocking other users of the file or being blocked by them.
// False, and `stamp` as it was, when it cannot be read.
[[nodiscard]] bool ReadStamp(Platform::File& file, FileStamp& stamp);
[[nodiscard]] bool ReadStamp(const Char* name, FileStamp& stamp);
