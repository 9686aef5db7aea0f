#include "SettingsTestSupport.h"
#include "settings/ToolList.h"
#include "support/FailureInjection.h"

namespace {

class SettingsApply : public SettingsTest {
protected:
    static void Apply(const std::u16string& text) {
        IniFile file;
        ParseText(file, text);
        ApplySettingsFromFile(file);
    }

    // The text that storing writes for a key.
    static std::u16string Stored(const Char* key) {
        IniFile file;
        EXPECT_TRUE(StoreSettingsToFile(file));
        return Str(file.FindSection(u"General")->GetString(key, nullptr));
    }
};

TEST_F(SettingsApply, WithoutAFileEveryCellHasItsDefault) {
    EXPECT_EQ(Str(settings.FontName.Text()), u"Courier New");
    EXPECT_EQ(settings.FontSize, 10u);
    EXPECT_EQ(settings.FontBold, 0u);
    EXPECT_EQ(settings.CaretWidth, 2u);
    EXPECT_EQ(settings.ShowWhitespace, 0u);
    EXPECT_EQ(settings.ReplaceTabs, 1u);
    EXPECT_EQ(settings.SpacesPerTab, 4u);
    EXPECT_EQ(settings.PasteKeepSelection, 1u);
    EXPECT_EQ(settings.SpaceColor, 0x808000u);
    EXPECT_EQ(settings.MarginWidth, 20u);
    EXPECT_EQ(settings.MarginColor, 0xDCDCDCu);
    EXPECT_EQ(settings.BookmarkColor, 0xFFFF00u);
    EXPECT_EQ(settings.ColumnGuide, 80u);
    EXPECT_EQ(settings.IndentGuide, 1u);
    EXPECT_EQ(Str(settings.QuickOpenPath.Text()), u".;%INCLUDE%");
    EXPECT_EQ(Str(settings.TextFileTypes.Text()).substr(0, 40), u"C++ Files (*.cpp;*.c;*.cxx;*.h;*.hxx)|*.");
    EXPECT_EQ(settings.ShowLineNumbers, 1u);
    EXPECT_EQ(settings.VarWidthLineNumbers, 0u);
    EXPECT_EQ(settings.RenderType, 0u);
    EXPECT_EQ(settings.TextFg, 0u);
    EXPECT_EQ(settings.TextBg, 0xFFFFFFu);
    EXPECT_EQ(settings.SelFg, 0xFFFFFFu);
    EXPECT_EQ(settings.SelBg, 0u);
    EXPECT_EQ(settings.LineNumFg, 0u);
    EXPECT_EQ(settings.LineNumBg, 0xDCFFFFu);
    EXPECT_EQ(settings.CommentFg, 0x008000u);
    EXPECT_EQ(settings.KeywordFg, 0xFF0000u);
    EXPECT_EQ(settings.BraceMatchBg, 0x00FFFFu);
}

TEST_F(SettingsApply, WithoutAFileUnsetBackgroundsFollowTheTextAndTheMargin) {
    EXPECT_EQ(settings.CommentBg, 0xFFFFFFu);
    EXPECT_EQ(settings.LongCommentBg, 0xFFFFFFu);
    EXPECT_EQ(settings.HtmlCommentBg, 0xFFFFFFu);
    EXPECT_EQ(settings.BinBg, 0xFFFFFFu);
    EXPECT_EQ(settings.GuideColor, 0xDCDCDCu);
}

TEST_F(SettingsApply, UnsetBackgroundTakesTheTextBackgroundOfTheFile) {
    Apply(u"[General]\nTextBg=#202020\n");
    EXPECT_EQ(settings.CommentBg, 0x202020u);
    EXPECT_EQ(Stored(u"CommentBg"), u"#202020");
    EXPECT_EQ(settings.HtmlPunctBg, 0x202020u);
    EXPECT_EQ(settings.BraceMatchBg, 0x00FFFFu); // has no fallback
    EXPECT_EQ(settings.GuideColor, 0xDCDCDCu);
}

TEST_F(SettingsApply, KeyOfTheFileWinsOverTheFallback) {
    Apply(u"[General]\nCommentBg=#112233\nTextBg=#202020\nMarginColor=#010203\n");
    EXPECT_EQ(settings.CommentBg, 0x332211u);
    EXPECT_EQ(settings.StringBg, 0x202020u);
    EXPECT_EQ(settings.GuideColor, 0x030201u);
}

TEST_F(SettingsApply, TheDefaultColoursOfAFileGoWithTheSettings) {
    const auto row = static_cast<uint32_t>(FindSetting(u"TextBg") - generalSettings.rows);
    Apply(u"[DefaultColours]\nTextBg=#202020\n");
    EXPECT_EQ(DefaultColour(row, settings), 0x202020u);
    ReleaseSettings();
    EXPECT_EQ(DefaultColour(row, settings), 0xFFFFFFu);
}

TEST_F(SettingsApply, AFileMayGiveTheDefaultColours) {
    Apply(u"[DefaultColours]\nTextBg=#202020\nCommentBg=#112233\nGuideColor=#040506\nFontSize=12\n"
          u"[General]\nKeywordFg=#010203\nGuideColor=#070809\n");
    EXPECT_EQ(settings.TextBg, 0x202020u);
    EXPECT_EQ(settings.CommentBg, 0x332211u) << "before the fallback";
    EXPECT_EQ(settings.StringBg, 0x202020u) << "an unset background follows the text";
    EXPECT_EQ(settings.GuideColor, 0x090807u) << "the key of General comes first";
    EXPECT_EQ(settings.KeywordFg, 0x030201u);
    EXPECT_EQ(settings.CommentFg, 0x008000u);
    EXPECT_EQ(settings.FontSize, 10u) << "no colour";
    Apply(u"");
    EXPECT_EQ(settings.TextBg, 0xFFFFFFu) << "it was the other file's";
    EXPECT_EQ(settings.GuideColor, 0xDCDCDCu);
}

TEST_F(SettingsApply, OnlyTheFirstGeneralSectionIsRead) {
    Apply(u"[general]\nFontSize=1\n[General]\nFontSize=12\nFontSize=13\n[General]\nFontSize=14\nCaretWidth=9\n");
    EXPECT_EQ(settings.FontSize, 12u);
    EXPECT_EQ(settings.CaretWidth, 2u);
}

TEST_F(SettingsApply, KeysOfTheFileAreMatchedExactly) {
    Apply(u"[General]\nfontsize=12\nCaretWidth =9\n");
    EXPECT_EQ(settings.FontSize, 10u);
    EXPECT_EQ(settings.CaretWidth, 2u);
}

TEST_F(SettingsApply, NumbersReadLeadingDigitsOnly) {
    Apply(u"[General]\nFontSize=12pt\n");
    EXPECT_EQ(settings.FontSize, 12u);
    Apply(u"[General]\nFontSize=-3\n");
    EXPECT_EQ(settings.FontSize, 0u);
    Apply(u"[General]\nFontSize=4294967295\nSpacesPerTab=0\n");
    EXPECT_EQ(settings.FontSize, 4294967295u);
    EXPECT_EQ(settings.SpacesPerTab, 0u);
}

TEST_F(SettingsApply, StringsAreTakenAsTheyAre) {
    Apply(u"[General]\nFontName= My Font \nQuickOpenPath=\n");
    EXPECT_EQ(Str(settings.FontName.Text()), u" My Font ");
    EXPECT_EQ(Str(settings.QuickOpenPath.Text()), u"");
}

TEST_F(SettingsApply, ReplacesEarlierValues) {
    Apply(u"[General]\nFontName=One\nFontSize=12\nTextBg=#000000\n");
    Apply(u"");
    EXPECT_EQ(Str(settings.FontName.Text()), u"Courier New");
    EXPECT_EQ(settings.FontSize, 10u);
    EXPECT_EQ(settings.CommentBg, 0xFFFFFFu);
}

TEST_F(SettingsApply, ApplyRunsNoHandler) {
    Apply(u"[General]\nFontName=One\nMarginColor=#000000\n");
    EXPECT_TRUE(changes.empty());
}

TEST_F(SettingsApply, LoadRunsFontAndBrushHandlersOnceEach) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[General]\nFontSize=12\n[Tool]\nCommand=x\n"));
    LoadSettings(file);
    const std::vector<DrawingResource> expected = {DrawingResource::Font, DrawingResource::MarginBrush,
                                                   DrawingResource::BookmarkBrush, DrawingResource::BackgroundBrush,
                                                   DrawingResource::SelectionBrush};
    EXPECT_EQ(changes, expected);
    EXPECT_EQ(settings.FontSize, 12u);
    EXPECT_EQ(toolList.Count(), 1u);
}

