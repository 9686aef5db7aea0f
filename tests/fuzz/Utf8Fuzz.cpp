#include "base/CodePage.h"
#include "base/ScanUtf8.h"

#include <algorithm>
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

// What is valid is just what comes back; it is converted as the plain rules say.
void CheckValidity(const uint8_t* data, size_t size, const std::vector<Char>& text, const std::vector<uint8_t>& back) {
    const size_t valid = Scan::ValidUtf8(data, size);
    Require(valid == Scan::Reference::ValidUtf8(data, size));
    Require((valid == size) == (back.size() == size && std::equal(back.begin(), back.end(), data)));
    if (valid < size) return;
    std::vector<Char> plain = text;
    for (Char& c : plain)
        if (c == 0) c = u' ';
    Scan::BreakCounts wanted;
    plain.resize(Scan::CopyWithLineFeeds(plain.data(), plain.size(), plain.data(), wanted).written);
    std::vector<Char> fast(size);
    Scan::BreakCounts breaks;
    fast.resize(Scan::WidenUtf8(data, size, fast.data(), breaks).written);
    Require(fast == plain && breaks.lineFeeds == wanted.lineFeeds && breaks.returns == wanted.returns);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::vector<Char> text = Decode(data, size);
    const std::vector<uint8_t> bytes = Encode(text.data(), text.size());
    Require(Decode(bytes.data(), bytes.size()) == text);
    Require(WholeCharacters(CodePage::Utf8, data, size) <= size);
    CheckValidity(data, size, text, bytes);

    // The same bytes as UTF-16, lone surrogates and all.
    std::vector<Char> units(size / 2);
    if (!units.empty()) std::memcpy(units.data(), data, units.size() * sizeof(Char));
    const std::vector<uint8_t> encoded = Encode(units.data(), units.size());
    text = Decode(encoded.data(), encoded.size());
    Require(text.size() == units.size());
    Require(Encode(text.data(), text.size()) == encoded);
    return 0;
}
