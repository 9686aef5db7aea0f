#pragma once

#include "base/Types.h"

// A handful of characters and the fast search for the first of them.
class CharSearchSet {
public:
    // More than an engine can ask for: six markers in both cases and two quotes.
    static constexpr uint32_t Max = 16;

    void Clear() { count = 0; }
    // Adding a member again changes nothing.
    void Add(Char c, bool bothCases = false);
    bool Contains(Char c) const;
    // The first member in [at, end); `end` when there is none.
    const Char* Find(const Char* at, const Char* end) const;

private:
    static constexpr uint32_t Lanes = 8;

    uint32_t count = 0;
    Char members[Max][Lanes] = {}; // each repeated over a whole register
};