TEST_F(SettingsApply, LoadHasTheToolsBeforeTheHandlersRun) {
    static uint32_t toolsSeen;
    toolsSeen = UINT32_MAX;
    rebuild = [](DrawingResource) {
        if (toolsSeen == UINT32_MAX) toolsSeen = toolList.Count();
        return true;
    };
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[Tool]\nCommand=x\n[Tool]\nCommand=y\n"));
    LoadSettings(file);
    EXPECT_EQ(toolsSeen, 2u);
}

TEST_F(SettingsApply, ReleaseFreesTheStringsAndTheTools) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[Tool]\nCommand=x\n"));
    LoadSettings(file);
    ReleaseSettings();
    EXPECT_EQ(settings.FontName.Text(), nullptr);
    EXPECT_EQ(settings.QuickOpenPath.Text(), nullptr);
    EXPECT_EQ(settings.TextFileTypes.Text(), nullptr);
    EXPECT_EQ(toolList.Count(), 0u);
    LoadSettings(file);
    EXPECT_EQ(Str(settings.FontName.Text()), u"Courier New");
}

TEST_F(SettingsApply, StoreWritesAllRowsInTableOrder) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[Other]\nk=v\n"));
    ASSERT_TRUE(StoreSettingsToFile(file));
    const Model model = ModelOf(file);
    ASSERT_EQ(model.size(), 2u);
    EXPECT_EQ(model[1].first, u"General");
    ASSERT_EQ(model[1].second.size(), SettingCount);
    for (uint32_t i = 0; i < SettingCount; ++i) {
        EXPECT_EQ(model[1].second[i].first, Str(generalSettings.rows[i].key));
    }
}

