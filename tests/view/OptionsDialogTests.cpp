#include "view/OptionsTest.h"

#include "view/DialogLayout.h"

#include <algorithm>
#include <set>

namespace {

std::wstring TreeText(HWND tree, HTREEITEM item) {
    wchar_t text[64] = {};
    TVITEMW wanted = {};
    wanted.mask = TVIF_TEXT;
    wanted.hItem = item;
    wanted.pszText = text;
    wanted.cchTextMax = 64;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&wanted));
    return text;
}

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
        if (row.type == SettingType::Int) text += std::to_string(*static_cast<const uint32_t*>(row.cell));
        if (row.type == SettingType::Colour) text += Hex(*static_cast<const Colour*>(row.cell));
        if (row.type == SettingType::String) text += Narrow(*static_cast<Char* const*>(row.cell));
        text += "\r\n";
    }
    return text;
}

struct Label {
    int control;
    const wchar_t* text;
};

void ExpectLabels(HWND page, const std::vector<Label>& labels) {
    for (const Label& label : labels) EXPECT_EQ(dialog::TextOf(page, label.control), label.text);
}

// The text of the static control before a field, which its mnemonic belongs to.
std::wstring LabelBefore(HWND page, int control) {
    wchar_t text[64] = {};
    GetWindowTextW(GetWindow(GetDlgItem(page, control), GW_HWNDPREV), text, 64);
    return text;
}

} // namespace

