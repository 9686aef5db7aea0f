#include "base/posix/NativeText.h"

#include "base/CodePage.h"
#include "base/Text.h"
#include "base/WString.h"

#include <algorithm>
#include <cstring>
#include <utility>

NativeText::NativeText(const Char* text, Kind kind) {
    const size_t length = Text::Length(text);
    const size_t room = MaxBytes(CodePage::Utf8, length);
    bytes = Heap::AllocateArray<char>(room + 1);
    if (!bytes) return;
    FromUtf16(CodePage::Utf8, text, length, reinterpret_cast<uint8_t*>(bytes), room);
    if (kind == Kind::Path) std::replace(bytes, bytes + std::strlen(bytes), '\\', '/');
}

bool FromNativeText(const char* text, NativeText::Kind kind, WString& out) {
    const size_t length = std::strlen(text);
    WString converted;
    if (length > WString::MaxCharacters || !converted.Reserve(static_cast<uint32_t>(length))) return false;
    Char* const units = converted.Data();
    const size_t count = ToUtf16(CodePage::Utf8, reinterpret_cast<const uint8_t*>(text), length, units, length);
    if (!converted.Assign(units, static_cast<int64_t>(count))) return false;
    if (kind == NativeText::Kind::Path) converted.ReplaceAll(u'/', u'\\');
    out = std::move(converted);
    return true;
}
