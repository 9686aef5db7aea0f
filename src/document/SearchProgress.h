#pragma once

#include "base/Types.h"

// Hears from a long search now and then, and can break it off.
class SearchProgress {
public:
    // `done` of `total` characters have been gone through. False breaks the search off.
    virtual bool Continue(uint64_t done, uint64_t total) = 0;

protected:
    ~SearchProgress() = default;
};
