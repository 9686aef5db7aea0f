#pragma once

#include "base/Types.h"

// The loops between a file's line breaks (LF, CR LF, CR) and the line feeds of a document, written with
// SSE2; each has a plain version in Scan::Reference that the tests compare it with.
namespace Scan {

// The line breaks of a text before all became line feeds.
struct BreakCounts {
    size_t lineFeeds = 0; // without a carriage return before them
    size_t returns = 0;   // carriage returns, with or without a line feed after them
};

struct Copied {
    size_t taken = 0;
    size_t written = 0;
};

// Widens the leading bytes that are below 0x80 to characters: NUL becomes a space, CR LF and CR a line
// feed. A CR that ends the bytes counts as one without a line feed. Adds to `breaks`. `out` has room for
// `count` characters; those after the written ones are undefined.
Copied WidenText(const uint8_t* bytes, size_t count, Char* out, BreakCounts& breaks);

// Copies the characters before the first NUL, CR LF and CR as a line feed, with the rules above. `out`
// may be `text` or be before it.
Copied CopyWithLineFeeds(const Char* text, size_t count, Char* out, BreakCounts& breaks);

// Copies leading characters with a carriage return before each line feed until `capacity` characters are
// written; a line feed is taken only when two places are left.
Copied CopyWithReturns(const Char* text, size_t count, Char* out, size_t capacity);

// Takes the carriage returns out of bytes[0, count) in place; returns how many bytes are left.
size_t DropReturns(uint8_t* bytes, size_t count);

namespace Reference {
Copied WidenText(const uint8_t* bytes, size_t count, Char* out, BreakCounts& breaks);
Copied CopyWithLineFeeds(const Char* text, size_t count, Char* out, BreakCounts& breaks);
Copied CopyWithReturns(const Char* text, size_t count, Char* out, size_t capacity);
size_t DropReturns(uint8_t* bytes, size_t count);
} // namespace Reference

} // namespace Scan
