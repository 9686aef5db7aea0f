#pragma once

#include "base/Platform.h"
#include "base/SafeSave.h"
#include "document/Encoding.h"

// What a text is in a file: its line ending is Unix or Dos.
struct TextFileForm {
    Encoding encoding;
    LineEnding lineEnding;
};

// Writes `length` characters as a new file: the signature of the encoding, then the text with each line feed
// as the line ending wants it. `time` becomes the time of the file's last write when the file was
// touched and that can be read.
[[nodiscard]] SaveResult WriteTextFile(const Char* name, const Char* text, uint32_t length, TextFileForm form,
                                       Platform::FileTime& time);
