// The Options dialog: its tree, and how its pages look.

#include "view/OptionsTest.h"

#include "view/CallCounter.h"
#include "view/DialogLayout.h"

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

// A tree that selects its first page as its items go.
LRESULT CALLBACK SelectOnTheWayOut(HWND tree, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR, DWORD_PTR first) {
    if (message == WM_DESTROY) SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, static_cast<LPARAM>(first));
    return DefSubclassProc(tree, message, wparam, lparam);
}

// Makes the pages of the dialog but one, for which there is no memory.
class PageLeftOut {
public:
    explicit PageLeftOut(WORD resource) {
        missing = resource;
        make = reinterpret_cast<decltype(make)>(import.Original());
    }

private:
    static HWND WINAPI Create(HINSTANCE instance, const wchar_t* name, HWND owner, DLGPROC procedure, LPARAM object) {
        return name == MAKEINTRESOURCEW(missing) ? nullptr : make(instance, name, owner, procedure, object);
    }

    static inline WORD missing = 0;
    static inline decltype(&CreateDialogParamW) make = nullptr;
    ReplacedImport import{"CreateDialogParamW", reinterpret_cast<void*>(Create)};
};

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

TEST_F(OptionsTest, ThePagesAreRightOfTheTree) {
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

TEST_F(OptionsTest, ATreeOnItsWayOutChoosesNoPage) {
    Open([](HWND options) {
        ShowPage(options, Fonts);
        const auto first = reinterpret_cast<DWORD_PTR>(TreeItem(options, General));
        ASSERT_TRUE(SetWindowSubclass(GetDlgItem(options, IDC_OPTIONS_TREE), SelectOnTheWayOut, 1, first));
        dialog::Cancel(options);
    });
    Open([](HWND options) {
        EXPECT_EQ(ShownPage(options), Fonts);
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, APageThatCannotBeMadeIsLeftOut) {
    Open([](HWND options) { // so that the missing page is the first to be shown once
        ShowPage(options, Fonts);
        dialog::Cancel(options);
    });
    const WORD resources[] = {IDD_OPTIONS_GENERAL, IDD_OPTIONS_FONTS, IDD_OPTIONS_COLORS};
    for (const int missing : {Fonts, Colors, General}) {
        SCOPED_TRACE(missing);
        const SettingsRecord before = settings;
        const PageLeftOut leftOut(resources[missing]);
        const int other = missing == Fonts ? General : Fonts;
        EXPECT_TRUE(Open([&](HWND options) {
            ShowPage(options, missing);
            EXPECT_EQ(ShownPage(options), -1);
            ShowPage(options, other);
            EXPECT_EQ(ShownPage(options), other);
            const int field = other == Fonts ? IDC_FONT_SIZE : IDC_SPACES_PER_TAB;
            dialog::SetText(PageWith(options, field), field, L"23");
            ShowPage(options, missing);
            dialog::Ok(options);
        }));
        EXPECT_EQ(other == Fonts ? settings.FontSize : settings.SpacesPerTab, 23u);
        EXPECT_EQ(missing == Fonts ? settings.FontSize : settings.SpacesPerTab,
                  missing == Fonts ? before.FontSize : before.SpacesPerTab);
    }
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
        for (const int off : {-1, 0, 1}) {
            const int points = dialog::FontPoints * dpi / 96 + off;
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

TEST_F(OptionsTest, IsInTheMiddleOfItsOwner) {
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
