#include "SampleDocument.h"

#include "base/Scan.h"

#include <chrono>
#include <vector>

// Finding the start of a line and the line of an offset: near the last look-up against 100 ns, far away against one
// scan for line feeds over what lies between.

namespace {

constexpr double NearNanoseconds = 100;
constexpr double ForScan = 1.25; // the noise included
constexpr int Rounds = 25;

double NanosecondsEach(size_t count, const Bench::Action& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count() /
           static_cast<double>(count);
}

// A walk through the document by up to `reach` lines a step, and where each of the lines starts.
struct Walk {
    std::vector<uint32_t> lines;
    std::vector<uint32_t> starts;

    Walk(TextBuffer& document, uint32_t reach) {
        std::vector<uint32_t> all{0};
        const Char* text = document.Content();
        for (uint32_t i = 0; i < document.Length(); ++i) {
            if (text[i] == u'\n') all.push_back(i + 1);
        }
        uint32_t random = 1;
        uint32_t line = document.GetLineCount() / 2;
        for (int step = 0; step < 20000; ++step) {
            random = random * 1664525 + 1013904223;
            line += random / 65536 % (2 * reach + 1);
            line -= reach;
            lines.push_back(line);
            starts.push_back(all[line]);
        }
    }
};

void MeasureNear(TextBuffer& document, uint32_t reach, const char* byLine, const char* byOffset) {
    const Walk walk(document, reach);
    const auto lines = [&] {
        uint32_t wrong = 0;
        for (size_t i = 0; i < walk.lines.size(); ++i) wrong += document.LineToOffset(walk.lines[i]) != walk.starts[i];
        Bench::Check(wrong == 0, byLine);
    };
    const auto offsets = [&] {
        uint32_t wrong = 0;
        for (size_t i = 0; i < walk.lines.size(); ++i) {
            // As a view does: the line is looked up, then offsets around it.
            document.LineToOffset(walk.lines[i]);
            uint32_t start = 0;
            wrong += document.OffsetToLine(walk.starts[i], start) != walk.lines[i] || start != walk.starts[i];
        }
        Bench::Check(wrong == 0, byOffset);
    };
    double line = 1e9;
    double both = 1e9;
    for (int round = 0; round < 5; ++round) {
        line = std::min(line, NanosecondsEach(walk.lines.size(), lines));
        both = std::min(both, NanosecondsEach(walk.lines.size(), offsets));
    }
    Bench::Report(byLine, line / NearNanoseconds, 1);
    Bench::Report(byOffset, (both - line) / NearNanoseconds, 1);
}

// The line cache holds only lines at one end of the text.
void StayAt(TextBuffer& document, uint32_t line) {
    for (uint32_t i = 0; i < 6; ++i) document.LineToOffset(line + i);
}

void CompareFar(TextBuffer& document) {
    const uint32_t last = document.GetLineCount() - 1;
    const auto length = document.Length();
    const auto scan = [&] { Bench::Keep(Scan::CountLineFeeds(document.Content(), length)); };
    const auto start = static_cast<uint32_t>(Scan::FindLineStart(document.Content(), length));
    uint32_t lineStart = 0;

    StayAt(document, 0);
    Bench::Check(document.LineToOffset(last) == start, "the last line");
    StayAt(document, last - 6);
    Bench::Check(document.LineToOffset(0) == 0, "the first line");
    StayAt(document, 0);
    Bench::Check(document.OffsetToLine(length, lineStart) == last && lineStart == start, "the last offset");

    const auto atStart = [&] { StayAt(document, 0); };
    const auto atEnd = [&] { StayAt(document, last - 6); };
    const Bench::Side scanned{scan};
    Bench::Compare("the last line from the first", {[&] { document.LineToOffset(last); }, atStart}, scanned, ForScan,
                   Rounds);
    Bench::Compare("the first line from the last", {[&] { document.LineToOffset(0); }, atEnd}, scanned, ForScan,
                   Rounds);
    Bench::Compare("the last offset from the first line", {[&] { document.OffsetToLine(length, lineStart); }, atStart},
                   scanned, ForScan, Rounds);
    Bench::Compare("offset 1 from the last line", {[&] { document.OffsetToLine(1, lineStart); }, atEnd}, scanned,
                   ForScan, Rounds);
}

} // namespace

int main() {
    Heap::Start();
    Bench::SampleDocument document(Bench::SampleBytes());
    MeasureNear(*document, 2, "start of a line up to 2 away, of 100 ns", "line of an offset near it, of 100 ns");
    MeasureNear(*document, 20, "start of a line up to 20 away, of 100 ns", "line of an offset near it, of 100 ns");
    CompareFar(*document);
    return Bench::ExitStatus();
}
