// The colour sets that ship with the program: complete, and legible by the contrast that WCAG 2 defines.

#include "core/app/FakeFrame.h"

#include "app/CommandLanguage.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "settings/SystemColours.h"
#include "support/SourceTree.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>

namespace {

constexpr double TextContrast = 4.5;
constexpr double MarkContrast = 3;
constexpr Colour NotSet = 0xFF000000; // no colour that a script can set

double Linear(uint32_t component) {
    const double value = component / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(Colour colour) {
    return 0.2126 * Linear(colour & 0xFF) + 0.7152 * Linear(colour >> 8 & 0xFF) + 0.0722 * Linear(colour >> 16 & 0xFF);
}

double Contrast(Colour left, Colour right) {
    const double a = Luminance(left) + 0.05;
    const double b = Luminance(right) + 0.05;
    return a > b ? a / b : b / a;
}

template <class Visitor> void ForEachColour(Visitor visit) {
    for (uint32_t i = 0; i < generalSettings.count; ++i) {
        const SettingDef& row = generalSettings.rows[i];
        if (row.type == SettingType::Colour) visit(row);
    }
}

std::string KeyOf(const SettingDef& row) {
    std::string key;
    for (const Char* at = row.key; *at; ++at) key += static_cast<char>(*at);
    return key;
}

Colour Cell(const std::string& key) {
    const SettingDef* row = FindSetting(std::u16string(key.begin(), key.end()).c_str());
    return row ? settings.*row->cell.number : NotSet;
}

// What the lines of each row are painted on.
std::vector<std::string> LineBackgrounds() {
    std::vector<std::string> keys;
    ForEachColour([&](const SettingDef& row) {
        const std::string key = KeyOf(row);
        if (key.ends_with("Bg") && key != "LineNumBg" && key != "BraceMatchBg") keys.push_back(key);
    });
    return keys;
}

class ColourSets : public testing::TestWithParam<const char*> {
protected:
    ColourSets() {
        LoadSettings(IniFile());
        ForEachColour([](const SettingDef& row) { settings.*row.cell.number = NotSet; });
        const std::filesystem::path script = source::Folder() / "ship" / "colours" / GetParam();
        RunScript(frame, source::ProgramPath(script).c_str());
    }
    ~ColourSets() override { ReleaseSettings(); }

    FakeFrame frame;
};

} // namespace

TEST_P(ColourSets, SetsEveryColourAndDoesNothingElse) {
    uint32_t count = 0;
    ForEachColour([&](const SettingDef& row) {
        EXPECT_NE(settings.*row.cell.number, NotSet) << KeyOf(row);
        ++count;
    });
    EXPECT_EQ(frame.calls, Calls(count, u"apply colours"));
}

TEST_P(ColourSets, EveryTextIsLegibleOnItsBackground) {
    uint32_t pairs = 0;
    ForEachColour([&](const SettingDef& row) {
        const std::string key = KeyOf(row);
        if (!key.ends_with("Fg")) return;
        EXPECT_GE(Contrast(Cell(key), Cell(key.substr(0, key.size() - 2) + "Bg")), TextContrast) << key;
        ++pairs;
    });
    EXPECT_EQ(pairs, 16u);
}

TEST_P(ColourSets, GuidesAndMarksShowOnEveryBackground) {
    for (const std::string& background : LineBackgrounds()) {
        EXPECT_GE(Contrast(Cell("GuideColor"), Cell(background)), MarkContrast) << background;
        EXPECT_GE(Contrast(Cell("SpaceColor"), Cell(background)), MarkContrast) << background;
    }
    EXPECT_GE(Contrast(Cell("BookmarkColor"), Cell("MarginColor")), MarkContrast);
    EXPECT_GE(Contrast(Cell("SelBg"), Cell("TextBg")), 1.4) << "a selection has to be seen";
}

// A fresh start looks like the set, whose colours the tests above have measured.
TEST(ShippedColours, AreThoseOfTheLightSet) {
    FakeFrame frame;
    IniFile file;
    ASSERT_TRUE(file.Load(source::ProgramPath(source::Folder() / "ship" / "orvane.ini").c_str()));
    LoadSettings(file);
    std::map<std::string, Colour> shipped;
    ForEachColour([&](const SettingDef& row) { shipped[KeyOf(row)] = settings.*row.cell.number; });
    ForEachColour([](const SettingDef& row) { settings.*row.cell.number = NotSet; });
    RunScript(frame, source::ProgramPath(source::Folder() / "ship" / "colours" / "light.txt").c_str());
    ForEachColour([&](const SettingDef& row) { EXPECT_EQ(shipped[KeyOf(row)], Cell(KeyOf(row))) << KeyOf(row); });
    ReleaseSettings();
}

TEST(ShippedColours, GiveWayToHighContrast) {
    IniFile file;
    ASSERT_TRUE(file.Load(source::ProgramPath(source::Folder() / "ship" / "orvane.ini").c_str()));
    LoadSettings(file);
    SystemColours system;
    system.text = 0x123456;
    EXPECT_TRUE(ShowSystemColours(&system).HoldsColour());
    EXPECT_EQ(Cell("TextFg"), system.text);
    EXPECT_EQ(Cell("KeywordFg"), system.text);
    ReleaseSettings();
}

INSTANTIATE_TEST_SUITE_P(Files, ColourSets,
                         testing::Values("light.txt", "dark.txt", "contrast.txt", "paper.txt", "midnight.txt"),
                         [](const auto& file) {
                             const std::string name = file.param;
                             return name.substr(0, name.find('.'));
                         });
