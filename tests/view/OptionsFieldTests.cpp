// The fields of the General and Fonts pages of the Options dialog.

#include "view/OptionsTest.h"

#include "view/CallCounter.h"

#include <algorithm>
#include <set>

namespace {

struct Face {
    const wchar_t* name;
    BYTE pitch;
};

// The faces of a system, in the place of the real one's.
int WINAPI ListFaces(HDC, LOGFONTW* wanted, FONTENUMPROCW take, LPARAM parameter, DWORD) {
    EXPECT_EQ(wanted->lfCharSet, ANSI_CHARSET);
    EXPECT_STREQ(wanted->lfFaceName, L"") << "every family";
    constexpr Face Faces[] = {{L"Fixed One", FIXED_PITCH | FF_MODERN},
                              {L"Prose", VARIABLE_PITCH | FF_ROMAN},
                              {L"Fixed One", FIXED_PITCH | FF_SWISS},
                              {L"Fixed", FIXED_PITCH},
                              {L"Unsure", DEFAULT_PITCH | FF_MODERN},
                              {L"Fixed Two", FIXED_PITCH},
                              {L"@Fixed", FIXED_PITCH}};
    for (const Face& face : Faces) {
        LOGFONTW font = {};
        const TEXTMETRICW metrics = {};
        font.lfPitchAndFamily = face.pitch;
        wcscpy(font.lfFaceName, face.name);
        if (!take(&font, &metrics, TRUETYPE_FONTTYPE, parameter)) return 0;
    }
    return 1;
}

} // namespace

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
    Open([](HWND options) {
        EXPECT_EQ(dialog::TextOf(FontsPage(options), IDC_FONT_SIZE), L"0");
        EXPECT_EQ(dialog::TextOf(FontsPage(options), IDC_MARGIN_WIDTH), L"4294967295");
        dialog::Cancel(options);
    });
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
    EXPECT_EQ(std::u16string(settings.QuickOpenPath.Text()), u"C:\\one;..\\two");
    EXPECT_EQ(std::u16string(settings.TextFileTypes.Text()), u"");
    EXPECT_EQ(std::u16string(settings.FontName.Text()), u"No Such Font");
    Open([](HWND options) {
        EXPECT_EQ(dialog::TextOf(FontsPage(options), IDC_FONT_NAME), L"No Such Font");
        const std::vector<std::wstring> names = dialog::ListItems(FontsPage(options), IDC_FONT_NAME);
        EXPECT_EQ(std::count(names.begin(), names.end(), L"No Such Font"), 0);
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, TheFontListHoldsEachFixedPitchFaceOnceAndNoneForVerticalText) {
    const ReplacedImport faces("EnumFontFamiliesExW", reinterpret_cast<void*>(ListFaces));
    ASSERT_TRUE(faces.IsImported());
    Open([](HWND options) {
        std::vector<std::wstring> names = dialog::ListItems(FontsPage(options), IDC_FONT_NAME);
        std::sort(names.begin(), names.end());
        EXPECT_EQ(names, std::vector<std::wstring>({L"Fixed", L"Fixed One", L"Fixed Two"}));
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, TheFontListHoldsTheFacesOfTheSystem) {
    std::set<std::wstring> fixed;
    LOGFONTW wanted = {};
    wanted.lfCharSet = ANSI_CHARSET;
    const HDC screen = GetDC(nullptr);
    EnumFontFamiliesExW(
        screen, &wanted,
        [](const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM faces) {
            if ((font->lfPitchAndFamily & 3) == FIXED_PITCH && font->lfFaceName[0] != L'@')
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
