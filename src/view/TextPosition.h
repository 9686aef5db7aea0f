#pragma once

#include "base/Types.h"

// A place in a text, both 0-based. The column counts characters; a tab counts as one.
struct TextPosition {
    uint32_t line = 0;
    uint32_t column = 0;

    bool operator==(const TextPosition&) const = default;
};
