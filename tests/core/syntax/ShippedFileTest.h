#pragma once

#include "SyntaxTestSupport.h"

#include "support/SourceTree.h"

#include <algorithm>
#include <fstream>
#include <iterator>

// The samples of all languages, and what is needed to read them.
namespace shipped {

inline std::filesystem::path SampleFolder() { return source::Folder() / "tests" / "samples" / "languages"; }

// Empty when it cannot be read. Carriage returns are left out.
inline std::string ReadText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    std::erase(text, '\r');
    return text;
}

inline std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

inline std::u16string Wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }
inline std::string Narrow(const Char* text) { return Readable(text, Text::Length(text)); }

inline std::vector<std::string> Words(const std::string& list) {
    std::vector<std::string> words;
    for (size_t start = 0; start < list.size();) {
        const size_t end = std::min(list.find(' ', start), list.size());
        words.push_back(list.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

} // namespace shipped

// A test of the settings file that comes with the program, loaded as at the start of the program.
class ShippedFileTest : public SyntaxTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(file.Load(source::ProgramPath(source::Folder() / "ship" / "orvane.ini").c_str()));
        LoadEngineDefinitions(file);
    }

    static bool IsEngine(const IniSection& section) {
        return shipped::Narrow(section.name.Text()).starts_with("Engine_");
    }
    // What follows "Engine_" in the section's name.
    static std::string LanguageOf(const IniSection& section) { return shipped::Narrow(section.name.Text()).substr(7); }
    static std::string Value(const IniSection& section, const Char* key) {
        return shipped::Narrow(section.GetString(key, u""));
    }
    template <class Visitor> void ForEachEngine(Visitor visit) const {
        for (const IniSection* section = file.sections.head; section; section = section->next) {
            if (!IsEngine(*section)) continue;
            SCOPED_TRACE(LanguageOf(*section));
            visit(*section);
        }
    }

    IniFile file;
};
