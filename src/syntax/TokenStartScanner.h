#pragma once

#include "base/Types.h"

// Where tokens that matter begin in a short stretch of text, as bits: bit i is the character at start + i.
struct TokenMap {
    const Char* start = nullptr;
    const Char* end = nullptr;
    uint64_t words = 0; // word characters
    uint64_t stops = 0; // stops; none of them is a word character
};

// Maps the words of a text and its stops: the characters that are looked for besides words.
class TokenStartScanner {
public:
    static constexpr uint32_t Span = 64;

    // Makes `c`, which is ASCII and no word character, a stop.
    void AddStop(Char c);
    // Makes every character outside words a stop.
    void StopEverywhere() { everywhere = true; }
    // Maps the characters from `at` up to `end`, at most Span of them; with `allStops` as if
    // StopEverywhere had been called.
    void Map(const Char* at, const Char* end, bool allStops, TokenMap& map) const;

private:
    static constexpr uint32_t MaxStops = 4;
    static constexpr uint32_t Lanes = 16;

    class Bits;

    bool everywhere = false; // also when there are more stops than MaxStops
    uint32_t stopCount = 0;
    // Each repeated over a whole register. All places are always compared; those that are not needed
    // repeat the last stop.
    uint8_t stops[MaxStops][Lanes] = {};
};