TEST_F(OptionsTest, TheTreeHoldsThePages) {
    Open([](HWND options) {
        EXPECT_EQ(dialog::TextOf(GetParent(GetDlgItem(options, IDOK)), IDOK), L"OK");
        wchar_t caption[32] = {};
        GetWindowTextW(options, caption, 32);
        EXPECT_STREQ(caption, L"Options");
        const HWND tree = GetDlgItem(options, IDC_OPTIONS_TREE);
        const HTREEITEM root = Related(tree, TVGN_ROOT, nullptr);
        EXPECT_EQ(TreeText(tree, root), L"Editor");
        EXPECT_EQ(Related(tree, TVGN_NEXT, root), nullptr);
        EXPECT_NE(SendMessageW(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(root), TVIS_EXPANDED) & TVIS_EXPANDED,
                  0);
        EXPECT_EQ(TreeText(tree, TreeItem(options, General)), L"General");
        EXPECT_EQ(TreeText(tree, TreeItem(options, Fonts)), L"Fonts");
        EXPECT_EQ(TreeText(tree, TreeItem(options, Colors)), L"Colors");
        EXPECT_EQ(Related(tree, TVGN_NEXT, TreeItem(options, Colors)), nullptr);
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, ThePagesStandRightOfTheTree) {
    Open([](HWND options) {
        const int dpi = static_cast<int>(GetDpiForWindow(options));
        for (const HWND page : {GeneralPage(options), FontsPage(options), ColorsPage(options)}) {
            RECT area = {};
            GetWindowRect(page, &area);
            MapWindowPoints(nullptr, options, reinterpret_cast<POINT*>(&area), 2);
            EXPECT_EQ(area.left, MulDiv(170, dpi, 96));
            EXPECT_EQ(area.top, 0);
        }
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, SelectingInTheTreeShowsThePageAlone) {
    Open([](HWND options) {
        for (const int page : {Fonts, Colors, General, Colors}) {
            ShowPage(options, page);
            EXPECT_EQ(ShownPage(options), page);
        }
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, ThePageShownLastIsShownFirstNextTime) {
    Open([](HWND options) {
        ShowPage(options, Colors);
        dialog::Cancel(options);
    });
    Open([](HWND options) {
        EXPECT_EQ(ShownPage(options), Colors);
        const HWND tree = GetDlgItem(options, IDC_OPTIONS_TREE);
        EXPECT_EQ(Related(tree, TVGN_CARET, nullptr), TreeItem(options, Colors));
        ShowPage(options, General);
        dialog::Ok(options);
    });
    Open([](HWND options) {
        EXPECT_EQ(ShownPage(options), General);
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, TheRootOfTheTreeShowsTheFirstPage) {
    Open([](HWND options) {
        ShowPage(options, Colors);
        const HWND tree = GetDlgItem(options, IDC_OPTIONS_TREE);
        SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(Related(tree, TVGN_ROOT, nullptr)));
        EXPECT_EQ(ShownPage(options), General);
        dialog::Cancel(options);
    });
    Open([](HWND options) {
        EXPECT_EQ(ShownPage(options), General);
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, ThePagesHaveTheirLabels) {
    Open([](HWND options) {
        const HWND general = GeneralPage(options);
        ExpectLabels(general, {{IDC_SHOW_WHITESPACE, L"Show &whitespace"},
                               {IDC_REPLACE_TABS, L"&Replace tabs with spaces"},
                               {IDC_PASTE_KEEP_SELECTION, L"&Keep selection on paste"},
                               {IDC_SHOW_LINE_NUMBERS, L"Show &line numbers"},
                               {IDC_VAR_WIDTH_LINE_NUMBERS, L"&Variable width"},
                               {IDC_INDENT_GUIDE, L"Show &indentation guide"}});
        EXPECT_EQ(LabelBefore(general, IDC_SPACES_PER_TAB), L"&Spaces per tab:");
        EXPECT_EQ(LabelBefore(general, IDC_COLUMN_GUIDE), L"&Column guide:");
        EXPECT_EQ(LabelBefore(general, IDC_QUICK_OPEN_PATH), L"&Quick open path:");
        EXPECT_EQ(LabelBefore(general, IDC_FILE_TYPES), L"&File Types:");
        const HWND fonts = FontsPage(options);
        EXPECT_EQ(LabelBefore(fonts, IDC_FONT_NAME), L"&Font Name:");
        EXPECT_EQ(LabelBefore(fonts, IDC_FONT_SIZE), L"Font &Size:");
        EXPECT_EQ(dialog::TextOf(fonts, IDC_FONT_BOLD), L"&Bold");
        EXPECT_EQ(LabelBefore(fonts, IDC_CARET_WIDTH), L"&Caret Width:");
        EXPECT_EQ(LabelBefore(fonts, IDC_MARGIN_WIDTH), L"&Margin Width:");
        ExpectLabels(ColorsPage(options),
                     {{IDC_COLOR_FOREGROUND, L"&Foreground"}, {IDC_COLOR_BACKGROUND, L"&Background"}});
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, ThePagesAreLaidOutCleanly) {
    Open([](HWND options) {
        for (const int page : {General, Fonts, Colors}) {
            SCOPED_TRACE(page);
            ShowPage(options, page);
            dialog::ExpectCleanLayout(options);
        }
        dialog::Cancel(options);
    });
}

// Their place is in pixels and everything else in units of the font, the size of which may differ by a pixel.
TEST_F(OptionsTest, ThePagesAreLaidOutCleanlyWhateverTheScreenAndTheFont) {
    for (const int dpi : {96, 120, 144, 192})
        for (const int points : {dpi / 12 - 1, dpi / 12, dpi / 12 + 1}) {
            SCOPED_TRACE(std::to_string(dpi) + " dots to the inch, " + std::to_string(points) + " points");
            const dialog::Scaled scaled(dpi, points);
            Open([&](HWND options) {
                for (const int page : {General, Fonts, Colors}) {
                    ShowPage(options, page);
                    dialog::ExpectCleanLayout(options);
                }
                RECT area = {};
                GetWindowRect(ColorsPage(options), &area);
                MapWindowPoints(nullptr, options, reinterpret_cast<POINT*>(&area), 2);
                EXPECT_EQ(area.left, MulDiv(170, dpi, 96));
                EXPECT_EQ(area.top, 0);
                dialog::Cancel(options);
            });
        }
}

TEST_F(OptionsTest, StandsInTheMiddleOfItsOwner) {
    const dialog::Parent owner(801, 603);
    Open(
        [&](HWND options) {
            dialog::ExpectCentred(options, owner.Get());
            dialog::Cancel(options);
        },
        owner.Get());
}

TEST_F(OptionsTest, TheTabKeyGoesThroughTheTreeThePageShownAndTheButtons) {
    using Numbers = std::vector<int>;
    Open([](HWND options) {
        ShowPage(options, General);
        EXPECT_EQ(dialog::TabOrder(options),
                  Numbers({IDC_OPTIONS_TREE, IDC_SHOW_WHITESPACE, IDC_REPLACE_TABS, IDC_PASTE_KEEP_SELECTION,
                           IDC_SHOW_LINE_NUMBERS, IDC_VAR_WIDTH_LINE_NUMBERS, IDC_INDENT_GUIDE, IDC_SPACES_PER_TAB,
                           IDC_COLUMN_GUIDE, IDC_QUICK_OPEN_PATH, IDC_FILE_TYPES, IDOK, IDCANCEL}));
        ShowPage(options, Fonts);
        EXPECT_EQ(dialog::TabOrder(options), Numbers({IDC_OPTIONS_TREE, IDC_FONT_NAME, IDC_FONT_SIZE, IDC_FONT_BOLD,
                                                      IDC_CARET_WIDTH, IDC_MARGIN_WIDTH, IDOK, IDCANCEL}));
        ShowPage(options, Colors);
        EXPECT_EQ(dialog::TabOrder(options), Numbers({IDC_OPTIONS_TREE, IDC_COLOR_LIST, IDC_COLOR_FOREGROUND,
                                                      IDC_COLOR_BACKGROUND, IDOK, IDCANCEL}));
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, NoTwoControlsOfAPageShareAMnemonic) {
    Open([](HWND options) {
        const wchar_t* const expected[] = {L"cfiklqrsvw", L"bcfms", L"bf"};
        for (const int page : {General, Fonts, Colors}) {
            ShowPage(options, page);
            EXPECT_EQ(dialog::Mnemonics(options), expected[page]);
        }
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, EveryCheckBoxShowsAndSetsItsSetting) {
    const struct {
        int control;
        uint32_t SettingsRecord::*cell;
    } boxes[] = {{IDC_SHOW_WHITESPACE, &SettingsRecord::ShowWhitespace},
                 {IDC_REPLACE_TABS, &SettingsRecord::ReplaceTabs},
                 {IDC_PASTE_KEEP_SELECTION, &SettingsRecord::PasteKeepSelection},
                 {IDC_SHOW_LINE_NUMBERS, &SettingsRecord::ShowLineNumbers},
                 {IDC_VAR_WIDTH_LINE_NUMBERS, &SettingsRecord::VarWidthLineNumbers},
                 {IDC_INDENT_GUIDE, &SettingsRecord::IndentGuide},
                 {IDC_FONT_BOLD, &SettingsRecord::FontBold}};
    for (const auto& box : boxes) {
        for (const uint32_t value : {1u, 0u}) {
            const SettingsRecord before = settings;
            settings.*box.cell = 1 - value;
            EXPECT_TRUE(Open([&](HWND options) {
                const HWND page = PageWith(options, box.control);
                EXPECT_EQ(dialog::IsChecked(page, box.control), value == 0);
                dialog::Click(page, box.control);
                dialog::Ok(options);
            }));
            for (const auto& other : boxes) {
                const uint32_t expected = other.control == box.control ? value : before.*other.cell;
                EXPECT_EQ(settings.*other.cell, expected);
            }
        }
    }
}

TEST_F(OptionsTest, EveryNumberShowsAndSetsItsSetting) {
    const struct {
        int control;
        uint32_t SettingsRecord::*cell;
    } fields[] = {{IDC_SPACES_PER_TAB, &SettingsRecord::SpacesPerTab},
                  {IDC_COLUMN_GUIDE, &SettingsRecord::ColumnGuide},
                  {IDC_FONT_SIZE, &SettingsRecord::FontSize},
                  {IDC_CARET_WIDTH, &SettingsRecord::CaretWidth},
                  {IDC_MARGIN_WIDTH, &SettingsRecord::MarginWidth}};
    uint32_t value = 3;
    for (const auto& field : fields) {
        const uint32_t before = settings.*field.cell;
        EXPECT_TRUE(Open([&](HWND options) {
            const HWND page = PageWith(options, field.control);
            EXPECT_EQ(dialog::TextOf(page, field.control), std::to_wstring(before));
            dialog::SetText(page, field.control, std::to_wstring(value));
            dialog::Ok(options);
        }));
        EXPECT_EQ(settings.*field.cell, value++);
    }
    for (size_t i = 0; i < std::size(fields); ++i) EXPECT_EQ(settings.*fields[i].cell, 3 + i) << i;
}

TEST_F(OptionsTest, NumbersTakeWhateverIsTyped) {
    EXPECT_TRUE(Open([](HWND options) {
        const HWND page = FontsPage(options);
        dialog::SetText(page, IDC_FONT_SIZE, L"large");
        dialog::SetText(page, IDC_CARET_WIDTH, L"");
        dialog::SetText(page, IDC_MARGIN_WIDTH, L"4294967295");
        dialog::Ok(options);
    }));
    EXPECT_EQ(settings.FontSize, 0u);
    EXPECT_EQ(settings.CaretWidth, 0u);
    EXPECT_EQ(settings.MarginWidth, 4294967295u);
}

TEST_F(OptionsTest, ANumberHasNoSignAndEndsWithItsDigits) {
    EXPECT_TRUE(Open([](HWND options) {
        dialog::SetText(GeneralPage(options), IDC_SPACES_PER_TAB, L"-3");
        dialog::SetText(GeneralPage(options), IDC_COLUMN_GUIDE, L"+5");
        dialog::SetText(FontsPage(options), IDC_FONT_SIZE, L"12pt");
        dialog::SetText(FontsPage(options), IDC_CARET_WIDTH, L" 7");
        dialog::SetText(FontsPage(options), IDC_MARGIN_WIDTH, L"pt12");
        dialog::Ok(options);
    }));
    EXPECT_EQ(settings.SpacesPerTab, 0u);
    EXPECT_EQ(settings.ColumnGuide, 0u);
    EXPECT_EQ(settings.FontSize, 12u);
    EXPECT_EQ(settings.CaretWidth, 7u);
    EXPECT_EQ(settings.MarginWidth, 0u);
}

TEST_F(OptionsTest, LettersCanBeTypedIntoTheFontSize) {
    EXPECT_TRUE(Open([](HWND options) {
        ShowPage(options, Fonts);
        const HWND field = GetDlgItem(FontsPage(options), IDC_FONT_SIZE);
        SendMessageW(field, EM_SETSEL, 0, -1);
        for (const wchar_t c : {L'b', L'i', L'g'}) SendMessageW(field, WM_CHAR, c, 0);
        EXPECT_EQ(dialog::TextOf(FontsPage(options), IDC_FONT_SIZE), L"big");
        dialog::Ok(options);
    }));
    EXPECT_EQ(settings.FontSize, 0u);
}

TEST_F(OptionsTest, TextsShowAndSetTheirSettings) {
    EXPECT_TRUE(Open([](HWND options) {
        EXPECT_EQ(dialog::TextOf(GeneralPage(options), IDC_QUICK_OPEN_PATH), L".;%INCLUDE%");
        EXPECT_EQ(dialog::TextOf(GeneralPage(options), IDC_FILE_TYPES).substr(0, 9), L"C++ Files");
        EXPECT_EQ(dialog::TextOf(FontsPage(options), IDC_FONT_NAME), L"Courier New");
        dialog::SetText(GeneralPage(options), IDC_QUICK_OPEN_PATH, L"C:\\one;..\\two");
        dialog::SetText(GeneralPage(options), IDC_FILE_TYPES, L"");
        dialog::SetText(FontsPage(options), IDC_FONT_NAME, L"No Such Font");
        dialog::Ok(options);
    }));
    EXPECT_EQ(std::u16string(settings.QuickOpenPath), u"C:\\one;..\\two");
    EXPECT_EQ(std::u16string(settings.TextFileTypes), u"");
    EXPECT_EQ(std::u16string(settings.FontName), u"No Such Font");
    Open([](HWND options) {
        EXPECT_EQ(dialog::TextOf(FontsPage(options), IDC_FONT_NAME), L"No Such Font");
        const std::vector<std::wstring> names = dialog::ListItems(FontsPage(options), IDC_FONT_NAME);
        EXPECT_EQ(std::count(names.begin(), names.end(), L"No Such Font"), 0);
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, TheFontListHoldsEachFixedPitchFaceOnce) {
    std::set<std::wstring> fixed;
    LOGFONTW wanted = {};
    wanted.lfCharSet = ANSI_CHARSET;
    const HDC screen = GetDC(nullptr);
    EnumFontFamiliesExW(
        screen, &wanted,
        [](const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM faces) {
            if ((font->lfPitchAndFamily & 3) == FIXED_PITCH)
                reinterpret_cast<std::set<std::wstring>*>(faces)->insert(font->lfFaceName);
            return 1;
        },
        reinterpret_cast<LPARAM>(&fixed), 0);
    ReleaseDC(nullptr, screen);
    ASSERT_FALSE(fixed.empty());
    Open([&](HWND options) {
        const std::vector<std::wstring> names = dialog::ListItems(FontsPage(options), IDC_FONT_NAME);
        EXPECT_EQ(names.size(), fixed.size());
        EXPECT_EQ(std::set<std::wstring>(names.begin(), names.end()), fixed);
        dialog::Cancel(options);
    });
}

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

TEST_F(OptionsTest, OkRunsTheChangeHandlers) {
    Open([](HWND options) { dialog::Ok(options); });
    EXPECT_EQ(handled, 7) << "three of the font and one of each brush";
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
    EXPECT_EQ(handled, 0);
    EXPECT_EQ(file.sections.head, nullptr);
}

TEST_F(OptionsTest, AFileThatCannotBeWrittenIsPassedOver) {
    std::filesystem::create_directory(folder.File("orvane.ini"));
    EXPECT_TRUE(Open([](HWND options) {
        dialog::SetText(FontsPage(options), IDC_FONT_SIZE, L"13");
        dialog::Ok(options);
    }));
    EXPECT_EQ(settings.FontSize, 13u);
}
