#include "Ratio.h"
#include "base/CodePage.h"
#include "base/Platform.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "syntax/EngineDefinition.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

// What the settings file that ships with the program costs at the start: parsing it and making its engine definitions,
// against a plain loop that copies its characters and looks for the ends of lines and names; and what both with reading
// it add to a start of 100 ms. A round is too short for the clock, so each is done many times over.

namespace {

constexpr int Repeats = 200;

std::u16string ShippedPath() {
    std::string path = ORVANE_SOURCE "/ship/orvane.ini";
    for (char& c : path)
        if (c == '/') c = '\\';
    return {path.begin(), path.end()};
}

std::u16string ReadShipped() {
    Platform::ByteBlock block;
    Bench::Check(Platform::ReadWholeFile(ShippedPath().c_str(), block), "the shipped file is read");
    std::u16string text(block.size, u' ');
    text.resize(ToUtf16(CodePage::Utf8, block.bytes, block.size, text.data(), text.size()));
    return text;
}

// The plain loop: the characters are copied, and each is asked for what ends a line or a name.
void CopyAndLook(const std::u16string& text, std::vector<Char>& copy) {
    uint32_t found = 0;
    for (size_t i = 0; i < copy.size(); ++i) {
        const Char c = text.c_str()[i];
        copy[i] = c;
        if (c == u'\r' || c == u'\n' || c == u'=') ++found;
    }
    Bench::Keep(found);
    Bench::Keep(copy[copy.size() / 2]);
}

void Repeat(const Bench::Action& action) {
    for (int i = 0; i < Repeats; ++i) action();
}

// As the program starts, with the settings file at `path`.
void LoadAll(const Char* path) {
    IniFile file;
    static_cast<void>(file.Load(path));
    LoadSettings(file);
    LoadEngineDefinitions(file);
}

} // namespace

int main() {
    const std::u16string text = ReadShipped();
    std::vector<Char> copy(text.size() + 1);
    {
        IniFile file;
        std::memcpy(copy.data(), text.c_str(), copy.size() * sizeof(Char));
        Bench::Check(file.Parse(copy.data()) && file.FindSection(u"Engine_Python"), "the shipped file is parsed");
    }
    const auto parse = [&] {
        IniFile file;
        std::memcpy(copy.data(), text.c_str(), copy.size() * sizeof(Char));
        static_cast<void>(file.Parse(copy.data()));
        Bench::Keep(file);
    };
    Bench::Compare(
        "parsing the shipped settings / a plain loop over it", [&] { Repeat(parse); },
        [&] { Repeat([&] { CopyAndLook(text, copy); }); }, 2);

    IniFile file;
    Bench::Check(file.Load(ShippedPath().c_str()), "the shipped file is loaded");
    LoadSettings(file);
    Bench::Compare(
        "its engine definitions / a plain loop over it", [&] { Repeat([&] { LoadEngineDefinitions(file); }); },
        [&] { Repeat([&] { CopyAndLook(text, copy); }); }, 2);

    const double before = Bench::ProcessorMilliseconds();
    Repeat([] { LoadAll(ShippedPath().c_str()); });
    const double with = Bench::ProcessorMilliseconds() - before;
    Repeat([] { LoadAll(u""); });
    const double without = Bench::ProcessorMilliseconds() - before - with;
    std::printf("settings of one start: %.3f ms with the file, %.3f ms without\n", with / Repeats, without / Repeats);
    // The smallest start of the program that was measured takes a tenth of a second.
    Bench::Report("what the file adds to a start of 100 ms", 1 + (with - without) / Repeats / 100, 1.02);

    ReleaseEngineDefinitions();
    ReleaseSettings();
    return Bench::ExitStatus();
}
