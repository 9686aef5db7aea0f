#pragma once

#include "base/Types.h"

// The letters of all scripts without regard to case, as the system sees it; implemented by base/win32 and base/posix.
namespace SystemCase {

// Gives the letters of text[0, count) that differ in their case only the same form, in place: one unit takes the place
// of one, whatever the user's language is. NULs are characters like others. False when the system fails.
[[nodiscard]] bool Fold(Char* text, uint32_t count);

} // namespace SystemCase
