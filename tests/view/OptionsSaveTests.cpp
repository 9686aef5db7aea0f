// What OK and Cancel of the Options dialog make of the settings and their file.

#include "view/OptionsTest.h"

#include "settings/SystemColours.h"
#include "support/FailureInjection.h"

#include <optional>

namespace {

std::string Hex(Colour colour) {
    char text[8];
    std::snprintf(text, sizeof(text), "#%02x%02x%02x", colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
    return text;
}

std::string Narrow(const Char* text) {
    return text ? std::string(text, text + std::char_traits<Char>::length(text)) : "";
}

// The General section as the settings are now, in table order.
std::string GeneralSection() {
    std::string text = "[General]\r\n";
    for (uint32_t i = 0; i < generalSettings.count; ++i) {
        const SettingDef& row = generalSettings.rows[i];
        text += Narrow(row.key) + "=";
        if (row.type == SettingType::Int) text += std::to_string(settings.*row.cell.number);
        if (row.type == SettingType::Colour) text += Hex(settings.*row.cell.number);
        if (row.type == SettingType::String) text += Narrow((settings.*row.cell.string).Text());
        text += "\r\n";
    }
    return text;
}

} // namespace

TEST_F(OptionsTest, OkSavesAllSettingsByteForByte) {
    ASSERT_TRUE(Open([](HWND options) {
        dialog::Click(GeneralPage(options), IDC_SHOW_WHITESPACE);
        dialog::SetText(GeneralPage(options), IDC_SPACES_PER_TAB, L"8");
        dialog::SetText(FontsPage(options), IDC_FONT_SIZE, L"12");
        dialog::Ok(options);
    }));
    EXPECT_EQ(settings.ShowWhitespace, 1u);
    EXPECT_EQ(settings.SpacesPerTab, 8u);
    EXPECT_EQ(Saved(), GeneralSection());
    EXPECT_NE(Saved().find("FontSize=12\r\n"), std::string::npos);
}

// They are there for as long as High Contrast is on, and nobody has chosen them.
TEST_F(OptionsTest, OkDoesNotSaveTheColoursOfHighContrast) {
    const std::string before = GeneralSection();
    const SystemColours colours = {0x000000, 0xFFFFFF, 0x00FFFF, 0x000080, 0x3FF23F, 0x80FF00};
    ShowSystemColours(&colours);
    ASSERT_TRUE(Open([](HWND options) { dialog::Ok(options); }));
    EXPECT_EQ(Saved(), before);
    EXPECT_EQ(settings.TextFg, 0xFFFFFFu);
}

TEST_F(OptionsTest, OkWritesTheDefaultsOfAllSettingsByteForByte) {
    ASSERT_TRUE(Open([](HWND options) { dialog::Ok(options); }));
    EXPECT_EQ(Saved(), "[General]\r\n"
                       "FontName=Courier New\r\nFontSize=10\r\nFontBold=0\r\nCaretWidth=2\r\n"
                       "ShowWhitespace=0\r\nReplaceTabs=1\r\nSpacesPerTab=4\r\nPasteKeepSelection=1\r\n"
                       "SpaceColor=#008080\r\nMarginWidth=20\r\nMarginColor=#dcdcdc\r\n"
                       "BookmarkColor=#00ffff\r\nGuideColor=#dcdcdc\r\nColumnGuide=80\r\nIndentGuide=1\r\n"
                       "QuickOpenPath=.;%INCLUDE%\r\n"
                       "TextFileTypes=C++ Files (*.cpp;*.c;*.cxx;*.h;*.hxx)|*.cpp;*.c;*.cxx;*.h;*.hxx|"
                       "Text Files (*.txt)|*.txt|HTML Files (*.htm;*.html)|*.htm;*.html|"
                       "XML Files (*.xml;*.xsl)|*.xml;*.xsl|All Files (*.*)|*.*\r\n"
                       "ShowLineNumbers=1\r\nVarWidthLineNumbers=0\r\nRenderType=0\r\n"
                       "TextFg=#000000\r\nTextBg=#ffffff\r\nSelFg=#ffffff\r\nSelBg=#000000\r\n"
                       "LineNumFg=#000000\r\nLineNumBg=#ffffdc\r\n"
                       "CommentFg=#008000\r\nCommentBg=#ffffff\r\n"
                       "LongCommentFg=#008000\r\nLongCommentBg=#ffffff\r\n"
                       "StringFg=#ff0000\r\nStringBg=#ffffff\r\nKeywordFg=#0000ff\r\nKeywordBg=#ffffff\r\n"
                       "NumberFg=#800000\r\nNumberBg=#ffffff\r\n"
                       "BraceMatchFg=#000000\r\nBraceMatchBg=#ffff00\r\n"
                       "HtmlTagFg=#0000ff\r\nHtmlTagBg=#ffffff\r\nHtmlAttrFg=#800080\r\nHtmlAttrBg=#ffffff\r\n"
                       "HtmlAttrValueFg=#ff00ff\r\nHtmlAttrValueBg=#ffffff\r\n"
                       "HtmlAttrQuotedValueFg=#ff0000\r\nHtmlAttrQuotedValueBg=#ffffff\r\n"
                       "HtmlCommentFg=#008000\r\nHtmlCommentBg=#ffffff\r\n"
                       "HtmlPunctFg=#0000ff\r\nHtmlPunctBg=#ffffff\r\nBinFg=#ff0000\r\nBinBg=#ffffff\r\n");
}

TEST_F(OptionsTest, TextsAreReadAgainAsTheyWereTyped) {
    ASSERT_TRUE(Open([](HWND options) {
        dialog::SetText(GeneralPage(options), IDC_QUICK_OPEN_PATH, L" ;=[C:\\\u00E4 b\\\u20AC] ");
        dialog::SetText(GeneralPage(options), IDC_FILE_TYPES, L"");
        dialog::SetText(FontsPage(options), IDC_FONT_NAME, L"; Mono");
        dialog::Ok(options);
    }));
    IniFile read;
    ASSERT_TRUE(read.Load(folder.Path("orvane.ini").c_str()));
    ApplySettingsFromFile(read);
    EXPECT_EQ(std::u16string(settings.QuickOpenPath.Text()), u" ;=[C:\\\u00E4 b\\\u20AC] ");
    EXPECT_EQ(std::u16string(settings.TextFileTypes.Text()), u"");
    EXPECT_EQ(std::u16string(settings.FontName.Text()), u"; Mono");
}

TEST_F(OptionsTest, OkKeepsOtherSectionsKeysAndPlaces) {
    file.Clear();
    std::u16string text = u"[Tool]\nDisplayName=x\nCommand=y\n[General]\nMine=1\nSpacesPerTab=3\n";
    ASSERT_TRUE(file.Parse(text.data()));
    ASSERT_TRUE(Open([](HWND options) {
        dialog::SetText(GeneralPage(options), IDC_SPACES_PER_TAB, L"5");
        dialog::Ok(options);
    }));
    EXPECT_EQ(Saved().substr(0, 80),
              "[Tool]\r\nDisplayName=x\r\nCommand=y\r\n\r\n[General]\r\nMine=1\r\nSpacesPerTab=5\r\nFontName=");
}

TEST_F(OptionsTest, OkRunsTheChangeHandlersInTheOrderOfTheTable) {
    Open([](HWND options) { dialog::Ok(options); });
    using enum DrawingResource;
    EXPECT_EQ(handled, std::vector<DrawingResource>(
                           {Font, Font, Font, MarginBrush, BookmarkBrush, BackgroundBrush, SelectionBrush}));
}

TEST_F(OptionsTest, CancelChangesNothing) {
    folder.Write("orvane.ini", "as it was");
    const std::string before = GeneralSection();
    EXPECT_FALSE(Open([](HWND options) {
        dialog::Click(GeneralPage(options), IDC_SHOW_WHITESPACE);
        dialog::SetText(GeneralPage(options), IDC_QUICK_OPEN_PATH, L"elsewhere");
        dialog::SetText(FontsPage(options), IDC_FONT_SIZE, L"99");
        dialog::WhenShown([](HWND chooser) { Choose(chooser, 0x332211); });
        dialog::Click(ColorsPage(options), IDC_COLOR_FOREGROUND);
        dialog::Cancel(options);
    }));
    EXPECT_EQ(GeneralSection(), before);
    EXPECT_EQ(Saved(), "as it was");
    EXPECT_TRUE(handled.empty());
    EXPECT_EQ(file.sections.head, nullptr);
}

TEST_F(OptionsTest, ClosingTheWindowCancels) {
    folder.Write("orvane.ini", "as it was");
    EXPECT_FALSE(Open([](HWND options) {
        dialog::SetText(FontsPage(options), IDC_FONT_SIZE, L"99");
        SendMessageW(options, WM_CLOSE, 0, 0);
    }));
    EXPECT_EQ(settings.FontSize, 10u);
    EXPECT_EQ(Saved(), "as it was");
}

TEST_F(OptionsTest, AFileThatIsBeingReadStaysAndTheSettingsHold) {
    folder.Write("orvane.ini", "as it was");
    const std::u16string path = folder.Path("orvane.ini");
    Platform::File reader;
    ASSERT_TRUE(reader.Open(path.c_str(), Platform::File::Mode::ReadShared));
    EXPECT_TRUE(Open([](HWND options) {
        dialog::SetText(FontsPage(options), IDC_FONT_SIZE, L"13");
        dialog::Ok(options);
    }));
    EXPECT_EQ(settings.FontSize, 13u);
    EXPECT_EQ(Saved(), "as it was");
    reader.Close();
    // The model has them: the next save, of whatever dialog, writes them.
    EXPECT_EQ(file.FindSection(u"General")->GetInt(u"FontSize", 0), 13u);
}

TEST_F(OptionsTest, AFieldThatFindsNoMemoryKeepsItsSettingOrLosesItsText) {
    const std::vector<SettingText SettingsRecord::*> texts = {
        &SettingsRecord::QuickOpenPath, &SettingsRecord::TextFileTypes, &SettingsRecord::FontName};
    const uint64_t failures = FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        settings.FontSize = 9;
        for (const auto text : texts) (settings.*text).Set(u"old");
        file.Clear();
        EXPECT_TRUE(Open([&](HWND options) {
            dialog::SetText(GeneralPage(options), IDC_QUICK_OPEN_PATH, L"new");
            dialog::SetText(GeneralPage(options), IDC_FILE_TYPES, L"new");
            dialog::SetText(FontsPage(options), IDC_FONT_NAME, L"new");
            dialog::SetText(FontsPage(options), IDC_FONT_SIZE, L"12");
            pause.reset();
            dialog::Ok(options);
            pause.emplace();
        }));
        bool all = settings.FontSize == 12;
        EXPECT_TRUE(all || settings.FontSize == 9);
        for (const auto text : texts) {
            const std::string now = Narrow((settings.*text).Text());
            EXPECT_TRUE(now == "new" || now == "old" || !(settings.*text).Text()) << now;
            all = all && now == "new";
        }
        EXPECT_EQ(Saved(), GeneralSection());
        return all;
    });
    EXPECT_GE(failures, 6u) << "at least two for each text";
}

