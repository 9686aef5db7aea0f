// The form of the settings file that comes with the program: what a mistake in it would silently cost.

#include "ShippedFileTest.h"

#include "base/Path.h"
#include "settings/AdditionalSettings.h"
#include "settings/ToolList.h"
#include "support/ScratchFolder.h"
#include "support/TestRecovery.h"

#include <map>
#include <set>
#include <sstream>

namespace {

class ShippedLanguages : public ShippedFileTest {
protected:
    static bool IsHtml(const IniSection& section) { return section.GetInt(u"HTML", 0) != 0; }

    // A word as its keyword set compares it.
    static std::string Folded(std::string word, const IniSection& section) {
        if (section.GetInt(u"CaseSensitive", 1)) return word;
        for (char& c : word) c = static_cast<char>(Text::FoldCase(static_cast<Char>(c)));
        return word;
    }

    static std::vector<std::string> CommentMarks(const IniSection& section) {
        std::vector<std::string> marks;
        for (const Char* key : {u"CommentStart", u"CommentStart_1", u"CommentStart_2", u"CommentStart_3",
                                u"LongCommentStart", u"LongCommentEnd"}) {
            if (section.FindKey(key)) marks.push_back(Value(section, key));
        }
        return marks;
    }

    static void CheckList(const std::string& list, const char* what) {
        EXPECT_FALSE(list.empty()) << what << " is empty";
        EXPECT_EQ(list.find("  "), list.npos) << what << ": two spaces";
        EXPECT_EQ(list.find('\t'), list.npos) << what << ": a tab";
        EXPECT_FALSE(list.starts_with(' ') || list.ends_with(' ')) << what << ": a space at an end";
    }

    // Nothing may hide a keyword: neither another kind of piece that begins like it, nor a shorter
    // keyword that is found first.
    static void CheckKeyword(const std::string& word, const std::set<std::string>& all, const IniSection& section) {
        EXPECT_FALSE(word[0] == '"' || word[0] == '\'' || Text::IsDigit(static_cast<Char>(word[0]))) << word;
        for (const char* key : {"CommentStart", "CommentStart_1", "LongCommentStart"}) {
            const std::string mark = Folded(Value(section, shipped::Wide(key).c_str()), section);
            // A mark that ends with a letter is a word of its own.
            if (mark.empty() || Text::IsAsciiLetter(static_cast<Char>(mark.back()))) continue;
            EXPECT_FALSE(word.starts_with(mark)) << word << " begins a comment";
        }
        for (size_t length = 1; length < word.size(); ++length) {
            if (Text::IsWordChar(static_cast<Char>(word[length]))) continue;
            EXPECT_FALSE(all.contains(word.substr(0, length))) << word << " is never found";
        }
    }
};

} // namespace

TEST_F(ShippedLanguages, ThereAreAtLeastForty) {
    uint32_t count = 0;
    ForEachEngine([&](const IniSection&) { ++count; });
    EXPECT_GE(count, 40u);
}

TEST_F(ShippedLanguages, EveryKeyIsReadAndOccursOnce) {
    const std::set<std::string> known = {"Extensions",     "FileNames",        "Keywords",       "CaseSensitive",
                                         "HTML",           "CommentStart",     "CommentStart_1", "CommentStart_2",
                                         "CommentStart_3", "LongCommentStart", "LongCommentEnd"};
    std::set<std::string> names;
    ForEachEngine([&](const IniSection& section) {
        EXPECT_TRUE(names.insert(LanguageOf(section)).second) << "two sections of one name";
        std::set<std::string> keys;
        for (const IniKey* key = section.keys.head; key; key = key->next) {
            const std::string name = shipped::Narrow(key->name.Text());
            EXPECT_TRUE(known.contains(name)) << name;
            EXPECT_TRUE(keys.insert(name).second) << name << " is there twice";
        }
    });
}

