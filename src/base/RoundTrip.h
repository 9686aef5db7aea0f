#pragma once

#include "base/CodePage.h"

// Whether conversions lose anything: what has been converted is converted back and compared, in pieces, without
// memory. A best fit or a question mark does not come back.

// Characters into bytes and back.
[[nodiscard]] bool KeepsText(CodePage page, const Char* text, size_t count);
// Whether the characters become just these bytes.
[[nodiscard]] bool GivesBytes(CodePage page, const Char* text, size_t count, const uint8_t* bytes, size_t byteCount);
// Whether the bytes that the characters become in a page that is not UTF-8 would be taken for it: they are valid UTF-8
// throughout, and some are above 7F.
[[nodiscard]] bool LooksLikeUtf8(CodePage page, const Char* text, size_t count);
// Whether each byte is a character of its own that becomes the same byte again, so that nothing else needs to be asked.
[[nodiscard]] bool KeepsEveryByte(CodePage page);
