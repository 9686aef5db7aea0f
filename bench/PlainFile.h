#pragma once

#include "PlainText.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// The plain way to read a file: what the product is measured against.
namespace Bench {

// Memory that nobody has touched yet.
template <class T> struct Fresh {
    explicit Fresh(size_t count) : items(static_cast<T*>(std::malloc(count * sizeof(T)))) {}
    ~Fresh() { std::free(items); }
    Fresh(const Fresh&) = delete;
    Fresh& operator=(const Fresh&) = delete;
    T* items;
};

inline size_t FileSize(const char* name) {
    struct stat status = {};
    return stat(name, &status) == 0 ? static_cast<size_t>(status.st_size) : 0;
}

// Reads in one call; false when not every byte came.
inline bool ReadPlain(const char* name, void* out, size_t size) {
    const int file = open(name, O_RDONLY | O_CLOEXEC);
    const bool whole = file != -1 && read(file, out, size) == static_cast<ssize_t>(size);
    if (file != -1) close(file);
    return whole;
}

} // namespace Bench