TEST_F(ShippedLanguages, EveryMarkIsComplete) {
    ForEachEngine([&](const IniSection& section) {
        EXPECT_EQ(section.FindKey(u"LongCommentStart") != nullptr, section.FindKey(u"LongCommentEnd") != nullptr);
        for (const std::string& mark : CommentMarks(section)) CheckList(mark, "a comment mark");
        EXPECT_TRUE(section.FindKey(u"CommentStart") || !section.FindKey(u"CommentStart_1"));
        EXPECT_TRUE(section.FindKey(u"CommentStart_1") || !section.FindKey(u"CommentStart_2"));
        EXPECT_TRUE(section.FindKey(u"CommentStart_2") || !section.FindKey(u"CommentStart_3"));
    });
}

TEST_F(ShippedLanguages, EveryKeywordCanBeFound) {
    ForEachEngine([&](const IniSection& section) {
        if (IsHtml(section)) return;
        CheckList(Value(section, u"Keywords"), "Keywords");
        std::set<std::string> all;
        for (const std::string& word : shipped::Words(Folded(Value(section, u"Keywords"), section)))
            EXPECT_TRUE(all.insert(word).second) << word << " is there twice";
        for (const std::string& word : all) CheckKeyword(word, all, section);
    });
}

TEST_F(ShippedLanguages, NoNameIsClaimedByTwo) {
    std::map<std::string, std::string> owners;
    ForEachEngine([&](const IniSection& section) {
        CheckList(Value(section, u"Extensions"), "Extensions");
        if (section.FindKey(u"FileNames")) CheckList(Value(section, u"FileNames"), "FileNames");
        for (const std::string& name :
             shipped::Words(Value(section, u"Extensions") + ' ' + Value(section, u"FileNames"))) {
            if (name.empty()) continue;
            std::string folded = name;
            for (char& c : folded) c = static_cast<char>(Text::FoldCase(static_cast<Char>(c)));
            const auto [owner, first] = owners.emplace(folded, LanguageOf(section));
            EXPECT_TRUE(first) << name << " is claimed by " << owner->second << " as well";
        }
    });
}

TEST_F(ShippedLanguages, BuildFilesGoByTheirName) {
    for (const Char* name : {u"CMakeLists.txt", u"cmakelists.txt"})
        EXPECT_EQ(FindEngineDefinitionOfFile(name), FindEngineDefinition(u"cmake"));
    for (const Char* name : {u"Makefile.am", u"Makefile.in"})
        EXPECT_EQ(FindEngineDefinitionOfFile(name), FindEngineDefinition(u"mak"));
    // These have no extension.
    EXPECT_EQ(FindEngineDefinition(u"Makefile"), FindEngineDefinition(u"mak"));
    EXPECT_EQ(FindEngineDefinition(u"Dockerfile"), FindEngineDefinition(u"Containerfile"));
    EXPECT_EQ(FindEngineDefinitionOfFile(u"lists.txt"), nullptr);
}

// What a name says at first glance is not always what is in the file.
TEST_F(ShippedLanguages, NamesGoToTheLanguageOfTheirContent) {
    EXPECT_EQ(FindEngineDefinition(u"ps1xml"), FindEngineDefinition(u"xml"));
    EXPECT_EQ(FindEngineDefinition(u"heex"), FindEngineDefinition(u"html"));
    EXPECT_EQ(FindEngineDefinition(u"leex"), FindEngineDefinition(u"html"));
    EXPECT_EQ(FindEngineDefinition(u"cl"), FindEngineDefinition(u"cpp"));
    EXPECT_EQ(FindEngineDefinitionOfFile(u"Cargo.lock"), FindEngineDefinition(u"toml"));
    EXPECT_EQ(FindEngineDefinitionOfFile(u"composer.lock"), FindEngineDefinition(u"json"));
    EXPECT_EQ(FindEngineDefinitionOfFile(u"rebar.config"), FindEngineDefinition(u"erl"));
    EXPECT_EQ(FindEngineDefinition(u"config"), FindEngineDefinition(u"xml"));
}

