#include "../tests/support/TestServices.h"
#include "PeakMemory.h"
#include "PlainFile.h"
#include "Ratio.h"
#include "SampleText.h"
#include "base/CodePage.h"
#include "document/TextBuffer.h"
#include "settings/AdditionalSettings.h"

#include <cstring>
#include <iconv.h>
#include <string>

// Loading 100 MB of C++ text against reading it in one call, widening it and counting its line feeds; UTF-8 as such
// against reading it, converting it with the system's call, and counting. And the most memory that a load takes.

namespace {

constexpr char Plain[] = "bench-load-plain.txt";
constexpr char Other[] = "bench-load-other.txt";

class Held {
public:
    Held() { document->AddRef(); }
    ~Held() { document->Release(); }
    TextBuffer* operator->() const { return document; }

private:
    TextBuffer* document = new TextBuffer(textServices);
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
        name, load, [&] { ReadAndWiden(plain); }, 0.8);
    if (copies)
        Bench::Compare(
            "  against reading that file and copying it", load, [&] { ReadAndCopy(other); }, 1.3);
    unlink(other.c_str());
}

void ReadAndConvert(const std::string& name) {
    const size_t size = Bench::FileSize(name.c_str());
    Bench::Fresh<uint8_t> bytes(size);
    Bench::Check(Bench::ReadPlain(name.c_str(), bytes.items, size), "the reference cannot read");
    Bench::Fresh<Char> text(size + 1);
    const iconv_t conversion = iconv_open("UTF-16LE", "UTF-8");
    auto* in = reinterpret_cast<char*>(bytes.items);
    auto* out = reinterpret_cast<char*>(text.items);
    size_t inLeft = size;
    size_t outLeft = size * sizeof(Char);
    Bench::Check(iconv(conversion, &in, &inLeft, &out, &outLeft) == 0, "the reference cannot convert");
    iconv_close(conversion);
    referenceLines = 1 + Bench::CountLineFeedsPlain(text.items, size - outLeft / sizeof(Char));
}

// A letter beyond ASCII in each line.
std::string WithLetters(const std::string& text) {
    std::string out;
    out.reserve(text.size() + text.size() / 16);
    for (const char c : text) {
        if (static_cast<unsigned char>(c) >= 0x80) continue;
        if (c == '\n') out += "\xC5\x82";
        out.push_back(c);
    }
    out.resize(out.rfind('\n') + 1);
    return out;
}

std::string Chinese(size_t size) {
    std::string text;
    while (text.size() < size) {
        for (int i = 0; i < 30; ++i) text += i % 2 ? "\xE4\xB8\xAD" : "\xE6\x96\x87";
        text += "\xE3\x80\x82\n";
    }
    return text;
}

void MeasureUtf8(const char* name, const std::string& bytes) {
    Bench::WriteScratch(Other, bytes.data(), bytes.size());
    const std::string other = Bench::ScratchName(Other);
    const std::u16string path = Bench::ScratchPath(Other);
    const auto load = [&] {
        Held document;
        Bench::Check(document->Load(path.c_str(), false), "the file does not load");
        Bench::Keep(document->Content());
    };
    ReadAndConvert(other);
    {
        Held document;
        Bench::Check(document->Load(path.c_str(), false), "the file does not load");
        Bench::Check(document->GetLineCount() == referenceLines, "another count of lines");
    }
    Bench::Compare(
        name, load, [&] { ReadAndConvert(other); }, 1.3);
    unlink(other.c_str());
}

// ASCII costs nothing more when every file may be UTF-8.
void MeasureLooking(const std::string& ascii) {
    Bench::WriteScratch(Other, ascii.data(), ascii.size());
    const std::u16string path = Bench::ScratchPath(Other);
    const auto load = [&](uint32_t utf8) {
        additionalSettings.Utf8 = utf8;
        Held document;
        Bench::Check(document->Load(path.c_str(), false), "the file does not load");
        Bench::Check(document->Length() == ascii.size(), "another text");
        Bench::Keep(document->Content());
    };
    Bench::Compare(
        "load ASCII, looking for UTF-8, against not looking", [&] { load(1); }, [&] { load(0); }, 1.05);
    unlink(Bench::ScratchName(Other).c_str());
}

std::string WithoutLetters(std::string text) {
    std::erase_if(text, [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    return text;
}

// The most that a load takes beyond two bytes a character, as a share of the 4 MB that it may take.
void MeasurePeak(const char* name, const std::string& bytes) {
    Bench::WriteScratch(Other, bytes.data(), bytes.size());
    const std::u16string path = Bench::ScratchPath(Other);
    const size_t before = Bench::RestartPeak();
    Held document;
    Bench::Check(document->Load(path.c_str(), false), "the file does not load");
    const double beyond = static_cast<double>(Bench::PeakBytes() - before) - 2.0 * document->Length();
    Bench::Report(name, beyond / (4 << 20), 1.0);
    unlink(Bench::ScratchName(Other).c_str());
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
    MeasureLooking(WithoutLetters(sample));
    additionalSettings.Utf8 = 1;
    Measure("load ANSI, looking for UTF-8", sample, text, false);
    const std::string letters = WithLetters(sample);
    MeasureUtf8("load UTF-8 as such, a letter a line", letters);
    MeasureUtf8("load UTF-8 as such, Chinese", Chinese(Bench::SampleSize));
    unlink(Bench::ScratchName(Plain).c_str());

    MeasurePeak("memory to load ANSI, of what it may take", sample);
    MeasurePeak("memory to load ANSI with CR LF", WithReturns(sample));
    MeasurePeak("memory to load UTF-16", Units(text, false));
    MeasurePeak("memory to load UTF-16, big-endian", Units(text, true));
    MeasurePeak("memory to load UTF-8, a letter a line", letters);
    MeasurePeak("memory to load UTF-8, Chinese", Chinese(Bench::SampleSize));
    MeasurePeak("memory to load ANSI that is read again, a letter a line", letters + '\xFF');
    MeasurePeak("memory to load ANSI that is read again, Chinese", Chinese(Bench::SampleSize) + '\xFF');
    return Bench::ExitStatus();
}
