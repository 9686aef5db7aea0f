#include "PlainFile.h"
#include "Ratio.h"
#include "SampleText.h"
#include "base/CodePage.h"
#include "document/TextBuffer.h"

#include <cstring>
#include <string>

// Loading 100 MB of C++ text against reading it in one call, widening it and counting its line feeds.

namespace {

constexpr char Plain[] = "bench-load-plain.txt";
constexpr char Other[] = "bench-load-other.txt";

class Held {
public:
    Held() { document->AddRef(); }
    ~Held() { document->Release(); }
    TextBuffer* operator->() const { return document; }

private:
    TextBuffer* document = new TextBuffer;
};

size_t referenceLines = 0;

void ReadAndWiden(const std::string& name) {
    const size_t size = Bench::FileSize(name.c_str());
    Bench::Fresh<uint8_t> bytes(size);
    Bench::Check(Bench::ReadPlain(name.c_str(), bytes.items, size), "the reference cannot read");
    Bench::Fresh<Char> text(size + 1);
    Bench::WidenPlain(bytes.items, size, text.items);
    referenceLines = 1 + Bench::CountLineFeedsPlain(text.items, size);
}

void ReadAndCopy(const std::string& name) {
    const size_t size = Bench::FileSize(name.c_str());
    Bench::Fresh<uint8_t> bytes(size);
    Bench::Check(Bench::ReadPlain(name.c_str(), bytes.items, size), "the reference cannot read");
    Bench::Fresh<Char> text(size / 2 + 1);
    std::memcpy(text.items, bytes.items, size);
    referenceLines = 1 + Bench::CountLineFeedsPlain(text.items, size / 2);
}

std::string Units(const std::u16string& text, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    bytes.reserve(2 + text.size() * 2);
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes.push_back(bigEndian ? high : low);
        bytes.push_back(bigEndian ? low : high);
    }
    return bytes;
}

std::string WithReturns(const std::string& text) {
    std::string out;
    out.reserve(text.size() + text.size() / 16);
    for (const char c : text) {
        if (c == '\n') out.push_back('\r');
        out.push_back(c);
    }
    return out;
}

// Checks once that the file loads as `expected`, then times it.
void Measure(const char* name, const std::string& bytes, const std::u16string& expected, bool copies) {
    Bench::WriteScratch(Other, bytes.data(), bytes.size());
    const std::u16string path = Bench::ScratchPath(Other);
    const auto load = [&] {
        Held document;
        Bench::Check(document->Load(path.c_str(), false), "the file does not load");
        Bench::Keep(document->Content());
    };
    {
        Held document;
        Bench::Check(document->Load(path.c_str(), false), "the file does not load");
        Bench::Check(std::u16string_view(document->Content(), document->Length()) == expected, "another text");
        ReadAndWiden(Bench::ScratchName(Plain));
        Bench::Check(document->GetLineCount() == referenceLines, "another count of lines");
    }
    const std::string plain = Bench::ScratchName(Plain);
    const std::string other = Bench::ScratchName(Other);
    Bench::Compare(
        name, load, [&] { ReadAndWiden(plain); }, 1.3);
    if (copies)
        Bench::Compare(
            "  against reading that file and copying it", load, [&] { ReadAndCopy(other); }, 1.3);
    unlink(other.c_str());
}

} // namespace

int main() {
    Heap::Start();
    const std::string sample = Bench::SampleBytes();
    Bench::WriteScratch(Plain, sample.data(), sample.size());
    std::u16string text(sample.size(), u'\0');
    const auto* bytes = reinterpret_cast<const uint8_t*>(sample.data());
    text.resize(ToUtf16(CodePage::Ansi, bytes, sample.size(), text.data(), text.size()));

    Measure("load ANSI", sample, text, false);
    Measure("load ANSI with CR LF", WithReturns(sample), text, false);
    Measure("load UTF-8", "\xEF\xBB\xBF" + sample, text, false);
    Measure("load UTF-16", Units(text, false), text, true);
    Measure("load UTF-16, big-endian", Units(text, true), text, true);
    unlink(Bench::ScratchName(Plain).c_str());
    return Bench::ExitStatus();
}
