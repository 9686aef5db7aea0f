#pragma once

#include "base/Types.h"

// Hears from a long search now and then, and can cancel it.
class SearchProgress {
public:
    // `done` of `total` characters have been gone through. False cancels the search.
    virtual bool Continue(uint64_t done, uint64_t total) = 0;

protected:
    ~SearchProgress() = default;
};
