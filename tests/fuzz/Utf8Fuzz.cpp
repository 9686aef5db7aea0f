#include "base/CodePage.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

// Bytes are converted to UTF-16 and back: the counts predicted have to be those written, nothing may
// be written past them, and what came out once has to stay the same from then on.

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// A vector of exactly the predicted size, so that the sanitizers see every step outside.
std::vector<Char> Decode(const uint8_t* bytes, size_t size) {
    const size_t count = ToUtf16(CodePage::Utf8, bytes, size, nullptr, 0);
    Require(count <= MaxCharacters(CodePage::Utf8, size));
    std::vector<Char> text(count);
    Require(ToUtf16(CodePage::Utf8, bytes, size, text.data(), count) == count);
    return text;
}

std::vector<uint8_t> Encode(const Char* text, size_t count) {
    const size_t size = FromUtf16(CodePage::Utf8, text, count, nullptr, 0);
    Require(size <= MaxBytes(CodePage::Utf8, count));
    std::vector<uint8_t> bytes(size);
    Require(FromUtf16(CodePage::Utf8, text, count, bytes.data(), size) == size);
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<Char> text = Decode(data, size);
    const std::vector<uint8_t> bytes = Encode(text.data(), text.size());
    Require(Decode(bytes.data(), bytes.size()) == text);
    Require(WholeCharacters(CodePage::Utf8, data, size) <= size);

    // The same bytes as UTF-16, lone surrogates and all.
    std::vector<Char> units(size / 2);
    if (!units.empty()) std::memcpy(units.data(), data, units.size() * sizeof(Char));
    const std::vector<uint8_t> encoded = Encode(units.data(), units.size());
    text = Decode(encoded.data(), encoded.size());
    Require(text.size() == units.size());
    Require(Encode(text.data(), text.size()) == encoded);
    return 0;
}
