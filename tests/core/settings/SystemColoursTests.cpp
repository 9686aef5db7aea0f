// The system's colours in the place of the user's.
#include "settings/SystemColours.h"

#include "SettingsTestSupport.h"

namespace {

constexpr SystemColours Black = {0x000000, 0xFFFFFF, 0x00FFFF, 0x000080, 0x3FF23F, 0x80FF00};
constexpr SystemColours White = {0xFFFFFF, 0x000000, 0x800080, 0xFFFFFF, 0x600000, 0x9F0000};

class SystemColoursTest : public SettingsTest {
protected:
    static KeyList Stored() {
        const OwnColours own;
        IniFile file;
        EXPECT_TRUE(StoreSettingsToFile(file));
        return ModelOf(file).at(0).second;
    }
    static std::vector<Colour> Colours() {
        std::vector<Colour> colours;
        for (uint32_t i = 0; i < SettingCount; ++i) {
            const SettingDef& row = generalSettings.rows[i];
            if (row.type == SettingType::Colour) colours.push_back(settings.*row.cell.number);
        }
        return colours;
    }
};

TEST_F(SystemColoursTest, DefaultsGiveWay) {
    EXPECT_TRUE(ShowSystemColours(&Black).HoldsColour());
    EXPECT_EQ(settings.TextFg, Black.text);
    EXPECT_EQ(settings.TextBg, Black.background);
    EXPECT_EQ(settings.CommentFg, Black.text);
    EXPECT_EQ(settings.CommentBg, Black.background);
    EXPECT_EQ(settings.LineNumFg, Black.text);
    EXPECT_EQ(settings.LineNumBg, Black.background);
    EXPECT_EQ(settings.HtmlPunctFg, Black.text);
    EXPECT_EQ(settings.BinBg, Black.background);
    EXPECT_EQ(settings.SelFg, Black.selectionText);
    EXPECT_EQ(settings.SelBg, Black.selectionBackground);
    EXPECT_EQ(settings.BraceMatchFg, Black.selectionText);
    EXPECT_EQ(settings.BraceMatchBg, Black.selectionBackground);
    EXPECT_EQ(settings.MarginColor, Black.background);
    EXPECT_EQ(settings.BookmarkColor, Black.link);
    EXPECT_EQ(settings.SpaceColor, Black.faint);
    EXPECT_EQ(settings.GuideColor, Black.faint);
    // Each brush is made again, once.
    EXPECT_EQ(changes, (std::vector{DrawingResource::MarginBrush, DrawingResource::BookmarkBrush,
                                    DrawingResource::BackgroundBrush, DrawingResource::SelectionBrush}));
}

TEST_F(SystemColoursTest, ASetColourKeepsThemAll) {
    settings.NumberFg = 0x123456;
    const std::vector<Colour> before = Colours();
    EXPECT_FALSE(ShowSystemColours(&Black).HoldsColour());
    EXPECT_EQ(Colours(), before);
    EXPECT_TRUE(changes.empty());
}

// So that a file that gives the defaults is one in which nobody has set a colour yet.
TEST_F(SystemColoursTest, DefaultsOfTheFileGiveWay) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[DefaultColours]\nTextFg=#010203\nCommentBg=#040506\n"));
    LoadSettings(file);
    const std::vector<Colour> before = Colours();
    EXPECT_TRUE(ShowSystemColours(&Black).HoldsColour());
    EXPECT_EQ(settings.TextFg, Black.text);
    EXPECT_EQ(settings.CommentBg, Black.background);
    ShowSystemColours(nullptr);
    EXPECT_EQ(Colours(), before);
    // A save writes them as any other value, which changes nothing.
    ASSERT_TRUE(StoreSettingsToFile(file));
    LoadSettings(file);
    EXPECT_EQ(Colours(), before);
    EXPECT_TRUE(ShowSystemColours(&Black).HoldsColour());
}

TEST_F(SystemColoursTest, TheyGoAgain) {
    const std::vector<Colour> before = Colours();
    ShowSystemColours(&Black);
    EXPECT_FALSE(ShowSystemColours(&Black).HoldsColour()); // as they are
    ShowSystemColours(&White);
    EXPECT_EQ(settings.TextFg, White.text);
    EXPECT_TRUE(ShowSystemColours(nullptr).HoldsColour());
    EXPECT_EQ(Colours(), before);
    EXPECT_FALSE(ShowSystemColours(nullptr).HoldsColour());
}

TEST_F(SystemColoursTest, SettingOneBringsTheOthersBack) {
    const std::vector<Colour> before = Colours();
    ShowSystemColours(&Black);
    SetOption(nullptr, u"NumberFg", u"#563412");
    EXPECT_TRUE(ShowSystemColours(&Black).HoldsColour());
    EXPECT_EQ(settings.NumberFg, 0x123456u);
    settings.NumberFg = Rgb(0x80, 0, 0);
    EXPECT_EQ(Colours(), before);
}

TEST_F(SystemColoursTest, WhatIsStoredIsTheUsers) {
    const KeyList before = Stored();
    ShowSystemColours(&Black);
    const std::vector<Colour> shown = Colours();
    EXPECT_EQ(Stored(), before);
    EXPECT_EQ(Colours(), shown);
}

// Somebody may have set what the system has, too.
TEST_F(SystemColoursTest, WhatAFileSaysIsTheUsers) {
    ShowSystemColours(&Black);
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[General]\nTextFg=#ffffff\nTextBg=#000000\n"));
    LoadSettings(file);
    EXPECT_FALSE(ShowSystemColours(&Black).HoldsColour());
    EXPECT_EQ(settings.TextFg, 0xFFFFFFu);
    EXPECT_EQ(settings.TextBg, 0u);
    EXPECT_EQ(settings.CommentFg, Rgb(0, 0x80, 0));
}

TEST(DarkColourTest, GreenIsLighterThanBlue) {
    EXPECT_TRUE(IsDark(Rgb(0, 0, 0)));
    EXPECT_TRUE(IsDark(Rgb(0, 0, 255)));
    EXPECT_TRUE(IsDark(Rgb(255, 0, 0)));
    EXPECT_FALSE(IsDark(Rgb(0, 255, 0)));
    EXPECT_FALSE(IsDark(Rgb(255, 255, 255)));
    EXPECT_FALSE(IsDark(Rgb(128, 128, 128)));
    EXPECT_TRUE(IsDark(Rgb(127, 127, 127)));
    EXPECT_TRUE(IsDark(Rgb(0x1e, 0x1e, 0x2e)));
}

} // namespace