TEST_F(ShippedLanguages, EveryOneHasASampleThatItsNamesServe) {
    std::map<std::string, std::filesystem::path> samples;
    for (const auto& entry : std::filesystem::directory_iterator(shipped::SampleFolder()))
        if (entry.is_regular_file()) samples[entry.path().stem().string()] = entry.path();
    ForEachEngine([&](const IniSection& section) {
        const auto sample = samples.find(LanguageOf(section));
        ASSERT_NE(sample, samples.end()) << "no sample";
        const std::u16string path = source::ProgramPath(sample->second);
        const Char* extension = Path::Extension(path.c_str());
        const EngineDefinition* found = FindEngineDefinition(*extension ? extension + 1 : Path::FileName(path.c_str()));
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(shipped::Narrow(found->extensions.Text()), Value(section, u"Extensions"));
        samples.erase(sample);
    });
    for (const auto& [name, path] : samples) ADD_FAILURE() << path << " is the sample of no section";
}

// The sections of a file, except General: first all others, then the tools, which a save moves to the end.
std::string SectionsOf(const IniFile& file) {
    WString text[2];
    for (const IniSection* section = file.sections.head; section; section = section->next) {
        if (Text::Equal(section->name.Text(), u"General")) continue;
        WString& kind = text[Text::Equal(section->name.Text(), u"Tool")];
        for (const IniKey* key = section->keys.head; key; key = key->next)
            EXPECT_TRUE(kind.Append(section->name) && kind.Append(key->name) && kind.Append(key->value));
    }
    return shipped::Narrow(text[0].Text()) + shipped::Narrow(text[1].Text());
}

// What OK in the Options and the Tools dialog do to the file.
TEST_F(ShippedLanguages, ASaveOfTheSettingsKeepsEverySectionAndKey) {
    IniSection* tool = file.AddSection(u"Tool");
    ASSERT_TRUE(tool && tool->SetString(u"DisplayName", u"Build") && tool->SetString(u"Command", u"make"));
    IniSection* general = file.FindSection(u"General");
    ASSERT_TRUE(general && general->SetString(u"Unknown", u"kept"));
    LoadSettings(file);
    const std::string before = SectionsOf(file);

    const ScratchFolder folder;
    const std::u16string path = folder.Path("orvane.ini");
    ASSERT_TRUE(StoreSettingsToFile(file) && toolList.Store(file) && file.Save(recoveryServices.saver, path.c_str()));
    IniFile read;
    ASSERT_TRUE(read.Load(path.c_str()));
    EXPECT_EQ(SectionsOf(read), before);
    ASSERT_NE(read.FindSection(u"General"), nullptr);
    EXPECT_EQ(Value(*read.FindSection(u"General"), u"Unknown"), "kept");
    EXPECT_EQ(Value(*read.FindSection(u"General"), u"FontSize"), "10");
    ReleaseSettings();
}

TEST_F(ShippedLanguages, TheFileTurnsTheAdditionalSettingsOn) {
    ApplySettingsFromFile(file);
    EXPECT_EQ(additionalSettings.Utf8, 1u);
    EXPECT_EQ(additionalSettings.AltGr, 1u);
    EXPECT_EQ(additionalSettings.WholeCharacters, 1u);
    EXPECT_EQ(additionalSettings.OutputCodePage, 1u);
    EXPECT_EQ(additionalSettings.UnixNewFiles, 1u);
    EXPECT_EQ(additionalSettings.MarkActivePane, 1u);
    ReleaseSettings();
    additionalSettings = {};
}

// The dialogs for opening and saving show the first group. Each is a description that ends with its patterns, and
// those.
TEST_F(ShippedLanguages, TheFileDialogsShowAllFilesFirst) {
    LoadSettings(file);
    const std::string types = shipped::Narrow(settings.TextFileTypes.OrEmpty());
    EXPECT_TRUE(types.starts_with("All Files (*.*)|*.*|")) << types;
    std::istringstream rest(types);
    uint32_t groups = 0;
    for (std::string description, patterns; std::getline(rest, description, '|'); ++groups) {
        ASSERT_TRUE(std::getline(rest, patterns, '|')) << description << " has no patterns";
        EXPECT_TRUE(description.ends_with(" (" + patterns + ")")) << description;
    }
    EXPECT_EQ(groups, 7u);
    ReleaseSettings();
}
