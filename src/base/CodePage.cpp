#include "base/CodePage.h"

#include "base/SystemCodePage.h"
#include "base/Utf8.h"

#include <algorithm>

CodePage FindCodePage(uint32_t number) {
    const auto page = static_cast<CodePage>(number);
    if (page == CodePage::Utf8) return page;
    if (!SystemCodePage::IsKnown(page)) return CodePage::Ansi;
    static constexpr uint8_t Ascii[] = {'A', 'z', '0', '<', '"', '\n'};
    constexpr size_t Count = sizeof(Ascii);
    Char text[Count];
    const bool isAscii = ToUtf16(page, Ascii, Count, text, Count) == Count && std::equal(text, text + Count, Ascii);
    return isAscii ? page : CodePage::Ansi;
}

size_t MaxCharacters(CodePage, size_t count) {
    // A byte never becomes more than one unit: only the four bytes of UTF-8 beyond U+FFFF become two.
    return count;
}

size_t MaxBytes(CodePage page, size_t count) {
    return count * (page == CodePage::Utf8 ? 3 : SystemCodePage::MaxBytesPerCharacter(page));
}

size_t ToUtf16(CodePage page, const uint8_t* bytes, size_t count, Char* out, size_t capacity) {
    if (page == CodePage::Utf8) return Utf8::ToUtf16(bytes, count, out, capacity);
    return SystemCodePage::ToUtf16(page, bytes, count, out, capacity);
}

size_t FromUtf16(CodePage page, const Char* text, size_t count, uint8_t* out, size_t capacity) {
    if (page == CodePage::Utf8) return Utf8::FromUtf16(text, count, out, capacity);
    return SystemCodePage::FromUtf16(page, text, count, out, capacity);
}

bool CanExpress(CodePage page, const Char* text, size_t count) {
    return page == CodePage::Utf8 || SystemCodePage::CanExpress(page, text, count);
}

size_t WholeCharacters(CodePage page, const uint8_t* bytes, size_t count) {
    if (page == CodePage::Utf8) return Utf8::WholeCharacters(bytes, count);
    return SystemCodePage::WholeCharacters(page, bytes, count);
}
