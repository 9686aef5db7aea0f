#include "../tests/support/TestServices.h"
#include "PlainFile.h"
#include "Ratio.h"
#include "SampleText.h"
#include "document/TextBuffer.h"

#include <algorithm>
#include <string>

// Saving 100 MB of C++ text against narrowing it and writing it in one call. Both end with what the system needs to
// have the bytes on the disk. A save makes and writes its bytes twice, to a copy and then in place, and adds them up:
// that no byte is lost is worth more than the ratio, which misses the mark where the bytes take long to make.

namespace {

constexpr char In[] = "bench-save-in.txt";
constexpr char Out[] = "bench-save-out.txt";
constexpr char Recovery[] = "bench-save-recovery";

void NarrowAndWrite(const Char* text, size_t count, const std::string& name) {
    Bench::Fresh<uint8_t> bytes(count);
    Bench::NarrowPlain(text, count, bytes.items);
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    Bench::Check(file != -1 && write(file, bytes.items, count) == static_cast<ssize_t>(count) && fsync(file) == 0,
                 "the reference cannot write");
    close(file);
}

std::string ReadAll(const std::string& name) {
    std::string bytes(Bench::FileSize(name.c_str()), '\0');
    Bench::Check(Bench::ReadPlain(name.c_str(), bytes.data(), bytes.size()), "a file cannot be read");
    return bytes;
}

} // namespace

int main() {
    Heap::Start();
    // Plain ASCII, so that the narrowed bytes are right in every encoding of bytes.
    std::string sample = Bench::SampleBytes();
    for (char& c : sample)
        if (c < 0) c = '?';
    Bench::WriteScratch(In, sample.data(), sample.size());
    TextBuffer* document = new TextBuffer(textServices);
    document->AddRef();
    Bench::Check(document->Load(Bench::ScratchPath(In).c_str(), false), "the sample does not load");
    const std::u16string path = Bench::ScratchPath(Out);
    const std::string name = Bench::ScratchName(Out);
    const std::u16string recovery = Bench::ScratchPath(Recovery);
    Platform::SetRecoveryFolder(recovery.c_str());

    const auto measure = [&](const char* title, Encoding encoding, LineEnding style) {
        const auto save = [&] { Bench::Check(document->Save(path.c_str(), encoding, style), "a save fails"); };
        const auto reference = [&] { NarrowAndWrite(document->Content(), document->Length(), name); };
        save();
        std::string saved = ReadAll(name);
        if (encoding == Encoding::Utf8) saved.erase(0, 3);
        if (style == LineEnding::Dos) saved.erase(std::remove(saved.begin(), saved.end(), '\r'), saved.end());
        Bench::Check(saved == sample, "another text was saved");
        Bench::Compare(title, save, reference, 1.5);
    };
    measure("save ANSI", Encoding::Ansi, LineEnding::Unix);
    measure("save ANSI with CR LF", Encoding::Ansi, LineEnding::Dos);
    measure("save UTF-8", Encoding::Utf8, LineEnding::Unix);
    document->Release();
    unlink(name.c_str());
    rmdir((Bench::ScratchName(Recovery) + "/Copies").c_str());
    rmdir(Bench::ScratchName(Recovery).c_str());
    unlink(Bench::ScratchName(In).c_str());
    return Bench::ExitStatus();
}
