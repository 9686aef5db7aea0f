// Stands in for src/base/CodePage.cpp, which is not linked into this program: it is in a library.

#include "core/document/AnsiPage.h"

#include "base/CodePage.h"
#include "base/SystemCodePage.h"
#include "base/Utf8.h"

#include <algorithm>

namespace {

bool utf8IsAnsi = false;
bool pageRefuses = false;
uint8_t lostByte = '?'; // none is lost

bool IsUtf8(CodePage page) { return page == CodePage::Utf8 || (page == CodePage::Ansi && utf8IsAnsi); }

} // namespace

Utf8IsAnsi::Utf8IsAnsi() { utf8IsAnsi = true; }
Utf8IsAnsi::~Utf8IsAnsi() { utf8IsAnsi = false; }
RefusingAnsiPage::RefusingAnsiPage() { pageRefuses = true; }
RefusingAnsiPage::~RefusingAnsiPage() { pageRefuses = false; }
LosingAnsiPage::LosingAnsiPage(uint8_t byte) { lostByte = byte; }
LosingAnsiPage::~LosingAnsiPage() { lostByte = '?'; }

CodePage FindCodePage(uint32_t number) {
    const auto page = static_cast<CodePage>(number);
    return page == CodePage::Utf8 || SystemCodePage::IsKnown(page) ? page : CodePage::Ansi;
}

size_t MaxCharacters(CodePage, size_t count) { return count; }

size_t MaxBytes(CodePage page, size_t count) {
    return count * (IsUtf8(page) ? 3 : SystemCodePage::MaxBytesPerCharacter(page));
}

size_t ToUtf16(CodePage page, const uint8_t* bytes, size_t count, Char* out, size_t capacity) {
    if (IsUtf8(page)) return Utf8::ToUtf16(bytes, count, out, capacity);
    if (pageRefuses && std::count(bytes, bytes + count, 0xFF)) return 0;
    const size_t converted = SystemCodePage::ToUtf16(page, bytes, count, out, capacity);
    if (pageRefuses && out) std::replace(out, out + converted, u'\u00FE', u'\0');
    return converted;
}

size_t FromUtf16(CodePage page, const Char* text, size_t count, uint8_t* out, size_t capacity) {
    if (IsUtf8(page)) return Utf8::FromUtf16(text, count, out, capacity);
    if (pageRefuses && std::count(text, text + count, u'\uFFFF')) return 0;
    const size_t converted = SystemCodePage::FromUtf16(page, text, count, out, capacity);
    if (out) std::replace(out, out + converted, lostByte, uint8_t{'?'});
    return converted;
}

size_t WholeCharacters(CodePage page, const uint8_t* bytes, size_t count) {
    return IsUtf8(page) ? Utf8::WholeCharacters(bytes, count) : SystemCodePage::WholeCharacters(page, bytes, count);
}
