#pragma once

#include "base/SafeSaver.h"
#include "document/Encoding.h"
#include "document/FileStamp.h"

// What a text is in a file: its line ending is Unix or Dos.
struct TextFileForm {
    Encoding encoding;
    LineEnding lineEnding;
};

// Writes `length` characters as a new file: the signature of the encoding, then the text with each line feed
// as the line ending wants it. `stamp` becomes the file's when that was touched and can be
// asked.
[[nodiscard]] SaveResult WriteTextFile(SafeSaver& saver, const Char* name, const Char* text, uint32_t length,
                                       TextFileForm form, FileStamp& stamp);
