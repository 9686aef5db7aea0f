#pragma once

#include "base/WString.h"

// The names of files that could not be opened, gathered so that there is one message for many. Of very
// many the first few are named and the rest counted.
class OpenFailures {
public:
    static constexpr uint32_t MaxNames = 10;

    // Without memory a name is left out.
    void Add(const Char* path);
    bool IsEmpty() const { return count == 0; }
    // Takes the names out, one a line.
    WString Take();

private:
    WString names;
    uint32_t count = 0;
};
