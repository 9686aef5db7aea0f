#pragma once

#include "base/Types.h"

#include <emmintrin.h>

// Substring search over bytes, with a plain version in Scan::Reference that the tests compare it with.
// Without `matchCase` the ASCII letters are folded on both sides.
namespace Scan {

bool EqualBytes(const uint8_t* left, const uint8_t* right, size_t count, bool matchCase);

// One byte of a pattern. Setting the bit in which the two cases of a letter differ makes them equal, and
// nothing else becomes equal to them.
struct ByteProbe {
    ByteProbe(const uint8_t* pattern, size_t place, bool matchCase);

    size_t offset; // in the pattern
    bool folds;
    uint8_t value; // folded
    __m128i caseBit;
    __m128i byte;
};

// A pattern made ready to be looked for in many places. It does not own the pattern.
class ByteFinder {
public:
    static constexpr unsigned GramBits = 13; // of an index into the table

    // `length` is at least 1.
    ByteFinder(const uint8_t* wanted, size_t length, bool withCase);
    ByteFinder(const ByteFinder&) = delete;
    ByteFinder& operator=(const ByteFinder&) = delete;

    // The first (last) position in bytes[0, count) at which the whole pattern matches; Scan::NotFound without
    // one.
    size_t First(const uint8_t* bytes, size_t count) const;
    size_t Last(const uint8_t* bytes, size_t count) const;

private:
    size_t FirstByProbes(const uint8_t* bytes, size_t end) const;
    size_t LastByProbes(const uint8_t* bytes, size_t end) const;
    size_t FirstByGrams(const uint8_t* bytes, size_t end) const;
    size_t LastByGrams(const uint8_t* bytes, size_t end) const;
    size_t FirstInStep(const uint8_t* step) const;
    size_t LastInStep(const uint8_t* step) const;
    size_t FirstIn(const uint8_t* bytes, size_t from, size_t end) const;
    size_t LastIn(const uint8_t* bytes, size_t from, size_t end) const;
    bool MayMatchIn(const uint8_t* step) const;
    bool MatchesAt(const uint8_t* bytes) const;
    size_t AlignedStep(const uint8_t* bytes) const;
    size_t PlacesWithout(const uint8_t* place, ptrdiff_t distance, size_t count) const;
    void CollectGrams();

    const uint8_t* pattern;
    size_t n;
    bool matchCase;
    ByteProbe first;
    ByteProbe second;
    size_t stride = 0; // from gram to gram; 0 when the probes are used
    uint8_t grams[size_t{1} << GramBits] = {};
};

namespace Reference {
size_t FindBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n, bool matchCase);
size_t FindLastBytes(const uint8_t* bytes, size_t count, const uint8_t* pattern, size_t n, bool matchCase);
} // namespace Reference

} // namespace Scan
