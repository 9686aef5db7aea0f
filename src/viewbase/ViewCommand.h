#pragma once

#include "base/Types.h"

// The commands that a frame sends to a view, by number.
enum class ViewCommand : uint32_t {
    Cut = 0,
    Copy = 1,
    Paste = 2,
    Delete = 3,
    SelectAll = 4,
    Find = 5,
    Replace = 6,
    GoToLine = 7,
    ToggleBookmark = 8,
    CopyColoured = 9,
};

constexpr uint32_t ViewCommandCount = 10;

constexpr bool IsKnown(ViewCommand command) { return static_cast<uint32_t>(command) < ViewCommandCount; }
