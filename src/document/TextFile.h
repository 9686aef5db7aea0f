#pragma once

#include "base/CodePage.h"
#include "document/Encoding.h"

#include <algorithm>
#include <initializer_list>

// The first bytes of a file in an encoding.
struct Signature {
    uint8_t bytes[3];
    uint8_t count;
};
constexpr Signature Signatures[EncodingCount] = {
    {{}, 0}, {{0xFF, 0xFE}, 2}, {{0xFE, 0xFF}, 2}, {{0xEF, 0xBB, 0xBF}, 3}, {{}, 0},
};

constexpr const Signature& SignatureOf(Encoding encoding) { return Signatures[static_cast<uint32_t>(encoding)]; }

// The encoding whose signature a file begins with; ANSI without one.
constexpr Encoding SignedEncoding(const uint8_t* bytes, size_t count) {
    for (const Encoding encoding : {Encoding::Unicode, Encoding::UnicodeBigEndian, Encoding::Utf8}) {
        const Signature& signature = SignatureOf(encoding);
        if (count >= signature.count && std::equal(signature.bytes, signature.bytes + signature.count, bytes))
            return encoding;
    }
    return Encoding::Ansi;
}

// Of an encoding that is not one of UTF-16: what its files are written in.
constexpr CodePage PageOf(Encoding encoding) {
    return encoding == Encoding::Utf8 || encoding == Encoding::PlainUtf8 ? CodePage::Utf8 : CodePage::Ansi;
}
