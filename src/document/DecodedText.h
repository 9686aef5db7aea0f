#pragma once

#include "base/Heap.h"
#include "document/Encoding.h"
#include "document/FileStamp.h"

// The content of a file as a document holds it: line feeds only, followed by a NUL that is not counted.
struct DecodedText {
    Char* text = nullptr; // owned; null when the code page could not convert the file
    uint32_t capacity = 0;
    uint32_t length = 0;
    uint32_t lineCount = 1;
    LineEnding style = LineEnding::Dos;
    Encoding encoding = Encoding::Ansi;
    // Written back in the same encoding, the text does not give the file's bytes, line breaks aside.
    bool losesBytes = false;
    FileStamp file; // that it was read from

    DecodedText() = default;
    ~DecodedText() { Heap::Free(text); }
    DecodedText(const DecodedText&) = delete;
    DecodedText& operator=(const DecodedText&) = delete;
};
