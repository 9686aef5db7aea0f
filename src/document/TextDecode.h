#pragma once

#include "document/DecodedText.h"

// Reads and decodes a file of at most Platform::LargestWholeFile bytes, in pieces. `out` is a fresh one. False when the
// file cannot be read, or without memory.
[[nodiscard]] bool ReadTextFile(const Char* name, DecodedText& out);
