#include "Ratio.h"
#include "SampleText.h"
#include "base/Heap.h"
#include "base/Scan.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "syntax/EngineChoice.h"
#include "syntax/EngineDefinition.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <vector>

// Colouring and state scanning of the sample text, against a copy (memcpy) of the same UTF-16 text into memory that was
// touched before.
namespace {

struct Totals {
    uint64_t characters = 0;
    uint64_t runs = 0;
};

// The lines of a text, found beforehand: finding them is the document's work.
std::vector<uint32_t> LineStarts(const std::u16string& text) {
    std::vector<uint32_t> starts;
    for (size_t start = 0; start < text.size();) {
        starts.push_back(static_cast<uint32_t>(start));
        start = std::min(start + Scan::FindLineFeed(text.data() + start, text.size() - start) + 1, text.size());
    }
    starts.push_back(static_cast<uint32_t>(text.size()));
    return starts;
}

// Colours every line with its line feed, as a view does, from the first line to the last.
Totals ColourAll(SyntaxEngine& engine, const std::u16string& text, const std::vector<uint32_t>& starts) {
    Totals totals;
    uint32_t state = 0;
    for (size_t i = 0; i + 1 < starts.size(); ++i) {
        ColouredLine line;
        totals.characters +=
            engine.ColourLine(starts[i], text.data() + starts[i], starts[i + 1] - starts[i], state, line);
        totals.runs += line.count;
    }
    return totals;
}

// The runs of every line must add up to the line.
void CheckCover(SyntaxEngine& engine, const std::u16string& text, const std::vector<uint32_t>& starts,
                const char* what) {
    uint32_t state = 0;
    uint64_t runs = 0;
    for (size_t i = 0; i + 1 < starts.size(); ++i) {
        ColouredLine line;
        const uint32_t length = starts[i + 1] - starts[i];
        uint64_t sum = 0;
        Bench::Check(engine.ColourLine(starts[i], text.data() + starts[i], length, state, line) == length, what);
        for (uint32_t run = 0; run < line.count; ++run) sum += line.spans[run].length;
        Bench::Check(sum == length, what);
        runs += line.count;
    }
    std::printf("%s: %.1f characters a line, %.1f a run\n", what,
                static_cast<double>(text.size()) / static_cast<double>(starts.size() - 1),
                static_cast<double>(text.size()) / static_cast<double>(runs));
}

// A page that lists the sample: tags with attributes, text, a comment now and then.
std::u16string MakeHtml(const std::u16string& source) {
    std::u16string page;
    page.reserve(source.size());
    for (size_t start = 0, line = 0; start < source.size() && page.size() < source.size() / 2; ++line) {
        const size_t end = std::min(source.find(u'\n', start), source.size());
        if (line % 40 == 0) page += u"<!-- a listing of headers, forty lines -->\n";
        page += line % 4 == 0 ? u"<p class=\"code\"><a name=l1 href='#top'>" : u"<p>";
        for (size_t i = start; i < end; ++i) {
            if (source[i] == u'<')
                page += u"&lt;";
            else
                page += source[i];
        }
        page += u"</p>\n";
        start = end + 1;
    }
    return page;
}

uint64_t allocations = 0;
bool CountAllocation() {
    ++allocations;
    return false;
}

SyntaxEngine* Engine(const Char* name) {
    SyntaxEngine* engine = ChooseEngine(name, nullptr);
    Bench::Check(engine != nullptr, "an engine");
    return engine;
}

// A copy of the text into memory that was touched before: what everything is measured by.
class Copy {
public:
    explicit Copy(const std::u16string& original) : text(original), copy(original.size(), u'x') {}
    void operator()() {
        std::memcpy(copy.data(), text.data(), text.size() * sizeof(Char));
        Bench::Keep(copy[text.size() / 2]);
    }

private:
    const std::u16string& text;
    std::vector<Char> copy;
};

double Colouring(const std::u16string& text, SyntaxEngine& engine, const char* name, double wanted) {
    const std::vector<uint32_t> starts = LineStarts(text);
    CheckCover(engine, text, starts, name);
    Copy copy(text);
    return Bench::Compare(
        name, [&] { Bench::Keep(ColourAll(engine, text, starts)); }, [&] { copy(); }, wanted);
}

void Scanning(const std::u16string& text, SyntaxEngine& engine, const char* name, double wanted) {
    Copy copy(text);
    double best = 0;
    Bench::Compare(
        name,
        [&] {
            const auto start = std::chrono::steady_clock::now();
            uint32_t stopped = 0;
            Bench::Keep(engine.ScanState(text.data(), static_cast<uint32_t>(text.size()), 0, 0, stopped));
            Bench::Check(stopped == text.size(), "the scan reaches the end");
            const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
            best = std::max(best, static_cast<double>(text.size() * sizeof(Char)) / seconds.count() / 1e9);
        },
        [&] { copy(); }, wanted);
    std::printf("%s: %.1f GB/s of UTF-16\n", name, best);
    Bench::Report("its time for a gigabyte, in seconds", 1 / best, 1);
}

void SingleLine(std::u16string text, SyntaxEngine& engine) {
    // Line comments and open strings would end the work early.
    for (Char& c : text) {
        if (c == u'\n' || c == u'/' || c == u'"' || c == u'\'') c = u' ';
    }
    Heap::SetFailureHook(CountAllocation);
    allocations = 0;
    uint32_t state = 0;
    ColouredLine line;
    const uint32_t coloured = engine.ColourLine(0, text.data(), static_cast<uint32_t>(text.size()), state, line);
    Heap::SetFailureHook(nullptr);
    Bench::Check(coloured == text.size(), "one long line is coloured whole");
    std::printf("one long line: %u runs, %llu allocations\n", line.count, static_cast<unsigned long long>(allocations));
    Bench::Report("allocations for one long line", static_cast<double>(allocations), 64);
}

} // namespace

int main() {
    const IniFile empty;
    LoadSettings(empty);
    LoadEngineDefinitions(empty);
    SyntaxEngine* cpp = Engine(u"cpp");
    SyntaxEngine* html = Engine(u"html");
    {
        const std::u16string text = Bench::SampleCharacters();
        const double cppRatio = Colouring(text, *cpp, "C-like colouring / memcpy", 20);
        Scanning(text, *cpp, "C-like state scan of source / memcpy", 10);
        std::u16string plain = text;
        for (Char& c : plain) {
            if (c == u'/' || c == u'"' || c == u'\'') c = u'x';
        }
        Scanning(plain, *cpp, "C-like state scan of plain text / memcpy", 5);
        const std::u16string page = MakeHtml(text);
        const double htmlRatio = Colouring(page, *html, "HTML colouring / memcpy", 40);
        Bench::Report("HTML colouring / C-like colouring", htmlRatio / cppRatio, 2);
        Scanning(page, *html, "HTML state scan / memcpy", 40);
    }
    SingleLine(Bench::SampleCharacters(), *cpp);
    cpp->Release();
    html->Release();
    ReleaseEngineDefinitions();
    ReleaseSettings();
    return Bench::ExitStatus();
}
