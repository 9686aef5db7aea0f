#include "view/DialogLayout.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::wstring Text(HWND control) {
    wchar_t text[256] = {};
    GetWindowTextW(control, text, 256);
    return text;
}

bool IsOf(HWND control, const wchar_t* className) {
    wchar_t name[32] = {};
    GetClassNameW(control, name, 32);
    return lstrcmpiW(name, className) == 0;
}

std::vector<HWND> Children(HWND window) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE) children.push_back(child);
    return children;
}

LONG ButtonType(HWND control) { return GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK; }

bool IsFrame(HWND control) { return IsOf(control, L"Button") && ButtonType(control) == BS_GROUPBOX; }

RECT Place(HWND control, HWND window) {
    RECT place = {};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

// What the control's text takes, with what is beside it.
SIZE Needed(HWND control) {
    const HDC dc = GetDC(control);
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(dc, font);
    RECT area = {};
    DrawTextW(dc, Text(control).c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(dc, before);
    ReleaseDC(control, dc);
    const UINT dpi = GetDpiForWindow(control);
    const bool hasBox = IsOf(control, L"Button") && ButtonType(control) != BS_GROUPBOX;
    // The box of a check box and its gap; the border of a button on both sides.
    const LONG beside = hasBox ? GetSystemMetricsForDpi(SM_CXMENUCHECK, dpi) + MulDiv(4, static_cast<int>(dpi), 96) : 0;
    return {area.right + beside, area.bottom};
}

void ExpectText(HWND control) {
    if (Text(control).empty() || (!IsOf(control, L"Static") && !IsOf(control, L"Button"))) return;
    RECT area = {};
    GetClientRect(control, &area);
    const SIZE needed = Needed(control);
    // Another font, even of the same size, may run wider.
    const bool isFrame = IsFrame(control);
    EXPECT_LE(needed.cx + (isFrame ? 0 : needed.cx / 10), area.right) << testing::PrintToString(Text(control));
    EXPECT_LE(needed.cy, area.bottom) << testing::PrintToString(Text(control));
}

void CollectMnemonics(HWND window, std::wstring& letters) {
    for (const HWND child : Children(window)) {
        const std::wstring text = Text(child);
        const size_t mark = text.find(L'&');
        const bool isEdit = IsOf(child, L"Edit") || IsOf(child, L"ComboBox");
        if (!isEdit && mark != std::wstring::npos)
            letters += static_cast<wchar_t>(std::tolower(static_cast<int>(text[mark + 1])));
        if (GetWindowLongW(child, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) CollectMnemonics(child, letters);
    }
}

int scaledDpi = 96;
WORD scaledPoints = dialog::FontPoints;

std::vector<WORD> Template(const wchar_t* name) {
    const HRSRC found = FindResourceW(nullptr, name, RT_DIALOG);
    if (!found) return {};
    const auto* begin = static_cast<const WORD*>(LockResource(LoadResource(nullptr, found)));
    return {begin, begin + SizeofResource(nullptr, found) / sizeof(WORD)};
}

// Where the font's size is. An extended template has 13 words, then menu, class and caption, each a number after
// 0xFFFF or a text with its NUL, then the size.
size_t PlaceOfSize(const std::vector<WORD>& words) {
    size_t at = 13;
    for (int part = 0; part < 3; ++part) {
        if (words[at] == 0xFFFF)
            ++at;
        else
            while (words[at]) ++at;
        ++at;
    }
    return at;
}

// The resource with another size of its font.
std::vector<WORD> ScaledTemplate(const wchar_t* name) {
    std::vector<WORD> words = Template(name);
    if (!words.empty()) words[PlaceOfSize(words)] = scaledPoints;
    return words;
}

INT_PTR WINAPI RunScaled(HINSTANCE instance, const wchar_t* name, HWND owner, DLGPROC procedure, LPARAM parameter) {
    const std::vector<WORD> words = ScaledTemplate(name);
    return DialogBoxIndirectParamW(instance, reinterpret_cast<const DLGTEMPLATE*>(words.data()), owner, procedure,
                                   parameter);
}

HWND WINAPI CreateScaled(HINSTANCE instance, const wchar_t* name, HWND owner, DLGPROC procedure, LPARAM parameter) {
    const std::vector<WORD> words = ScaledTemplate(name);
    return CreateDialogIndirectParamW(instance, reinterpret_cast<const DLGTEMPLATE*>(words.data()), owner, procedure,
                                      parameter);
}

UINT WINAPI ScaledDpi(HWND) { return static_cast<UINT>(scaledDpi); }

} // namespace

dialog::Scaled::Scaled(int dpi, int points)
    : modal("DialogBoxParamW", reinterpret_cast<void*>(RunScaled)),
      modeless("CreateDialogParamW", reinterpret_cast<void*>(CreateScaled)),
      density("GetDpiForWindow", reinterpret_cast<void*>(ScaledDpi)) {
    scaledDpi = dpi;
    // A point has more pixels where the real screen is finer.
    scaledPoints = static_cast<WORD>(MulDiv(points, 96, static_cast<int>(GetDpiForSystem())));
}

void dialog::ExpectCentred(HWND window, HWND parent) {
    RECT outer = {};
    RECT inner = {};
    RECT place = {};
    GetClientRect(parent, &outer);
    GetClientRect(window, &inner);
    GetWindowRect(window, &place);
    POINT corner = {place.left, place.top};
    ScreenToClient(parent, &corner);
    EXPECT_EQ(corner.x, (outer.right - inner.right) / 2);
    EXPECT_EQ(corner.y, (outer.bottom - inner.bottom) / 2);
}

void dialog::ExpectCleanLayout(HWND window) {
    const std::vector<HWND> children = Children(window);
    RECT inside = {};
    GetClientRect(window, &inside);
    for (size_t i = 0; i < children.size(); ++i) {
        const RECT place = Place(children[i], window);
        const int number = GetDlgCtrlID(children[i]);
        EXPECT_TRUE(place.left >= 0 && place.top >= 0 && place.right <= inside.right && place.bottom <= inside.bottom)
            << "control " << number << " reaches out of the dialog";
        ExpectText(children[i]);
        for (size_t other = 0; other < i; ++other) {
            const RECT otherPlace = Place(children[other], window);
            RECT common = {};
            if (IsFrame(children[i]) || IsFrame(children[other])) continue;
            EXPECT_FALSE(IntersectRect(&common, &place, &otherPlace))
                << "controls " << number << " and " << GetDlgCtrlID(children[other]);
        }
        if (GetWindowLongW(children[i], GWL_EXSTYLE) & WS_EX_CONTROLPARENT) ExpectCleanLayout(children[i]);
    }
}

std::pair<std::wstring, int> dialog::FontOf(WORD resource) {
    const std::vector<WORD> words = Template(MAKEINTRESOURCEW(resource));
    if (words.empty()) return {};
    const size_t size = PlaceOfSize(words);
    // Weight, slant and character set are between them.
    return {reinterpret_cast<const wchar_t*>(&words[size + 3]), words[size]};
}

std::wstring dialog::NameOf(HWND control) {
    if (IsOf(control, L"Button") || IsOf(control, L"Static")) return ::Text(control);
    const HWND before = GetWindow(control, GW_HWNDPREV);
    return before && IsOf(before, L"Static") ? ::Text(before) : std::wstring();
}

std::vector<int> dialog::TabOrder(HWND window) {
    std::vector<int> numbers;
    const HWND first = GetNextDlgTabItem(window, nullptr, FALSE);
    HWND at = first;
    do {
        numbers.push_back(GetDlgCtrlID(at));
        at = GetNextDlgTabItem(window, at, FALSE);
    } while (at && at != first && numbers.size() < 100);
    return numbers;
}

std::wstring dialog::Mnemonics(HWND window) {
    std::wstring letters;
    CollectMnemonics(window, letters);
    std::sort(letters.begin(), letters.end());
    return letters;
}
