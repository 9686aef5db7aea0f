#pragma once

#include "base/ByteSource.h"
#include "base/Platform.h"

class Checksum;

// Writes what it takes to an open file.
class FileSink final : public ByteSink {
public:
    explicit FileSink(Platform::File& target) : file(target) {}
    bool Take(const void* bytes, size_t count) override { return file.IsOpen() && file.Write(bytes, count); }

private:
    Platform::File& file;
};

// Passes on what is left of an open file, in pieces. False when it cannot be read to its end, without memory, or
// when `out` does not take it.
[[nodiscard]] bool PassOn(Platform::File& file, ByteSink& out);

// The same into a checksum.
[[nodiscard]] bool AddUp(Platform::File& file, Checksum& sum);
