#include "SettingsTestSupport.h"
#include "settings/AdditionalSettings.h"
#include "support/FailureInjection.h"

namespace {

constexpr struct {
    const Char* key;
    uint32_t AdditionalSettings::*cell;
} keys[] = {
    {u"Utf8", &AdditionalSettings::Utf8},
    {u"AltGr", &AdditionalSettings::AltGr},
    {u"WholeCharacters", &AdditionalSettings::WholeCharacters},
    {u"OutputCodePage", &AdditionalSettings::OutputCodePage},
    {u"UnixNewFiles", &AdditionalSettings::UnixNewFiles},
    {u"MarkActivePane", &AdditionalSettings::MarkActivePane},
};

class Additional : public SettingsTest {
protected:
    void TearDown() override {
        SettingsTest::TearDown();
        additionalSettings = {};
    }

    static void Apply(const std::u16string& text) {
        IniFile file;
        ParseText(file, text);
        ApplySettingsFromFile(file);
    }

    // The keys of General that a save adds to, or changes in, what the file holds, beside those of the table.
    static KeyList StoredIn(const std::u16string& text) {
        IniFile file;
        ParseText(file, text);
        EXPECT_TRUE(StoreSettingsToFile(file));
        KeyList stored;
        const Model model = ModelOf(file);
        for (const auto& key : model.at(0).second)
            if (!FindSetting(key.first.c_str())) stored.push_back(key);
        return stored;
    }
};

TEST_F(Additional, AreOffWithoutAFile) {
    for (const auto& key : keys) EXPECT_EQ(additionalSettings.*key.cell, 0u) << testing::PrintToString(Str(key.key));
}

TEST_F(Additional, AreNoRowsOfTheTable) {
    for (const auto& key : keys) EXPECT_EQ(FindSetting(key.key), nullptr);
}

TEST_F(Additional, AreReadFromTheFirstGeneralSection) {
    Apply(u"[General]\nUtf8=1\nAltGr=2\nWholeCharacters=3\nOutputCodePage=65001\nUnixNewFiles=5\nMarkActivePane=6\n"
          u"[General]\nUtf8=9\n");
    EXPECT_EQ(additionalSettings.Utf8, 1u);
    EXPECT_EQ(additionalSettings.AltGr, 2u);
    EXPECT_EQ(additionalSettings.WholeCharacters, 3u);
    EXPECT_EQ(additionalSettings.OutputCodePage, 65001u);
    EXPECT_EQ(additionalSettings.UnixNewFiles, 5u);
    EXPECT_EQ(additionalSettings.MarkActivePane, 6u);
}

TEST_F(Additional, AreReadLikeOtherNumbers) {
    Apply(u"[General]\nOutputCodePage=850 \nUtf8=yes\nAltGr=-1\nutf8=1\n");
    EXPECT_EQ(additionalSettings.OutputCodePage, 850u);
    EXPECT_EQ(additionalSettings.Utf8, 0u) << "a key of the file is matched exactly";
    EXPECT_EQ(additionalSettings.AltGr, 0u);
}

TEST_F(Additional, AreOffAgainWhenAReloadFindsNoKey) {
    Apply(u"[General]\nUtf8=1\nUnixNewFiles=1\n");
    IniFile file;
    ParseText(file, u"[General]\nUtf8=1\n");
    LoadSettings(file);
    EXPECT_EQ(additionalSettings.Utf8, 1u);
    EXPECT_EQ(additionalSettings.UnixNewFiles, 0u);
    LoadSettings(IniFile());
    EXPECT_EQ(additionalSettings.Utf8, 0u);
}

TEST_F(Additional, AreNotWrittenWhileTheyAreOff) { EXPECT_EQ(StoredIn(u"[General]\nFontSize=12\n"), KeyList()); }

TEST_F(Additional, AreWrittenAfterTheOthersInTheirOrder) {
    for (const auto& key : keys) SetOption(nullptr, key.key, u"7");
    KeyList wanted;
    for (const auto& key : keys) wanted.emplace_back(key.key, u"7");
    EXPECT_EQ(StoredIn(u"[General]\nFontSize=12\n"), wanted);
    IniFile file;
    ASSERT_TRUE(StoreSettingsToFile(file));
    const KeyList all = ModelOf(file).at(0).second;
    ASSERT_EQ(all.size(), SettingCount + std::size(keys));
    EXPECT_EQ(all[SettingCount - 1].first, u"BinBg");
    EXPECT_EQ(all[SettingCount].first, u"Utf8");
}

TEST_F(Additional, KeepTheirPlaceInTheFile) {
    SetOption(nullptr, u"AltGr", u"0");
    SetOption(nullptr, u"Utf8", u"1");
    const KeyList wanted = {{u"AltGr", u"0"}, {u"Mine", u"x"}, {u"OutputCodePage", u"0"}, {u"Utf8", u"1"}};
    EXPECT_EQ(StoredIn(u"[General]\nAltGr=1\nMine=x\nOutputCodePage=850\nFontSize=12\n"), wanted);
}

TEST_F(Additional, AreSetByNameWithoutRegardToCase) {
    for (const auto& key : keys) {
        std::u16string name = key.key;
        for (Char& c : name) c = Text::FoldCase(c);
        EXPECT_FALSE(SetOption(nullptr, name.c_str(), u"3").HoldsColour());
        EXPECT_EQ(additionalSettings.*key.cell, 3u) << testing::PrintToString(name);
        SetOption(u"General", key.key, nullptr);
        EXPECT_EQ(additionalSettings.*key.cell, 0u);
    }
    SetOption(u"Other", u"Utf8", u"1");
    EXPECT_EQ(additionalSettings.Utf8, 0u);
    EXPECT_FALSE(SetAdditionalOption(u"Utf", u"1"));
    EXPECT_FALSE(SetAdditionalOption(u"", u"1"));
    EXPECT_TRUE(changes.empty()) << "no drawing object depends on them";
}

TEST_F(Additional, AreKnownToTheCommand) {
    SettingsChanges changed;
    EXPECT_TRUE(ExecuteSetOption(u"outputcodepage 65001", changed));
    EXPECT_EQ(additionalSettings.OutputCodePage, 65001u);
}

TEST_F(Additional, StayInTheFileWithoutMemory) {
    FailEachAllocation([] {
        IniFile file;
        {
            const FailurePause pause;
            ParseText(file, u"[General]\nAltGr=1\n");
            SetOption(nullptr, u"AltGr", u"0");
            SetOption(nullptr, u"Utf8", u"1");
        }
        const bool stored = StoreSettingsToFile(file);
        const FailurePause pause;
        EXPECT_EQ(Str(file.FindSection(u"General")->GetString(u"AltGr", u"")), stored ? u"0" : u"1");
        EXPECT_EQ(Str(file.FindSection(u"General")->GetString(u"Utf8", u"")), stored ? u"1" : u"");
        return stored;
    });
}

} // namespace
