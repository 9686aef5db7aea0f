#pragma once

#include "base/win32/Windows.h"

// The messages that the frame posts to its own window, to do something when all messages before have been handled.
namespace FrameRequests {

constexpr UINT QuitNow = WM_USER;
constexpr UINT CheckFiles = WM_USER + 1;
constexpr UINT AskUnsaved = WM_USER + 2;

} // namespace FrameRequests
