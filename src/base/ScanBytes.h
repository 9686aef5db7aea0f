#pragma once

#include "base/Types.h"

// Substring search over bytes, written with SSE2, each with a plain version in Scan::Reference that the
// tests compare it with. Without `matchCase` the ASCII letters are folded on both sides.
namespace Scan {

// The first (last) position in bytes[0, count) at which the n (>= 1) bytes of `pattern` stand as a whole;
// Scan::NotFound without one.
size_t FindBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n, bool matchCase);
size_t FindLastBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n, bool matchCase);

namespace Reference {
size_t FindBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n, bool matchCase);
size_t FindLastBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n, bool matchCase);
} // namespace Reference

} // namespace Scan
