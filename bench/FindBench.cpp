#include "SampleDocument.h"

#include <cstring>
#include <string>
#include <vector>

// Searching a document, compared with memcpy of its text into warm memory.

namespace {

constexpr double WithCase = 2.0;    // at least 0.5 of memcpy's bandwidth
constexpr double WithoutCase = 2.5; // at least 0.4
constexpr double Harder = 1.3;      // for whole words or in any case, against the search that is neither

const char Unique[] = "static_cast<int>(theOnlyOne);";

struct Search {
    TextBuffer& document;
    std::u16string pattern;
    bool matchCase;
    bool wholeWord;
    bool backward;

    uint32_t Run() const {
        SearchHit hit;
        const SearchQuery query = {pattern.c_str(), static_cast<uint32_t>(pattern.size()), matchCase, wholeWord};
        const uint32_t from = backward ? document.Length() : 0;
        const bool there = document.FindText(query, {from, document.Length(), backward}, hit);
        return there ? hit.offset : NoOffset;
    }
};

void Compare(const Search& search, const std::string& name, uint32_t expected) {
    TextBuffer& document = search.document;
    std::vector<Char> copy(document.Length());
    const auto memcpyText = [&] {
        std::memcpy(copy.data(), document.Content(), copy.size() * sizeof(Char));
        Bench::Keep(copy);
    };
    Bench::Check(search.Run() == expected, name.c_str());
    const std::string mode = search.matchCase ? ", with case" : ", without case";
    const std::string direction = search.backward ? "backwards, " : "forwards, ";
    Bench::Compare((direction + name + mode).c_str(), [&] { Bench::Keep(search.Run()); }, memcpyText,
                   search.matchCase ? WithCase : WithoutCase);
    Search plain = search;
    plain.matchCase = true;
    Search whole = search;
    whole.wholeWord = true;
    Bench::Check(whole.Run() == expected, name.c_str());
    Bench::Compare((direction + name + mode + " and whole words, against neither").c_str(),
                   [&] { Bench::Keep(whole.Run()); }, [&] { Bench::Keep(plain.Run()); }, Harder);
}

} // namespace

int main() {
    Heap::Start();
    std::string bytes = Bench::SampleBytes();
    const std::string first = Unique + std::string("\n");
    const std::string last = "\n" + std::string(Unique);
    const auto lastPosition = static_cast<uint32_t>(bytes.size() - last.size() + 1);
    for (const bool backward : {false, true}) {
        std::string text = bytes;
        text.replace(backward ? 0 : lastPosition - 1, last.size(), backward ? first : last);
        Bench::SampleDocument document(text);
        const std::u16string unique(Unique, Unique + sizeof Unique - 1);
        for (const bool matchCase : {true, false}) {
            Compare({*document, unique, matchCase, false, backward}, "found only at the end",
                    backward ? 0 : lastPosition);
            Compare({*document, u"static inline voidless", matchCase, false, backward}, "a common beginning, absent",
                    NoOffset);
        }
    }
    return Bench::ExitStatus();
}
