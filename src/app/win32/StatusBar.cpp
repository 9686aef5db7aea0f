#include "app/win32/StatusBar.h"

namespace {

constexpr int PartCount = 5;
// Which part shows each field: the line, column, mode and line-ending fields are in another order
// than their numbers.
constexpr WPARAM PartOfField[PartCount] = {0, 2, 3, 4, 1};
constexpr int GripWidth = 20;
constexpr int PartWidths[PartCount] = {0, 50, 80, 80, 30}; // part 0 takes the rest

} // namespace

bool StatusBar::Create(HWND parent, HINSTANCE instance) {
    window = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | SBARS_SIZEGRIP, 0, 0,
                             0, 0, parent, nullptr, instance, nullptr);
    if (window) ApplyFont();
    return window != nullptr;
}

void StatusBar::ApplyFont() { font.Apply(window, &NONCLIENTMETRICSW::lfStatusFont); }

void StatusBar::Layout(int clientWidth) {
    const int dpi = static_cast<int>(GetDpiForWindow(window));
    int edges[PartCount];
    int edge = clientWidth - MulDiv(GripWidth, dpi, 96);
    for (int part = PartCount - 1; part >= 0; --part) {
        edges[part] = edge > 0 ? edge : 0;
        edge -= MulDiv(PartWidths[part], dpi, 96);
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