TEST_F(SettingsApply, StoreKeepsPlacesAndUnknownKeysAndAppendsTheMissingOnes) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[General]\nTextBg=#000000\nMine=1\nFontSize=99\n[Other]\n[General]\nFontSize=98\n"));
    ASSERT_TRUE(StoreSettingsToFile(file));
    const Model model = ModelOf(file);
    ASSERT_EQ(model.size(), 3u);
    const KeyList& keys = model[0].second;
    ASSERT_EQ(keys.size(), SettingCount + 1);
    EXPECT_EQ(keys[0], (std::pair<std::u16string, std::u16string>(u"TextBg", u"#ffffff")));
    EXPECT_EQ(keys[1], (std::pair<std::u16string, std::u16string>(u"Mine", u"1")));
    EXPECT_EQ(keys[2], (std::pair<std::u16string, std::u16string>(u"FontSize", u"10")));
    EXPECT_EQ(keys[3].first, u"FontName");
    EXPECT_EQ(keys[4].first, u"FontBold");
    EXPECT_EQ(keys.back().first, u"BinBg");
    const KeyList second = {{u"FontSize", u"98"}};
    EXPECT_EQ(model[2].second, second);
}

TEST_F(SettingsApply, StoreWritesEachTypeAsText) {
    SetOption(nullptr, u"FontSize", u"4294967295");
    SetOption(nullptr, u"TextFg", u"#0A0BfF");
    SetOption(nullptr, u"FontName", nullptr);
    EXPECT_EQ(Stored(u"FontSize"), u"4294967295");
    EXPECT_EQ(Stored(u"TextFg"), u"#0a0bff");
    EXPECT_EQ(Stored(u"FontName"), u"");
    EXPECT_EQ(Stored(u"LineNumBg"), u"#ffffdc");
    EXPECT_EQ(Stored(u"QuickOpenPath"), u".;%INCLUDE%");
}

TEST_F(SettingsApply, WhatIsStoredLoadsTheSameRecord) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[General]\nTextBg=#202020\nFontName=F\nFontSize=11\nCommentFg=#123456\n"));
    ApplySettingsFromFile(file);
    IniFile stored;
    ASSERT_TRUE(StoreSettingsToFile(stored));
    const Model first = ModelOf(stored);
    Apply(u"");
    ApplySettingsFromFile(stored);
    IniFile again;
    ASSERT_TRUE(StoreSettingsToFile(again));
    EXPECT_EQ(ModelOf(again), first);
    EXPECT_EQ(settings.CommentBg, 0x202020u);
}

