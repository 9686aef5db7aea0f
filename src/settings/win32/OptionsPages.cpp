#include "settings/win32/OptionsPages.h"

#include "base/Text.h"
#include "base/win32/Handles.h"
#include "base/win32/WindowText.h"
#include "resource.h"

namespace {

// A check box or a number field and the cell that it edits.
struct NumberSetting {
    int control;
    uint32_t SettingsRecord::*cell;
};

struct TextSetting {
    int control;
    SettingText SettingsRecord::*cell;
};

constexpr NumberSetting GeneralChecks[] = {
    {IDC_SHOW_WHITESPACE, &SettingsRecord::ShowWhitespace},
    {IDC_REPLACE_TABS, &SettingsRecord::ReplaceTabs},
    {IDC_PASTE_KEEP_SELECTION, &SettingsRecord::PasteKeepSelection},
    {IDC_SHOW_LINE_NUMBERS, &SettingsRecord::ShowLineNumbers},
    {IDC_VAR_WIDTH_LINE_NUMBERS, &SettingsRecord::VarWidthLineNumbers},
    {IDC_INDENT_GUIDE, &SettingsRecord::IndentGuide},
};

constexpr NumberSetting GeneralNumbers[] = {
    {IDC_SPACES_PER_TAB, &SettingsRecord::SpacesPerTab},
    {IDC_COLUMN_GUIDE, &SettingsRecord::ColumnGuide},
};

constexpr TextSetting GeneralTexts[] = {
    {IDC_QUICK_OPEN_PATH, &SettingsRecord::QuickOpenPath},
    {IDC_FILE_TYPES, &SettingsRecord::TextFileTypes},
};

constexpr NumberSetting FontNumbers[] = {
    {IDC_FONT_SIZE, &SettingsRecord::FontSize},
    {IDC_CARET_WIDTH, &SettingsRecord::CaretWidth},
    {IDC_MARGIN_WIDTH, &SettingsRecord::MarginWidth},
};

template <size_t Count> void FillChecks(HWND page, const SettingsRecord& copy, const NumberSetting (&checks)[Count]) {
    for (const NumberSetting& check : checks)
        CheckDlgButton(page, check.control, copy.*check.cell ? BST_CHECKED : BST_UNCHECKED);
}

template <size_t Count> void ApplyChecks(HWND page, SettingsRecord& copy, const NumberSetting (&checks)[Count]) {
    for (const NumberSetting& check : checks) copy.*check.cell = IsDlgButtonChecked(page, check.control) == BST_CHECKED;
}

template <size_t Count> void FillNumbers(HWND page, const SettingsRecord& copy, const NumberSetting (&numbers)[Count]) {
    for (const NumberSetting& number : numbers) SetDlgItemInt(page, number.control, copy.*number.cell, FALSE);
}

// Reads what is typed as the settings file is read: text that is no number, or has a sign, is 0.
template <size_t Count> void ApplyNumbers(HWND page, SettingsRecord& copy, const NumberSetting (&numbers)[Count]) {
    for (const NumberSetting& number : numbers) {
        WString text;
        if (!TextOfWindow(GetDlgItem(page, number.control), text)) continue;
        const Char* digits = text.Text();
        while (Text::IsBlank(*digits)) ++digits;
        copy.*number.cell = Text::ParseDecimal(digits);
    }
}

void FillText(HWND page, int control, const SettingText& cell) { SetDlgItemTextW(page, control, Wide(cell.OrEmpty())); }

void ApplyText(HWND page, int control, SettingText& cell) {
    WString text;
    if (TextOfWindow(GetDlgItem(page, control), text)) cell.Set(text.Text());
}

int CALLBACK AddFace(const LOGFONTW* font, const TEXTMETRICW*, DWORD, LPARAM combo) {
    const HWND list = reinterpret_cast<HWND>(combo);
    // With an @ the face is the one for vertical text, with rotated letters.
    if ((font->lfPitchAndFamily & 3) != FIXED_PITCH || font->lfFaceName[0] == L'@') return 1;
    const LPARAM face = reinterpret_cast<LPARAM>(font->lfFaceName);
    const WPARAM fromStart = static_cast<WPARAM>(-1);
    if (SendMessageW(list, CB_FINDSTRINGEXACT, fromStart, face) == CB_ERR) SendMessageW(list, CB_ADDSTRING, 0, face);
    return 1;
}

} // namespace

void GeneralPage::Fill() {
    FillChecks(window, copy, GeneralChecks);
    FillNumbers(window, copy, GeneralNumbers);
    for (const TextSetting& text : GeneralTexts) FillText(window, text.control, copy.*text.cell);
}

void GeneralPage::Apply() {
    ApplyChecks(window, copy, GeneralChecks);
    ApplyNumbers(window, copy, GeneralNumbers);
    for (const TextSetting& text : GeneralTexts) ApplyText(window, text.control, copy.*text.cell);
}

