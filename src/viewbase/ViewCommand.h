#pragma once

#include "base/Types.h"

// The commands that a frame sends to a view, by number.
namespace ViewCommand {
constexpr uint32_t Cut = 0;
constexpr uint32_t Copy = 1;
constexpr uint32_t Paste = 2;
constexpr uint32_t Delete = 3;
constexpr uint32_t SelectAll = 4;
constexpr uint32_t Find = 5;
constexpr uint32_t Replace = 6;
constexpr uint32_t GoToLine = 7;
constexpr uint32_t ToggleBookmark = 8;
constexpr uint32_t CopyColoured = 9;
constexpr uint32_t Count = 10;
} // namespace ViewCommand
