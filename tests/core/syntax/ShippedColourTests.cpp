// The samples of all languages, coloured by the settings file that comes with the program.
//
// A golden file repeats the sample with a line below each of its lines that has a letter for the class of every
// character: c line comment, l long comment, s string, k keyword, n number; in markup t tag, a attribute, =
// punctuation, v value, q quoted value, m comment. Text has a blank (and a tab below a tab); the line ends with its
// last letter.

#include "ShippedFileTest.h"
#include "syntax/EngineChoice.h"

#include <cstdlib>

namespace {

constexpr char Letters[ColourClassCount] = {' ', 'c', 'l', 's', 'k', 'n', 't', 'a', 'v', 'q', 'm', '='};

class ShippedColours : public ShippedFileTest {
protected:
    // The letters below a line, which is coloured with its line feed as in a document.
    static std::string LettersBelow(SyntaxEngine& engine, const std::string& line, uint32_t& state) {
        const std::u16string text = shipped::Wide(line + '\n');
        ColouredLine coloured;
        EXPECT_EQ(engine.ColourLine(0, text.data(), static_cast<uint32_t>(text.size()), state, coloured), text.size());
        std::string letters;
        for (uint32_t i = 0; i < coloured.count; ++i) {
            const uint32_t index = coloured.spans[i].foreground - FirstForeground;
            letters.append(coloured.spans[i].length, index < ColourClassCount ? Letters[index] : '?');
        }
        letters.resize(line.size());
        for (size_t i = 0; i < line.size(); ++i)
            if (line[i] == '\t' && letters[i] == ' ') letters[i] = '\t';
        letters.erase(letters.find_last_not_of(" \t") + 1);
        return letters;
    }

    static std::string Golden(const std::filesystem::path& sample) {
        const EngineHandle engine(ChooseEngineForFile(nullptr, source::ProgramPath(sample).c_str()));
        uint32_t state = 0;
        std::string golden;
        for (const std::string& line : shipped::Lines(shipped::ReadText(sample)))
            golden += line + '\n' + LettersBelow(*engine, line, state) + '\n';
        EXPECT_EQ(state, 0u) << "a comment is left open";
        return golden;
    }
};

} // namespace

TEST_F(ShippedColours, EverySampleIsColouredAsItsGoldenFileSays) {
    uint32_t compared = 0;
    for (const auto& entry : std::filesystem::directory_iterator(shipped::SampleFolder())) {
        if (!entry.is_regular_file()) continue;
        const std::string name = entry.path().filename().string();
        SCOPED_TRACE(name);
        const std::string golden = shipped::ReadText(shipped::SampleFolder() / "colours" / (name + ".txt"));
        EXPECT_FALSE(golden.empty()) << "no golden file";
        const std::string painted = Golden(entry.path());
        EXPECT_EQ(painted, golden);
        if (const char* folder = std::getenv("ORVANE_COLOURS"))
            std::ofstream(std::filesystem::path(folder) / (name + ".txt"), std::ios::binary) << painted;
        ++compared;
    }
    EXPECT_GE(compared, 40u);
}

TEST_F(ShippedColours, EmbeddedCodeIsColouredByTheLanguagesOfTheFile) {
    const EngineHandle html = Choose(u"html");
    EXPECT_EQ(Runs(*html, u"<script>let</script>"), "tag(<script>) keyword(let) tag(</script>)");
    EXPECT_EQ(Runs(*html, u"<?php echo?>"), "tag(<?php) text( ) keyword(echo) tag(?>)");
}
