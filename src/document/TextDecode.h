#pragma once

#include "base/Platform.h"
#include "document/DecodedText.h"

// Reads and decodes a file of at most Platform::LargestWholeFile bytes, in pieces. `out` is a fresh one; `time` gets
// the time of the file's last write. False when the file cannot be read, or without memory; `time` is then as it was.
[[nodiscard]] bool ReadTextFile(const Char* name, DecodedText& out, Platform::FileTime& time);
