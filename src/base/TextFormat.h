#pragma once

#include "base/Types.h"

class WString;

namespace Text {

// One argument of AppendFormat.
struct FormatArgument {
    enum class Kind { Number, String } kind;
    uint32_t number = 0;
    const Char* string = nullptr;
    FormatArgument(uint32_t value) : kind(Kind::Number), number(value) {}
    FormatArgument(const Char* value) : kind(Kind::String), string(value) {}
};

// Appends `format` with its arguments filled in, in order. Understood: %s and %ls (text), %u and %d
// (unsigned decimal), %x and %X (hexadecimal), each with an optional zero flag and width, and %%.
// On failure the string is as it was.
[[nodiscard]] bool AppendFormat(WString& out, const Char* format, const FormatArgument* arguments, size_t count);

template <class... Arguments>
[[nodiscard]] bool AppendFormat(WString& out, const Char* format, const Arguments&... arguments) {
    const FormatArgument list[] = {FormatArgument(arguments)...};
    return AppendFormat(out, format, list, sizeof...(arguments));
}

} // namespace Text
