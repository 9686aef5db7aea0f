// The Colors page of the Options dialog.

#include "view/OptionsTest.h"

#include "view/CallCounter.h"

#include <algorithm>

namespace {

constexpr Colour Black = 0;

struct Entry {
    const wchar_t* name;
    Colour SettingsRecord::*foreground; // or null
    Colour SettingsRecord::*background;
};

using S = SettingsRecord;
constexpr Entry Entries[] = {
    {L"Text", &S::TextFg, &S::TextBg},
    {L"Selection", &S::SelFg, &S::SelBg},
    {L"Line Number", &S::LineNumFg, &S::LineNumBg},
    {L"Margin", nullptr, &S::MarginColor},
    {L"Guide", nullptr, &S::GuideColor},
    {L"Space", &S::SpaceColor, nullptr},
    {L"Bookmark", nullptr, &S::BookmarkColor},
    {L"Comment", &S::CommentFg, &S::CommentBg},
    {L"Long Comment", &S::LongCommentFg, &S::LongCommentBg},
    {L"String", &S::StringFg, &S::StringBg},
    {L"Keyword", &S::KeywordFg, &S::KeywordBg},
    {L"Number", &S::NumberFg, &S::NumberBg},
    {L"BraceMatch", &S::BraceMatchFg, &S::BraceMatchBg},
    {L"Modifed Binary", &S::BinFg, &S::BinBg},
    {L"Html Tag", &S::HtmlTagFg, &S::HtmlTagBg},
    {L"Html Attribute", &S::HtmlAttrFg, &S::HtmlAttrBg},
    {L"Html Attribute Value", &S::HtmlAttrValueFg, &S::HtmlAttrValueBg},
    {L"Html Quoted Value", &S::HtmlAttrQuotedValueFg, &S::HtmlAttrQuotedValueBg},
    {L"Html Comment", &S::HtmlCommentFg, &S::HtmlCommentBg},
    {L"Html Punctuation", &S::HtmlPunctFg, &S::HtmlPunctBg},
};
constexpr int EntryCount = static_cast<int>(std::size(Entries));

// Replaces the system's dialog of colours while it lives, and notes what it is opened with.
class FakeChooser {
public:
    // What the user does there; the result is whether the choice is confirmed.
    explicit FakeChooser(std::function<bool(CHOOSECOLORW&)> user) { choose = std::move(user); }

private:
    static BOOL WINAPI Open(CHOOSECOLORW* request) { return choose(*request); }

    static inline std::function<bool(CHOOSECOLORW&)> choose;
    ReplacedImport import{"ChooseColorW", reinterpret_cast<void*>(Open)};
};

bool IsToBePainted(HWND window) {
    RECT all = {};
    RECT part = {};
    GetClientRect(window, &all);
    return GetUpdateRect(window, &part, FALSE) && EqualRect(&all, &part);
}

std::vector<uint32_t> Pixels(HWND page, SIZE& size) {
    RECT area = {};
    GetClientRect(GetDlgItem(page, IDC_COLOR_PREVIEW), &area);
    size = {area.right, area.bottom};
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(info.bmiHeader), area.right, -area.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ before = SelectObject(dc, bitmap);
    DRAWITEMSTRUCT item = {};
    item.CtlType = ODT_STATIC;
    item.CtlID = IDC_COLOR_PREVIEW;
    item.hDC = dc;
    item.rcItem = area;
    SendMessageW(page, WM_DRAWITEM, IDC_COLOR_PREVIEW, reinterpret_cast<LPARAM>(&item));
    GdiFlush();
    std::vector<uint32_t> pixels(static_cast<uint32_t*>(bits),
                                 static_cast<uint32_t*>(bits) + static_cast<size_t>(area.right * area.bottom));
    SelectObject(dc, before);
    DeleteObject(bitmap);
    DeleteDC(dc);
    return pixels;
}

// A pixel of a bitmap has blue in its low byte.
uint32_t AsPixel(Colour colour) { return (colour & 0xFF) << 16 | (colour & 0xFF00) | colour >> 16; }

// What the preview of an entry shows: its background, and its name in the foreground.
void ExpectPreview(HWND page, int entry, Colour foreground, Colour background) {
    dialog::ChooseItem(page, IDC_COLOR_LIST, entry);
    SIZE size = {};
    const std::vector<uint32_t> pixels = Pixels(page, size);
    EXPECT_EQ(pixels.front() & 0xFFFFFF, AsPixel(background)) << entry;
    EXPECT_EQ(pixels.back() & 0xFFFFFF, AsPixel(background)) << entry;
    const bool hasText = std::any_of(pixels.begin(), pixels.end(),
                                     [&](uint32_t pixel) { return (pixel & 0xFFFFFF) == AsPixel(foreground); });
    EXPECT_TRUE(hasText) << entry;
}

// Of what is not of the background's colour.
RECT Ink(const std::vector<uint32_t>& pixels, SIZE size) {
    RECT ink = {size.cx, size.cy, 0, 0};
    for (LONG y = 0; y < size.cy; ++y)
        for (LONG x = 0; x < size.cx; ++x) {
            if (pixels[static_cast<size_t>(y * size.cx + x)] == pixels[0]) continue;
            ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
                   std::max(ink.bottom, y + 1)};
        }
    return ink;
}

} // namespace

