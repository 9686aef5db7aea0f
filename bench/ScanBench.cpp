#include "Ratio.h"
#include "SampleText.h"

#include "base/Scan.h"
#include "base/ScanUtf8.h"

#include <cstring>
#include <string>
#include <vector>

// How near the scanning loops come to the speed of memory: each is compared with memcpy of the same
// bytes into warm memory.

namespace {

// Largest wanted time, as a multiple of memcpy's, for 0.8, 0.5 and 0.4 of its bandwidth.
constexpr double ForCounting = 1.25;
constexpr double ForFinding = 2.0;
constexpr double ForFindingAnyCase = 2.5;
constexpr double ForChinese = 5.0; // for 0.2

struct Sample {
    std::u16string text;
    std::vector<Char> copy;

    Bench::Action Memcpy() {
        return [this] {
            std::memcpy(copy.data(), text.data(), text.size() * sizeof(Char));
            Bench::Keep(copy);
        };
    }
};

void CompareCounting(Sample& sample) {
    const Char* const text = sample.text.data();
    const size_t count = sample.text.size();
    Bench::Check(Scan::CountLineFeeds(text, count) == Scan::Reference::CountLineFeeds(text, count), "line feeds");
    Bench::Compare(
        "CountLineFeeds", [=] { Bench::Keep(Scan::CountLineFeeds(text, count)); }, sample.Memcpy(), ForCounting);
    size_t passed = 0;
    size_t expected = 0;
    Bench::Check(Scan::SkipLines(text, count, count, passed) ==
                         Scan::Reference::SkipLines(text, count, count, expected) &&
                     passed == expected,
                 "skipped lines");
    const auto skip = [=] {
        size_t all = 0;
        Bench::Keep(Scan::SkipLines(text, count, count, all));
    };
    Bench::Compare("SkipLines", skip, sample.Memcpy(), ForCounting);
}

void CompareForward(Sample& sample, const std::u16string& pattern, const char* name, bool matchCase, size_t expected) {
    const Char* const text = sample.text.data();
    const size_t count = sample.text.size();
    const auto find = [=, &pattern] {
        return Scan::FindForward(text, count, {0, count}, {pattern.data(), pattern.size(), matchCase});
    };
    Bench::Check(find() == expected, name);
    Bench::Compare(
        name, [=] { Bench::Keep(find()); }, sample.Memcpy(), matchCase ? ForFinding : ForFindingAnyCase);
}

void CompareBackward(Sample& sample, const std::u16string& pattern, const char* name, bool matchCase, size_t expected) {
    const Char* const text = sample.text.data();
    const size_t count = sample.text.size();
    const auto find = [=, &pattern] {
        return Scan::FindBackward(text, count, {0, count}, {pattern.data(), pattern.size(), matchCase});
    };
    Bench::Check(find() == expected, name);
    Bench::Compare(
        name, [=] { Bench::Keep(find()); }, sample.Memcpy(), matchCase ? ForFinding : ForFindingAnyCase);
}

// Of common characters only, one beginning like thousands of lines do, and one rare.
constexpr const Char* Absent[] = {u"static inline voidless", u"return 0; // and nothing less", u"uint32_t zqx"};
constexpr const char* AbsentNames[] = {"a common beginning", "a common statement", "a rare ending"};

void CompareFinding(Sample& sample, bool matchCase) {
    const std::string mode = matchCase ? " with case" : " without case";
    const std::u16string unique = u"static_cast<int>(theOnlyOne);";
    const size_t last = sample.text.size() - unique.size();
    sample.text.replace(last, unique.size(), unique);
    CompareForward(sample, unique, ("FindForward, at the end," + mode).c_str(), matchCase, last);
    for (size_t i = 0; i < 3; ++i)
        CompareForward(sample, Absent[i], (std::string("FindForward, absent, ") + AbsentNames[i] + mode).c_str(),
                       matchCase, Scan::NotFound);

    sample.text.replace(last, unique.size(), unique.size(), u' ');
    sample.text.replace(0, unique.size(), unique);
    CompareBackward(sample, unique, ("FindBackward, at the start," + mode).c_str(), matchCase, 0);
    for (size_t i = 0; i < 3; ++i)
        CompareBackward(sample, Absent[i], (std::string("FindBackward, absent, ") + AbsentNames[i] + mode).c_str(),
                        matchCase, Scan::NotFound);
    sample.text.replace(0, unique.size(), unique.size(), u' ');
}

// Bytes of a text in UTF-8 against copying them.
void CompareValidity(const char* name, const std::string& text, double wanted) {
    const auto* const bytes = reinterpret_cast<const uint8_t*>(text.data());
    const size_t count = text.size();
    std::vector<char> copy(count);
    Bench::Check(Scan::ValidUtf8(bytes, count) == count, "valid UTF-8");
    const auto copyAll = [&] {
        std::memcpy(copy.data(), text.data(), count);
        Bench::Keep(copy);
    };
    Bench::Compare(
        name, [=] { Bench::Keep(Scan::ValidUtf8(bytes, count)); }, copyAll, wanted);
}

std::string Ascii(std::string text) {
    for (char& c : text) c = static_cast<char>(c & 0x7F);
    return text;
}

std::string Chinese(size_t size) {
    std::string text;
    while (text.size() < size) {
        for (int i = 0; i < 30; ++i) text += i % 2 ? "\xE4\xB8\xAD" : "\xE6\x96\x87";
        text += "\xE3\x80\x82\n";
    }
    return text;
}

} // namespace

int main() {
    Sample sample{Bench::SampleCharacters(), std::vector<Char>(Bench::SampleSize)};
    CompareCounting(sample);
    CompareFinding(sample, true);
    CompareFinding(sample, false);
    CompareValidity("ValidUtf8, ASCII", Ascii(Bench::SampleBytes()), ForFinding);
    CompareValidity("ValidUtf8, Chinese", Chinese(Bench::SampleSize), ForChinese);
    return Bench::ExitStatus();
}
