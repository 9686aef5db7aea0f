#pragma once

#include "base/Types.h"

// A checksum of bytes that come in pieces, however they are split. It finds damage, not forgery.
class Checksum {
public:
    void Add(const void* bytes, size_t count);
    uint64_t Value() const;
    // How many bytes there were.
    uint64_t Count() const { return total; }

private:
    void Mix(uint64_t word);
    void AddByte(uint8_t byte);

    uint64_t state = 0x9E3779B97F4A7C15u;
    uint64_t pending = 0; // the bytes of a word that is not complete
    uint64_t total = 0;
};
