#pragma once

#include "base/Types.h"

enum class CodePage : uint32_t; // in CodePage.h, which is above this seam

// The conversions of the pages other than UTF-8, with the rules of CodePage.h; implemented by base/win32 and
// base/posix.
namespace SystemCodePage {

// Whether the system has the page, and its characters are of one byte, of one or two, or those of GB 18030.
bool IsKnown(CodePage page);
// The most bytes for one character of the page.
size_t MaxBytesPerCharacter(CodePage page);
size_t ToUtf16(CodePage page, const uint8_t* bytes, size_t count, Char* out, size_t capacity);
size_t FromUtf16(CodePage page, const Char* text, size_t count, uint8_t* out, size_t capacity);
bool CanExpress(CodePage page, const Char* text, size_t count);
size_t WholeCharacters(CodePage page, const uint8_t* bytes, size_t count);

} // namespace SystemCodePage