void FontsPage::Fill() {
    LOGFONTW wanted = {};
    wanted.lfCharSet = ANSI_CHARSET;
    const WindowDc screen(nullptr);
    EnumFontFamiliesExW(screen.Get(), &wanted, AddFace, reinterpret_cast<LPARAM>(GetDlgItem(window, IDC_FONT_NAME)), 0);
    FillText(window, IDC_FONT_NAME, copy.FontName);
    CheckDlgButton(window, IDC_FONT_BOLD, copy.FontBold ? BST_CHECKED : BST_UNCHECKED);
    FillNumbers(window, copy, FontNumbers);
}

void FontsPage::Apply() {
    ApplyText(window, IDC_FONT_NAME, copy.FontName);
    copy.FontBold = IsDlgButtonChecked(window, IDC_FONT_BOLD) == BST_CHECKED;
    ApplyNumbers(window, copy, FontNumbers);
}

struct ColoursPage::Entry {
    const wchar_t* name;
    Cell foreground; // null when the entry has none
    Cell background;
};

#define CELL(name) &SettingsRecord::name
#define PAIR(name) CELL(name##Fg), CELL(name##Bg)

const ColoursPage::Entry ColoursPage::Entries[] = {
    {L"Text", PAIR(Text)},
    {L"Selection", PAIR(Sel)},
    {L"Line Number", PAIR(LineNum)},
    {L"Margin", nullptr, CELL(MarginColor)},
    {L"Guide", nullptr, CELL(GuideColor)},
    {L"Space", CELL(SpaceColor), nullptr},
    {L"Bookmark", nullptr, CELL(BookmarkColor)},
    {L"Comment", PAIR(Comment)},
    {L"Long Comment", PAIR(LongComment)},
    {L"String", PAIR(String)},
    {L"Keyword", PAIR(Keyword)},
    {L"Number", PAIR(Number)},
    {L"BraceMatch", PAIR(BraceMatch)},
    {L"Modifed Binary", PAIR(Bin)}, // docs/oddities.md
    {L"Html Tag", PAIR(HtmlTag)},
    {L"Html Attribute", PAIR(HtmlAttr)},
    {L"Html Attribute Value", PAIR(HtmlAttrValue)},
    {L"Html Quoted Value", PAIR(HtmlAttrQuotedValue)},
    {L"Html Comment", PAIR(HtmlComment)},
    {L"Html Punctuation", PAIR(HtmlPunct)},
};

#undef PAIR
#undef CELL

void ColoursPage::Fill() {
    for (const Entry& entry : Entries)
        SendDlgItemMessageW(window, IDC_COLOR_LIST, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.name));
    SendDlgItemMessageW(window, IDC_COLOR_LIST, LB_SETCURSEL, 0, 0);
    ShowSelected();
}

bool ColoursPage::Message(UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_DRAWITEM && wparam == IDC_COLOR_PREVIEW) {
        DrawPreview(*reinterpret_cast<const DRAWITEMSTRUCT*>(lparam));
        return true;
    }
    return OptionsPage::Message(message, wparam, lparam);
}

void ColoursPage::Command(uint32_t identifier) {
    if (identifier == IDC_COLOR_LIST) ShowSelected();
    if (identifier == IDC_COLOR_FOREGROUND) Choose(Selected().foreground);
    if (identifier == IDC_COLOR_BACKGROUND) Choose(Selected().background);
}

const ColoursPage::Entry& ColoursPage::Selected() const {
    const LRESULT index = SendDlgItemMessageW(window, IDC_COLOR_LIST, LB_GETCURSEL, 0, 0);
    return Entries[index > 0 ? index : 0];
}

void ColoursPage::ShowSelected() {
    EnableWindow(GetDlgItem(window, IDC_COLOR_FOREGROUND), Selected().foreground != nullptr);
    EnableWindow(GetDlgItem(window, IDC_COLOR_BACKGROUND), Selected().background != nullptr);
    InvalidateRect(GetDlgItem(window, IDC_COLOR_PREVIEW), nullptr, TRUE);
}

void ColoursPage::Choose(Cell cell) {
    if (!cell) return;
    CHOOSECOLORW request = {};
    request.lStructSize = sizeof(request);
    request.hwndOwner = owner;
    request.rgbResult = customColours[0] = copy.*cell;
    request.lpCustColors = customColours;
    request.Flags = CC_RGBINIT | CC_FULLOPEN;
    if (ChooseColorW(&request)) copy.*cell = request.rgbResult & 0xFFFFFF;
    ShowSelected();
}

void ColoursPage::DrawPreview(const DRAWITEMSTRUCT& item) const {
    const Entry& entry = Selected();
    RECT area = item.rcItem;
    SetBkColor(item.hDC, entry.background ? copy.*entry.background : GetSysColor(COLOR_BTNFACE));
    ExtTextOutW(item.hDC, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
    SetTextColor(item.hDC, entry.foreground ? copy.*entry.foreground : 0);
    DrawTextW(item.hDC, entry.name, -1, &area, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
}