TEST_F(SettingsApply, EveryFailingAllocationOfAStoreLeavesTheFile) {
    const uint64_t failures = FailEachAllocation([] {
        IniFile file;
        Model before;
        {
            const FailurePause pause;
            EXPECT_TRUE(ParseText(file, u"[Other]\nk=v\n"));
            before = ModelOf(file);
        }
        const bool done = StoreSettingsToFile(file);
        const FailurePause pause;
        if (!done) {
            EXPECT_EQ(ModelOf(file), before);
        }
        EXPECT_EQ(file.FindSection(u"General") != nullptr, done);
        return done;
    });
    EXPECT_GE(failures, 3 * SettingCount); // a key, its name and its value each
}

TEST_F(SettingsApply, EveryFailingAllocationOfALoadLeavesAnAbsentStringOrNoTools) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[General]\nFontName=F\nFontSize=11\n[Tool]\nCommand=x\n"));
    const uint64_t failures = FailEachAllocation([&] {
        LoadSettings(file);
        const FailurePause pause;
        EXPECT_EQ(settings.FontSize, 11u);
        const bool complete =
            settings.FontName.Text() && settings.QuickOpenPath.Text() && settings.TextFileTypes.Text();
        if (settings.FontName.Text()) {
            EXPECT_EQ(Str(settings.FontName.Text()), u"F");
        }
        EXPECT_LE(toolList.Count(), 1u);
        return complete && toolList.Count() == 1;
    });
    EXPECT_GE(failures, 5u);
}

TEST_F(SettingsApply, ListsDistinctColoursInTableOrder) {
    Colour colours[SettingCount];
    const uint32_t count = ListDistinctColours(colours, SettingCount);
    const std::vector<Colour> expected = {
        0x808000, 0xDCDCDC, 0xFFFF00, 0x000000, 0xFFFFFF, 0xDCFFFF, 0x008000,
        0x0000FF, 0xFF0000, 0x000080, 0x00FFFF, 0x800080, 0xFF00FF,
    };
    EXPECT_EQ(std::vector<Colour>(colours, colours + count), expected);
}

TEST_F(SettingsApply, ColoursThatAreAllTheSameAreListedOnce) {
    for (uint32_t i = 0; i < generalSettings.count; ++i) {
        const SettingDef& row = generalSettings.rows[i];
        if (row.type == SettingType::Colour) settings.*row.cell.number = 0x123456;
    }
    Colour colours[SettingCount];
    EXPECT_EQ(ListDistinctColours(colours, SettingCount), 1u);
    EXPECT_EQ(colours[0], 0x123456u);
}

TEST_F(SettingsApply, ListStopsAtTheCapacity) {
    Colour colours[4] = {1, 1, 1, 1};
    EXPECT_EQ(ListDistinctColours(colours, 3), 3u);
    EXPECT_EQ(colours[2], 0xFFFF00u);
    EXPECT_EQ(colours[3], 1u);
    EXPECT_EQ(ListDistinctColours(nullptr, 0), 0u);
}

TEST(SettingsReaders, FontHeightRoundsToNearest) {
    EXPECT_EQ(FontHeight(10, 96), -13); // 13.33
    EXPECT_EQ(FontHeight(8, 96), -11);  // 10.67
    EXPECT_EQ(FontHeight(9, 100), -13); // 12.5
    EXPECT_EQ(FontHeight(9, 96), -12);
    EXPECT_EQ(FontHeight(1, 107), -1); // 1.49
    EXPECT_EQ(FontHeight(10, 144), -20);
    EXPECT_EQ(FontHeight(0, 96), 0);
}

TEST(SettingsReaders, FontHeightNeverOverflows) {
    EXPECT_EQ(FontHeight(3072, 96), -4096);
    EXPECT_EQ(FontHeight(3073, 96), -4096);
    EXPECT_EQ(FontHeight(4294967295u, 96), -4096);
    EXPECT_EQ(FontHeight(4294967295u, 4294967295u), -4096);
}

} // namespace
