#include "../tests/support/TestServices.h"
#include "PlainFile.h"
#include "Ratio.h"
#include "SampleText.h"
#include "binary/BinaryDocument.h"

#include <algorithm>
#include <cstdio>
#include <malloc.h>
#include <string>
#include <vector>

// The binary document: opening a file of 1 TB against one of 1 kB, searching 1 GB against reading it in pieces of 32
// kB, reading at random against one read of the system each, editing many changed pages against few, and its memory.

namespace {

constexpr char Large[] = "bench-binary.bin";
constexpr char Sparse[] = "bench-binary-sparse.bin";
constexpr uint64_t LargeSize = uint64_t{1} << 30;
constexpr uint64_t SparseSize = uint64_t{1} << 40;

class Opened {
public:
    explicit Opened(const char* name) {
        document->AddRef();
        Bench::Check(document->Open(Bench::ScratchPath(name).c_str()), "a file does not open");
    }
    ~Opened() { document->Release(); }
    BinaryDocument* operator->() const { return document; }

private:
    BinaryDocument* document = new BinaryDocument(hexServices);
};

void MakeLargeFile() {
    const std::string sample = Bench::SampleBytes();
    const int file = open(Bench::ScratchName(Large).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    for (uint64_t left = LargeSize; left;) {
        const size_t part = static_cast<size_t>(std::min<uint64_t>(left, sample.size()));
        Bench::Check(write(file, sample.data(), part) == static_cast<ssize_t>(part), "no room for 1 GB");
        left -= part;
    }
    close(file);
}

void MakeSparseFile(const char* name, uint64_t size) {
    Bench::WriteScratch(name, "", 0);
    Bench::Check(truncate(Bench::ScratchName(name).c_str(), static_cast<off_t>(size)) == 0, "no sparse files here");
}

void ReadInPieces() {
    const int file = open(Bench::ScratchName(Large).c_str(), O_RDONLY | O_CLOEXEC);
    static char piece[32768];
    uint64_t total = 0;
    for (ssize_t got = 0; (got = read(file, piece, sizeof piece)) > 0;) total += static_cast<uint64_t>(got);
    close(file);
    Bench::Check(total == LargeSize, "the reference cannot read");
}

void MeasureOpening() {
    MakeSparseFile(Sparse, SparseSize);
    Bench::WriteScratch("bench-binary-small.bin", std::string(1000, 'x').data(), 1000);
    const auto openMany = [](const char* name) {
        for (int i = 0; i < 1000; ++i) Opened opened(name);
    };
    Bench::Compare(
        "opening 1 TB against 1 kB, 1000 times", [&] { openMany(Sparse); }, [&] { openMany("bench-binary-small.bin"); },
        2.0);
    unlink(Bench::ScratchName("bench-binary-small.bin").c_str());
}

void MeasureSearching() {
    Opened opened(Large);
    const auto find = [&](const Char* text, bool matchCase, bool backward, bool hexPattern) {
        WString pattern;
        Bench::Check(pattern.Assign(text), "no memory");
        ByteHit hit;
        return opened->FindBytes(pattern, {backward ? LargeSize : 0, LargeSize, matchCase, backward, hexPattern}, hit);
    };
    const struct {
        const char* name;
        const Char* pattern;
        bool matchCase;
        bool hexPattern;
    } searches[] = {
        {"absent text, with case", u"no such text in any header qz", true, false},
        {"absent text, without case", u"no such text in any header qz", false, false},
        {"absent bytes", u"23 69 6e 63 6c 75 64 65 20 3c 01", true, true}, // begins with "#include <"
    };
    for (const auto& search : searches) {
        for (const bool backward : {false, true}) {
            const auto run = [&] {
                Bench::Check(!find(search.pattern, search.matchCase, backward, search.hexPattern),
                             "found what is not there");
            };
            const std::string name = std::string(backward ? "backwards: " : "forwards: ") + search.name;
            Bench::Compare(name.c_str(), run, ReadInPieces, backward ? 2.0 : 1.5, 9);
        }
    }
}

void MeasureRandomReads() {
    Opened opened(Large);
    std::vector<uint64_t> offsets;
    uint64_t state = 1;
    for (int i = 0; i < 20000; ++i) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        offsets.push_back((state >> 20) % (LargeSize - 65536));
    }
    const int file = open(Bench::ScratchName(Large).c_str(), O_RDONLY | O_CLOEXEC);
    static char piece[32768];
    Bench::Compare(
        "20,000 random windows against one system read each",
        [&] {
            for (const uint64_t offset : offsets) Bench::Check(opened->EnsureWindow(offset, PageSize), "a read fails");
        },
        [&] {
            for (const uint64_t offset : offsets)
                Bench::Check(pread(file, piece, sizeof piece, static_cast<off_t>(offset)) > 0, "a read fails");
        },
        1.5);
    close(file);
}

constexpr uint64_t Apart = 4096; // pages from one changed page to the next

// Of one edit of one byte, going round the pages [first, first + pages). Each is undone at once: the records
// then use the same memory again, and it is not page faults that are measured.
double EditTime(BinaryDocument& document, uint64_t first, uint64_t pages, uint64_t edits) {
    const double start = Bench::ProcessorMilliseconds();
    for (uint64_t i = 0; i < edits; ++i) {
        const uint8_t byte = static_cast<uint8_t>(i);
        const uint64_t offset = (first + i % pages) * PageSize * Apart + i / pages;
        Bench::Check(document.EditBytes(offset, &byte, 1, nullptr, {}) && document.Undo(), "an edit fails");
    }
    return (Bench::ProcessorMilliseconds() - start) / static_cast<double>(edits);
}

// How many pages have changed must not matter: neither to an edit of a page that had changed before, nor to
// the first one of a page, which reads it, nor to edits that go all over the changed pages.
void MeasureEditing() {
    constexpr uint64_t Few = 1000;
    constexpr uint64_t Many = 10000;
    constexpr uint64_t Edits = 100000;
    double firstEarly = 1, firstLate = 1, early = 1, late = 1, all = 1;
    for (int round = 0; round < 5; ++round) {
        Opened opened(Sparse);
        BinaryDocument& document = *opened.operator->();
        EditTime(document, 0, Few, Few);
        early = std::min(early, EditTime(document, 0, Few, Edits));
        firstEarly = std::min(firstEarly, EditTime(document, Few, Few, Few));
        EditTime(document, 2 * Few, Many - 3 * Few, Many - 3 * Few);
        firstLate = std::min(firstLate, EditTime(document, Many - Few, Few, Few));
        late = std::min(late, EditTime(document, 0, Few, Edits));
        all = std::min(all, EditTime(document, 0, Many, Edits));
    }
    std::printf("an edit and its undo take %.0f ns, the first of a page %.0f ns\n", early * 1e6, firstEarly * 1e6);
    Bench::Report("an edit with 10,000 pages changed against 1,000", late / early, 1.2);
    Bench::Report("edits all over 10,000 changed pages against all over 1,000", all / early, 1.5);
    Bench::Report("the first edit of a page with 9,000 others changed against 1,000", firstLate / firstEarly, 1.2);
}

size_t BytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void MeasureMemory() {
    const size_t before = BytesInUse();
    Opened opened(Sparse);
    EditTime(*opened.operator->(), 0, 1000, 1000);
    const double pages = 1000.0 * PageSize + FileWindow::Capacity;
    Bench::Report("memory of 1000 changed pages, against the pages and the window",
                  static_cast<double>(BytesInUse() - before) / pages, 1.02);
}

} // namespace

int main() {
    Heap::Start();
    MakeLargeFile();
    MeasureOpening();
    MeasureSearching();
    MeasureRandomReads();
    MeasureEditing();
    MeasureMemory();
    unlink(Bench::ScratchName(Large).c_str());
    unlink(Bench::ScratchName(Sparse).c_str());
    return Bench::ExitStatus();
}
