#include "../tests/support/TestServices.h"
#include "BytesInUse.h"
#include "Ratio.h"
#include "SampleText.h"
#include "document/TextBuffer.h"

#include <cstdio>
#include <string>
#include <unistd.h>

// What an open document keeps in memory, against two bytes for each character: less than one in a hundred more.

namespace {

constexpr char In[] = "bench-memory.txt";

void Measure(const char* name, const std::string& bytes) {
    Bench::WriteScratch(In, bytes.data(), bytes.size());
    const std::u16string path = Bench::ScratchPath(In);
    const size_t before = Bench::BytesInUse();
    TextBuffer* document = new TextBuffer(textServices);
    document->AddRef();
    Bench::Check(document->Load(path.c_str(), false), "the file does not load");
    const double used = static_cast<double>(Bench::BytesInUse() - before);
    Bench::Report(name, used / (2.0 * document->Length()), 1.01);
    document->Release();
    unlink(Bench::ScratchName(In).c_str());
}

} // namespace

int main() {
    Heap::Start();
    const std::string sample = Bench::SampleBytes();
    std::string returns;
    std::string units = "\xFF\xFE";
    for (const char c : sample) {
        if (c == '\n') returns.push_back('\r');
        returns.push_back(c);
        units.push_back(c);
        units.push_back('\0');
    }
    Measure("memory of an ANSI document, in two bytes a character", sample);
    Measure("memory of one with CR LF", returns);
    Measure("memory of a UTF-16 document", units);
    return Bench::ExitStatus();
}
