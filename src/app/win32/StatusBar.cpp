#include "app/win32/StatusBar.h"

#include <algorithm>
#include <climits>

namespace {

constexpr int PartCount = 5;
// Which part shows each field: the line, column, mode and line-ending fields are in another order
// than their numbers.
constexpr WPARAM PartOfField[PartCount] = {0, 2, 3, 4, 1};
// In pixels at USER_DEFAULT_SCREEN_DPI.
constexpr int GripWidth = 20;
constexpr int PartWidths[PartCount] = {0, 50, 80, 80, 30}; // part 0 takes the rest

// What screen readers call the bar is its window's text. The control would give them that of its first part, which is
// most often none; the parts are read with messages of their own.
constexpr wchar_t Name[] = L"Status";

LRESULT CALLBACK NameProc(HWND bar, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_GETTEXTLENGTH) return lstrlenW(Name);
    if (message != WM_GETTEXT) {
        const auto control = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(bar, GWLP_USERDATA));
        return CallWindowProcW(control, bar, message, wparam, lparam);
    }
    auto* const out = reinterpret_cast<wchar_t*>(lparam);
    if (wparam == 0 || !lstrcpynW(out, Name, static_cast<int>(std::min<WPARAM>(wparam, INT_MAX)))) return 0;
    return lstrlenW(out);
}

// Puts NameProc before the control's own procedure, which the bar keeps in its user data. SetWindowSubclass would look
// up a property of the window at each of the bar's many messages.
void NameBar(HWND bar) {
    SetWindowLongPtrW(bar, GWLP_USERDATA, GetWindowLongPtrW(bar, GWLP_WNDPROC));
    SetWindowLongPtrW(bar, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(NameProc));
}

} // namespace

bool StatusBar::Create(HWND parent, HINSTANCE instance) {
    window = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | SBARS_SIZEGRIP, 0, 0,
                             0, 0, parent, nullptr, instance, nullptr);
    if (!window) return false;
    ApplyFont();
    NameBar(window);
    return true;
}

void StatusBar::ApplyFont() { font.Apply(window, &NONCLIENTMETRICSW::lfStatusFont); }

void StatusBar::Layout(int clientWidth) {
    const int dpi = static_cast<int>(GetDpiForWindow(window));
    int edges[PartCount];
    int edge = clientWidth - MulDiv(GripWidth, dpi, USER_DEFAULT_SCREEN_DPI);
    for (int part = PartCount - 1; part >= 0; --part) {
        edges[part] = edge > 0 ? edge : 0;
        edge -= MulDiv(PartWidths[part], dpi, USER_DEFAULT_SCREEN_DPI);
    }
    SendMessageW(window, WM_SIZE, 0, 0);
    SendMessageW(window, SB_SETPARTS, PartCount, reinterpret_cast<LPARAM>(edges));
}

int StatusBar::Height() const {
    RECT area = {};
    GetWindowRect(window, &area);
    return area.bottom - area.top;
}

void StatusBar::SetField(StatusField field, const Char* text) {
    const bool isMessage = field == StatusField::Message;
    const WPARAM style = isMessage ? static_cast<WPARAM>(SBT_NOBORDERS) : 0;
    SendMessageW(window, SB_SETTEXTW, PartOfField[static_cast<uint32_t>(field)] | style,
                 reinterpret_cast<LPARAM>(text ? text : u""));
    // A message may come from the middle of a long search, when no WM_PAINT is fetched.
    if (isMessage && text) UpdateWindow(window);
}
