#pragma once

#include "document/DecodedText.h"

// Reads and decodes a file of at most Platform::LargestWholeFile bytes, in pieces. With `recognisesUtf8` as the
// additional setting Utf8 says. `out` is a fresh one. False when the file cannot be read, or without memory.
[[nodiscard]] bool ReadTextFile(const Char* name, bool recognisesUtf8, DecodedText& out);