TEST_F(OptionsTest, TheColorsPageListsTheEntriesInOrder) {
    std::vector<std::wstring> expected;
    for (const Entry& entry : Entries) expected.push_back(entry.name);
    Open([&](HWND options) {
        EXPECT_EQ(dialog::ListItems(ColorsPage(options), IDC_COLOR_LIST), expected);
        EXPECT_EQ(dialog::SelectedItem(ColorsPage(options), IDC_COLOR_LIST), 0);
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, AnEntryEnablesTheButtonsOfItsCells) {
    Open([](HWND options) {
        const HWND page = ColorsPage(options);
        for (int i = 0; i < EntryCount; ++i) {
            dialog::ChooseItem(page, IDC_COLOR_LIST, i);
            EXPECT_EQ(dialog::IsEnabled(page, IDC_COLOR_FOREGROUND), Entries[i].foreground != nullptr) << i;
            EXPECT_EQ(dialog::IsEnabled(page, IDC_COLOR_BACKGROUND), Entries[i].background != nullptr) << i;
        }
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, ThePreviewShowsTheColoursOfTheEntry) {
    // Every cell gets a colour of its own, so that a wrong one shows.
    Colour next = 0x102030;
    for (uint32_t i = 0; i < generalSettings.count; ++i) {
        if (generalSettings.rows[i].type != SettingType::Colour) continue;
        settings.*generalSettings.rows[i].cell.number = next;
        next += 0x010203;
    }
    Open([&](HWND options) {
        for (int i = 0; i < EntryCount; ++i) {
            const Entry& entry = Entries[i];
            ExpectPreview(ColorsPage(options), i, entry.foreground ? settings.*entry.foreground : Black,
                          entry.background ? settings.*entry.background : GetSysColor(COLOR_BTNFACE));
        }
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, AChosenColourIsPreviewedAndStoredByOk) {
    const Colour before = settings.KeywordFg;
    EXPECT_TRUE(Open([&](HWND options) {
        const HWND page = ColorsPage(options);
        ShowPage(options, Colors);
        dialog::ChooseItem(page, IDC_COLOR_LIST, 10);
        dialog::WhenShown([](HWND chooser) { Choose(chooser, 0x332211); });
        dialog::Click(page, IDC_COLOR_FOREGROUND);
        EXPECT_EQ(settings.KeywordFg, before) << "only the copy is edited";
        ExpectPreview(page, 10, 0x332211, settings.KeywordBg);
        dialog::WhenShown([](HWND chooser) { Choose(chooser, 0x665544); });
        dialog::Click(page, IDC_COLOR_BACKGROUND);
        ExpectPreview(page, 10, 0x332211, 0x665544);
        dialog::Ok(options);
    }));
    EXPECT_EQ(settings.KeywordFg, 0x332211u);
    EXPECT_EQ(settings.KeywordBg, 0x665544u);
    EXPECT_NE(Saved().find("KeywordFg=#112233\r\n"), std::string::npos);
}

TEST_F(OptionsTest, EachButtonBeginsWithTheCellOfItsEntryAndStoresIntoIt) {
    Colour next = 0x102030;
    for (const Entry& entry : Entries)
        for (Colour SettingsRecord::*const cell : {entry.foreground, entry.background})
            if (cell) settings.*cell = next += 0x010203;
    const SettingsRecord before = settings;
    constexpr Colour Changed = 0x800000;
    std::vector<Colour> offered;
    const FakeChooser chooser([&](CHOOSECOLORW& request) {
        offered.push_back(request.rgbResult);
        request.rgbResult ^= Changed;
        return true;
    });
    std::vector<Colour> expected;
    EXPECT_TRUE(Open([&](HWND options) {
        for (int i = 0; i < EntryCount; ++i) {
            dialog::ChooseItem(ColorsPage(options), IDC_COLOR_LIST, i);
            dialog::Click(ColorsPage(options), IDC_COLOR_FOREGROUND);
            dialog::Click(ColorsPage(options), IDC_COLOR_BACKGROUND);
            for (Colour SettingsRecord::*const cell : {Entries[i].foreground, Entries[i].background})
                if (cell) expected.push_back(before.*cell);
        }
        dialog::Ok(options);
    }));
    EXPECT_EQ(offered, expected);
    for (const Entry& entry : Entries)
        for (Colour SettingsRecord::*const cell : {entry.foreground, entry.background})
            if (cell) {
                EXPECT_EQ(settings.*cell, before.*cell ^ Changed) << testing::PrintToString(std::wstring(entry.name));
            }
}

TEST_F(OptionsTest, TheChooserBeginsWithTheColourAndCancelKeepsIt) {
    settings.StringFg = 0x010203;
    EXPECT_TRUE(Open([&](HWND options) {
        const HWND page = ColorsPage(options);
        dialog::ChooseItem(page, IDC_COLOR_LIST, 9);
        dialog::WhenShown([options](HWND chooser) {
            EXPECT_FALSE(IsWindowEnabled(options)) << "it waits for the choice";
            EXPECT_EQ(dialog::TextOf(chooser, 706), L"3");
            EXPECT_EQ(dialog::TextOf(chooser, 707), L"2");
            EXPECT_EQ(dialog::TextOf(chooser, 708), L"1");
            SetDlgItemInt(chooser, 706, 200, FALSE);
            dialog::Cancel(chooser);
        });
        dialog::Click(page, IDC_COLOR_FOREGROUND);
        ExpectPreview(page, 9, 0x010203, settings.StringBg);
        dialog::Ok(options);
    }));
    EXPECT_EQ(settings.StringFg, 0x010203u);
}

TEST_F(OptionsTest, ThePreviewsTextIsCentredOnOneLine) {
    Open([&](HWND options) {
        constexpr wchar_t Name[] = L"Html Tag";
        dialog::ChooseItem(ColorsPage(options), IDC_COLOR_LIST, 14);
        SIZE size = {};
        const RECT ink = Ink(Pixels(ColorsPage(options), size), size);
        const HDC dc = CreateCompatibleDC(nullptr); // with the font of the picture
        SIZE text = {};
        GetTextExtentPoint32W(dc, Name, 8, &text);
        DeleteDC(dc);
        const POINT corner = {(size.cx - text.cx) / 2, (size.cy - text.cy) / 2};
        constexpr LONG Bearing = 3; // beside the outer letters
        EXPECT_GE(ink.left, corner.x - 1);
        EXPECT_LE(ink.left, corner.x + Bearing);
        EXPECT_GE(ink.right, corner.x + text.cx - Bearing);
        EXPECT_LE(ink.right, corner.x + text.cx + 1);
        EXPECT_GE(ink.top, corner.y - 1);
        EXPECT_LE(ink.bottom, corner.y + text.cy + 1);
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, SelectingAnEntryRepaintsThePreview) {
    Open([&](HWND options) {
        ShowPage(options, Colors);
        const HWND preview = GetDlgItem(ColorsPage(options), IDC_COLOR_PREVIEW);
        ValidateRect(preview, nullptr);
        EXPECT_FALSE(IsToBePainted(preview));
        dialog::ChooseItem(ColorsPage(options), IDC_COLOR_LIST, 7);
        EXPECT_TRUE(IsToBePainted(preview));
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, ThePreviewAndTheButtonsAreRefreshedWhateverIsChosen) {
    Open([&](HWND options) {
        ShowPage(options, Colors);
        const HWND page = ColorsPage(options);
        const HWND preview = GetDlgItem(page, IDC_COLOR_PREVIEW);
        for (const bool confirmed : {true, false}) {
            const FakeChooser chooser([&](CHOOSECOLORW&) {
                ValidateRect(preview, nullptr);
                EnableWindow(GetDlgItem(page, IDC_COLOR_FOREGROUND), FALSE);
                EnableWindow(GetDlgItem(page, IDC_COLOR_BACKGROUND), FALSE);
                return confirmed;
            });
            dialog::Click(page, IDC_COLOR_BACKGROUND);
            EXPECT_TRUE(IsToBePainted(preview)) << confirmed;
            EXPECT_TRUE(dialog::IsEnabled(page, IDC_COLOR_FOREGROUND)) << confirmed;
            EXPECT_TRUE(dialog::IsEnabled(page, IDC_COLOR_BACKGROUND)) << confirmed;
        }
        dialog::Cancel(options);
    });
}

TEST_F(OptionsTest, TheCustomColoursAreKeptAndTheFirstIsTheCurrentOne) {
    settings.TextFg = 0x010203;
    settings.TextBg = 0x040506;
    std::vector<COLORREF> first;
    std::vector<COLORREF> last;
    const FakeChooser chooser([&](CHOOSECOLORW& request) {
        EXPECT_EQ(request.rgbResult, request.lpCustColors[0]);
        EXPECT_TRUE(request.Flags & CC_RGBINIT);
        first.push_back(request.lpCustColors[0]);
        last.push_back(request.lpCustColors[15]);
        request.lpCustColors[0] = 0xFFFFFF; // the user fills both
        request.lpCustColors[15] = 0x0A0B0C;
        return false;
    });
    const auto useBoth = [](HWND options) {
        ShowPage(options, Colors);
        dialog::Click(ColorsPage(options), IDC_COLOR_FOREGROUND);
        dialog::Click(ColorsPage(options), IDC_COLOR_BACKGROUND);
        dialog::Cancel(options);
    };
    Open(useBoth);
    Open(useBoth);
    EXPECT_EQ(first, std::vector<COLORREF>({0x010203, 0x040506, 0x010203, 0x040506}));
    EXPECT_EQ(last, std::vector<COLORREF>({0, 0x0A0B0C, 0, 0x0A0B0C})) << "kept as long as the page";
}
