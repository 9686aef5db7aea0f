#pragma once

#include "base/Types.h"

// Takes bytes in pieces.
class ByteSink {
public:
    // False when they could not be taken; nothing more is to be given then.
    [[nodiscard]] virtual bool Take(const void* bytes, size_t count) = 0;

protected:
    ~ByteSink() = default;
};

// Produces the bytes that a file will have. It can be asked repeatedly and gives the same bytes each time, so that they
// need not be in memory all at once.
class ByteSource {
public:
    // Gives all bytes in their order. False when it could not make them, or `out` not take them.
    [[nodiscard]] virtual bool GiveTo(ByteSink& out) = 0;

protected:
    ~ByteSource() = default;
};

// Bytes that are in memory already, and outlive this.
class BlockSource final : public ByteSource {
public:
    BlockSource(const void* first, size_t number) : bytes(first), count(number) {}
    bool GiveTo(ByteSink& out) override { return count == 0 || out.Take(bytes, count); }

private:
    const void* bytes;
    size_t count;
};
