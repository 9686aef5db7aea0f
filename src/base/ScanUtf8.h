#pragma once

#include "base/ScanBreaks.h"
#include "base/Types.h"

// The loops over UTF-8, written with SSE2. Checking has a plain version in Scan::Reference that the tests compare it
// with; converting is compared with the conversion of CodePage.h.
namespace Scan {

// How many of the leading bytes are whole sequences of valid UTF-8: `count`, or where the first byte is that is not
// part of one. Overlong forms, surrogates and values above U+10FFFF are not valid, and a sequence that the end cuts off
// is not whole.
size_t ValidUtf8(const uint8_t* bytes, size_t count);

// Converts bytes that ValidUtf8 accepts, all of them, with the rules of WidenText for NUL and line breaks. Adds to
// `breaks`. `out` has room for `count` characters; those after the written ones are undefined.
Copied WidenUtf8(const uint8_t* bytes, size_t count, Char* out, BreakCounts& breaks);

namespace Reference {
size_t ValidUtf8(const uint8_t* bytes, size_t count);
} // namespace Reference

} // namespace Scan
