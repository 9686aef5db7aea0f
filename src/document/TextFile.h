#pragma once

#include "base/Heap.h"
#include "base/Platform.h"
#include "base/ScanBreaks.h"
#include "document/Document.h"

// The first bytes of a file in each encoding.
struct Signature {
    uint8_t bytes[3];
    uint8_t count;
};
constexpr Signature Signatures[Encoding::Count] = {
    {{}, 0},
    {{0xFF, 0xFE}, 2},
    {{0xFE, 0xFF}, 2},
    {{0xEF, 0xBB, 0xBF}, 3},
};

// The content of a file as a document holds it: line feeds only, followed by a NUL that is not counted.
struct DecodedText {
    Char* text = nullptr; // owned; null when the code page could not convert the file
    uint32_t capacity = 0;
    uint32_t length = 0;
    uint32_t lineCount = 1;
    uint32_t style = LineEnding::Dos;
    uint32_t encoding = Encoding::Ansi;

    DecodedText() = default;
    ~DecodedText() { Heap::Free(text); }
    DecodedText(const DecodedText&) = delete;
    DecodedText& operator=(const DecodedText&) = delete;
};

// Decodes the bytes of a whole file, which it may change and take over. `out` is a fresh one. False when
// memory runs out.
bool DecodeText(Platform::ByteBlock& file, DecodedText& out);

// The LineEnding of a text with these breaks; Dos when it has none.
uint32_t LineEndingOf(const Scan::BreakCounts& breaks);

// Writes `length` characters as a new file: the signature of `encoding`, then the text with each line feed
// as `style` (Unix or Dos) wants it. `time` becomes the time of the file's last write when that can be
// read. False when not every byte arrived; the file is then left as far as it came.
bool WriteTextFile(const Char* name, const Char* text, uint32_t length, uint32_t encoding, uint32_t style,
                   Platform::FileTime& time);
