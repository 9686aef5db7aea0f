#pragma once

#include "base/Types.h"

// The UTF-8 conversions of CodePage.h, with its rules; the same on every system.
namespace Utf8 {

size_t ToUtf16(const uint8_t* bytes, size_t count, Char* out, size_t capacity);
size_t FromUtf16(const Char* text, size_t count, uint8_t* out, size_t capacity);
size_t WholeCharacters(const uint8_t* bytes, size_t count);

} // namespace Utf8
