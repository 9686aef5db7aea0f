#include "SettingsTestSupport.h"
#include "support/FailureInjection.h"

namespace {

class SetOptionTest : public SettingsTest {};

TEST(ParseColour, ReadsRedGreenBlue) {
    EXPECT_EQ(ParseColour(u"#0000FF"), 0xFF0000u);
    EXPECT_EQ(ParseColour(u"#0000ff"), 0xFF0000u);
    EXPECT_EQ(ParseColour(u"#123456"), 0x563412u);
    EXPECT_EQ(ParseColour(u"#aBcDeF"), 0xEFCDABu);
}

TEST(ParseColour, AnythingTooShortOrWithoutHashIsBlack) {
    for (const Char* text : {u"", u"#", u"#12345", u"0000ff", u"1234567", u" #ffffff", u"red"}) {
        EXPECT_EQ(ParseColour(text), 0u) << testing::PrintToString(Str(text));
    }
}

TEST(ParseColour, OtherCharactersCountAsZero) {
    EXPECT_EQ(ParseColour(u"#zz0000"), 0u);
    EXPECT_EQ(ParseColour(u"#1g2@3`"), 0x302010u);
    EXPECT_EQ(ParseColour(u"#\uFF11f/f:f"), 0x0F0F0Fu);
}

TEST(ParseColour, IgnoresWhatFollows) { EXPECT_EQ(ParseColour(u"#112233445566"), 0x332211u); }

TEST(AppendColour, WritesSixLowerCaseDigits) {
    WString text;
    EXPECT_TRUE(text.Assign(u"x"));
    EXPECT_TRUE(AppendColour(text, Rgb(0x0A, 0xBC, 0xFF)));
    EXPECT_TRUE(AppendColour(text, 0));
    EXPECT_EQ(Str(text), u"x#0abcff#000000");
}

TEST(AppendColour, IsTheInverseOfParseColour) {
    for (uint32_t step = 0; step < 4096; ++step) {
        const Colour colour = step * 4099u & 0xFFFFFF;
        WString text;
        ASSERT_TRUE(AppendColour(text, colour));
        ASSERT_EQ(ParseColour(text.Text()), colour);
    }
}

TEST_F(SetOptionTest, MatchesSectionAndKeyWithoutRegardToCase) {
    SetOption(nullptr, u"FONTSIZE", u"11");
    EXPECT_EQ(settings.FontSize, 11u);
    SetOption(u"gENERAL", u"fontsize", u"12");
    EXPECT_EQ(settings.FontSize, 12u);
    const std::vector<DrawingResource> expected(2, DrawingResource::Font);
    EXPECT_EQ(changes, expected);
}

TEST_F(SetOptionTest, UnknownSectionOrKeyDoesNothing) {
    SetOption(u"Other", u"FontSize", u"11");
    SetOption(u"", u"FontSize", u"11");
    SetOption(nullptr, u"FontSiz", u"11");
    SetOption(nullptr, u"FontSize ", u"11");
    SetOption(nullptr, u"", u"11");
    EXPECT_EQ(settings.FontSize, 10u);
    EXPECT_TRUE(changes.empty());
    EXPECT_EQ(FindSetting(u"Unknown"), nullptr);
}

TEST_F(SetOptionTest, ConvertsByType) {
    SetOption(nullptr, u"CaretWidth", u"3px");
    SetOption(nullptr, u"KeywordFg", u"#0000FF");
    SetOption(nullptr, u"QuickOpenPath", u"a;b");
    EXPECT_EQ(settings.CaretWidth, 3u);
    EXPECT_EQ(settings.KeywordFg, 0xFF0000u);
    EXPECT_EQ(Str(settings.QuickOpenPath.Text()), u"a;b");
    SetOption(nullptr, u"KeywordFg", u"0000ff");
    EXPECT_EQ(settings.KeywordFg, 0u);
}

TEST_F(SetOptionTest, NullValueMakesAStringAbsentAndANumberZero) {
    SetOption(nullptr, u"FontName", nullptr);
    SetOption(nullptr, u"FontSize", nullptr);
    SetOption(nullptr, u"SelFg", nullptr);
    EXPECT_EQ(settings.FontName.Text(), nullptr);
    EXPECT_EQ(settings.FontSize, 0u);
    EXPECT_EQ(settings.SelFg, 0u);
}

TEST_F(SetOptionTest, AcceptsTheLiveStringItself) {
    SetOption(nullptr, u"FontName", settings.FontName.Text());
    EXPECT_EQ(Str(settings.FontName.Text()), u"Courier New");
    SetOption(nullptr, u"FontName", settings.FontName.Text() + 8);
    EXPECT_EQ(Str(settings.FontName.Text()), u"New");
}

TEST_F(SetOptionTest, ChangesNoOtherCellNotEvenOnesThatFallBack) {
    SetOption(nullptr, u"TextBg", u"#202020");
    EXPECT_EQ(settings.TextBg, 0x202020u);
    EXPECT_EQ(settings.CommentBg, 0xFFFFFFu);
}

TEST_F(SetOptionTest, FailingAllocationLeavesTheStringAbsent) {
    FailEachAllocation([] {
        SetOption(nullptr, u"FontName", u"Another");
        const FailurePause pause;
        if (!settings.FontName.Text()) return false;
        EXPECT_EQ(Str(settings.FontName.Text()), u"Another");
        return true;
    });
}

TEST_F(SetOptionTest, FontSizeIsStoredAndTheFontRebuilt) {
    SetFontSize(17);
    EXPECT_EQ(settings.FontSize, 17u);
    const std::vector<DrawingResource> expected = {DrawingResource::Font};
    EXPECT_EQ(changes, expected);
}

uint32_t RowOf(const Char* key) {
    uint32_t row = 0;
    while (row < SettingCount && &generalSettings.rows[row] != FindSetting(key)) ++row;
    return row;
}

TEST_F(SetOptionTest, SaysWhetherTheSettingHasChanged) {
    const uint32_t size = RowOf(u"FontSize");
    EXPECT_TRUE(SetOption(nullptr, u"FontSize", u"11").Holds(size));
    EXPECT_FALSE(SetOption(nullptr, u"FontSize", u"11").Holds(size));
    EXPECT_TRUE(SetOption(nullptr, u"FontName", u"Arial").Holds(RowOf(u"FontName")));
    EXPECT_FALSE(SetOption(nullptr, u"FontSiz", u"12").Holds(size));
    EXPECT_EQ(changes.size(), 3u) << "the handler runs all the same";
}

class SetOptionCommand : public SettingsTest {
protected:
    static bool Execute(const Char* argument) {
        SettingsChanges changed;
        return ExecuteSetOption(argument, changed);
    }
};

TEST_F(SetOptionCommand, LowerCaseKeyChangesTheSizeAndRebuildsTheFont) {
    Execute(u"fontsize 14");
    EXPECT_EQ(settings.FontSize, 14u);
    const std::vector<DrawingResource> expected = {DrawingResource::Font};
    EXPECT_EQ(changes, expected);
}

TEST_F(SetOptionCommand, ChangesNoFileUntilStored) {
    IniFile file;
    ASSERT_TRUE(ParseText(file, u"[General]\nFontSize=12\n"));
    LoadSettings(file);
    Execute(u"fontsize 14");
    EXPECT_EQ(Str(file.FindSection(u"General")->GetString(u"FontSize", u"")), u"12");
    ASSERT_TRUE(StoreSettingsToFile(file));
    EXPECT_EQ(Str(file.FindSection(u"General")->GetString(u"FontSize", u"")), u"14");
}

TEST_F(SetOptionCommand, SkipsSpacesAndTabsBeforeEachWord) {
    EXPECT_TRUE(Execute(u" \t FontSize  \t 14"));
    EXPECT_EQ(settings.FontSize, 14u);
}

TEST_F(SetOptionCommand, ValueEndsAtASpaceAndTheRestIsIgnored) {
    Execute(u"FontName Lucida Console");
    EXPECT_EQ(Str(settings.FontName.Text()), u"Lucida");
}

TEST_F(SetOptionCommand, TabDoesNotEndAWord) {
    Execute(u"FontName a\tb c");
    EXPECT_EQ(Str(settings.FontName.Text()), u"a\tb");
    Execute(u"FontSize\t14");
    EXPECT_EQ(settings.FontSize, 10u);
}

TEST_F(SetOptionCommand, QuotedWordsHoldSpaces) {
    Execute(u"FontName \"Lucida Console\" rest");
    EXPECT_EQ(Str(settings.FontName.Text()), u"Lucida Console");
    Execute(u"\"FontSize\" \"14\"");
    EXPECT_EQ(settings.FontSize, 14u);
}

TEST_F(SetOptionCommand, ValueMayFollowAClosingQuoteDirectly) {
    Execute(u"\"FontSize\"14");
    EXPECT_EQ(settings.FontSize, 14u);
}

TEST_F(SetOptionCommand, QuotesInsideAWordAreOrdinary) {
    Execute(u"FontName a\"b\"c");
    EXPECT_EQ(Str(settings.FontName.Text()), u"a\"b\"c");
}

TEST_F(SetOptionCommand, UnclosedQuotedValueRunsToTheEnd) {
    Execute(u"FontName \"Lucida Console");
    EXPECT_EQ(Str(settings.FontName.Text()), u"Lucida Console");
}

TEST_F(SetOptionCommand, UnclosedKeyDoesNothing) {
    for (const Char* argument : {u"", u"  ", u"FontSize", u"\"FontSize", u"\"FontSize 14"}) {
        EXPECT_FALSE(Execute(argument));
        EXPECT_EQ(settings.FontSize, 10u);
    }
    EXPECT_TRUE(changes.empty());
}

TEST_F(SetOptionCommand, KeyAndASpaceAloneSetTheEmptyValue) {
    Execute(u"FontSize ");
    EXPECT_EQ(settings.FontSize, 0u);
    Execute(u"LineNumBg  ");
    EXPECT_EQ(settings.LineNumBg, 0u);
    Execute(u"FontName ");
    ASSERT_NE(settings.FontName.Text(), nullptr);
    EXPECT_EQ(Str(settings.FontName.Text()), u"");
    Execute(u"\"QuickOpenPath\"");
    EXPECT_EQ(Str(settings.QuickOpenPath.Text()), u"");
    Execute(u"TextFileTypes \"\"");
    EXPECT_EQ(Str(settings.TextFileTypes.Text()), u"");
}

TEST_F(SetOptionCommand, UnknownKeyDoesNothing) {
    Execute(u"Unknown 1");
    Execute(u"\"\" 1");
    EXPECT_TRUE(changes.empty());
}

TEST_F(SetOptionCommand, FailingAllocationLeavesTheSettingOrMakesItAbsent) {
    const uint64_t failures = FailEachAllocation([] {
        {
            const FailurePause pause;
            SetOption(nullptr, u"FontName", u"Before");
        }
        Execute(u"FontName After");
        const FailurePause pause;
        const std::u16string now = Str(settings.FontName.Text());
        EXPECT_TRUE(now == u"Before" || now == u"After" || now == u"(null)");
        return now == u"After";
    });
    EXPECT_EQ(failures, 4u);
}

} // namespace
