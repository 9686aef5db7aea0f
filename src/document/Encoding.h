#pragma once

#include "base/Types.h"

// What the bytes of a text file are, by number.
enum class Encoding : uint32_t {
    Ansi = 0,
    Unicode = 1,          // UTF-16, little-endian
    UnicodeBigEndian = 2, // UTF-16, big-endian
    Utf8 = 3,             // with its signature
    PlainUtf8 = 4,        // UTF-8 without
    Keep = UINT32_MAX,    // for saving: as it is
};
constexpr uint32_t EncodingCount = 5;

enum class LineEnding : uint32_t {
    None = 0, // of a document without lines
    Unix = 1,
    Dos = 2,
    Mixed = 3,
    Keep = UINT32_MAX, // for saving: as it is
};
