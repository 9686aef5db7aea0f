#pragma once

#include "base/Platform.h"
#include "document/Encoding.h"

// Writes `length` characters as a new file: the signature of `encoding`, then the text with each line feed
// as `style` (Unix or Dos) wants it. `time` becomes the time of the file's last write when the file was
// touched and that can be read. False where SaveSafely has not saved.
[[nodiscard]] bool WriteTextFile(const Char* name, const Char* text, uint32_t length, Encoding encoding,
                                 LineEnding style, Platform::FileTime& time);