TEST_F(OptionsTest, WithoutMemoryToOpenItNothingChanges) {
    const std::string before = GeneralSection();
    folder.Write("orvane.ini", "as it was");
    FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        bool isWhole = false;
        dialog::WhenShown([&](HWND options) {
            pause.emplace();
            isWhole = GeneralPage(options) && FontsPage(options) && ColorsPage(options);
            dialog::Cancel(options);
        });
        pause.reset();
        const OptionsOutcome outcome = RunOptionsDialog(nullptr, file, changes, pageShown);
        pause.emplace();
        EXPECT_EQ(outcome, OptionsOutcome::Cancelled);
        EXPECT_EQ(GeneralSection(), before);
        return isWhole;
    });
    EXPECT_EQ(file.sections.head, nullptr);
    EXPECT_EQ(Saved(), "as it was");
}

TEST_F(OptionsTest, WithoutMemoryForTheModelTheFileIsNotWritten) {
    folder.Write("orvane.ini", "as it was");
    EXPECT_TRUE(Open([](HWND options) {
        dialog::SetText(FontsPage(options), IDC_FONT_SIZE, L"13");
        dialog::Ok(options);
        // The handlers run, then the record is stored: the first block that this takes fails.
        Heap::SetFailureHook([] {
            if (handled.size() == 7) Heap::SetFailureHook(nullptr);
            return handled.size() == 7;
        });
    }));
    Heap::SetFailureHook(nullptr);
    EXPECT_EQ(settings.FontSize, 13u);
    EXPECT_EQ(file.sections.head, nullptr);
    EXPECT_EQ(Saved(), "as it was");
}

TEST_F(OptionsTest, AFileThatCannotBeWrittenIsPassedOver) {
    std::filesystem::create_directory(folder.File("orvane.ini"));
    EXPECT_TRUE(Open([](HWND options) {
        dialog::SetText(FontsPage(options), IDC_FONT_SIZE, L"13");
        dialog::Ok(options);
    }));
    EXPECT_EQ(settings.FontSize, 13u);
}
