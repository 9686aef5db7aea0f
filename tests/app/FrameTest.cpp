#include "app/FrameTest.h"

#include <algorithm>
#include <cstring>

bool FrameTest::OpenFiles(const Names& names, const std::wstring& options) {
    std::wstring arguments = options;
    for (const std::wstring& name : names) {
        if (!files::Write(Path(name), files::Utf8(name))) return false;
        arguments += L" \"" + name + L"\"";
    }
    return Start(arguments) && WaitForFile(names.back());
}

FrameTest::Place FrameTest::PlaceOf(HWND child) const {
    RECT rect = {};
    GetWindowRect(child, &rect);
    MapWindowPoints(nullptr, editor.Main(), reinterpret_cast<POINT*>(&rect), 2);
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

std::vector<HWND> FrameTest::Panes() const {
    std::vector<HWND> panes = editor.Panes();
    std::sort(panes.begin(), panes.end(), [](HWND a, HWND b) { return GetDlgCtrlID(a) < GetDlgCtrlID(b); });
    return panes;
}

std::vector<FrameTest::Place> FrameTest::PanePlaces() const {
    std::vector<Place> places;
    for (const HWND pane : Panes()) places.push_back(PlaceOf(pane));
    return places;
}

bool FrameTest::WaitForPanes(const std::vector<Place>& places) const {
    return window::WaitFor([&] { return PanePlaces() == places; }, 5000);
}

bool FrameTest::WaitForPaneCount(size_t count) const {
    return window::WaitFor([&] { return Panes().size() == count; }, 5000);
}

SIZE FrameTest::PaneArea() const {
    RECT client = {};
    GetClientRect(editor.Main(), &client);
    int height = client.bottom;
    for (const HWND bar : window::Children(editor.Main(), STATUSCLASSNAMEW)) height -= PlaceOf(bar).height;
    if (editor.CommandWindow()) height -= PlaceOf(editor.CommandWindow()).height;
    return {client.right, std::max(height, 0)};
}

FrameTest::Place FrameTest::Expected(unsigned left, unsigned top, unsigned width, unsigned height) const {
    const SIZE area = PaneArea();
    const auto start = [](unsigned fraction, LONG pixels) {
        return static_cast<int>(fraction * static_cast<unsigned>(pixels) >> 16) + (fraction != 0);
    };
    const auto size = [](unsigned fraction, LONG pixels) {
        return static_cast<int>(fraction * static_cast<unsigned>(pixels) >> 16) - (fraction != 65536);
    };
    return {start(left, area.cx), start(top, area.cy), size(width, area.cx), size(height, area.cy)};
}

bool FrameTest::ReachWith(const std::wstring& keys, HWND target) {
    return window::WaitFor(
        [&] { return editor.Keys(keys) && window::WaitFor([&] { return editor.Focus() == target; }, 1000); });
}

HWND FrameTest::OpenDialog(UINT command) const {
    editor.Command(command);
    const HWND dialog = editor.WaitForDialog();
    return dialog && window::WaitFor([&] { return IsChild(dialog, editor.Focus()); }) ? dialog : nullptr;
}

bool FrameTest::WaitUntilCentred(HWND dialog) const {
    return window::WaitFor([&] {
        RECT outer = {};
        RECT inner = {};
        RECT place = {};
        GetClientRect(editor.Main(), &outer);
        GetClientRect(dialog, &inner);
        GetWindowRect(dialog, &place);
        POINT corner = {(outer.right - inner.right) / 2, (outer.bottom - inner.bottom) / 2};
        ClientToScreen(editor.Main(), &corner);
        return place.left == corner.x && place.top == corner.y;
    });
}

bool FrameTest::SetClientSize(int width, int height) {
    // Again when the menu bar has got more or fewer lines.
    return window::WaitFor([&] {
        RECT client = {};
        RECT outer = {};
        GetClientRect(editor.Main(), &client);
        if (client.right == width && client.bottom == height) return true;
        GetWindowRect(editor.Main(), &outer);
        SetWindowPos(editor.Main(), nullptr, 0, 0, outer.right - outer.left - client.right + width,
                     outer.bottom - outer.top - client.bottom + height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        return false;
    });
}

RemoteProcess& FrameTest::Remote() {
    if (!remote) remote = std::make_unique<RemoteProcess>(editor.Process());
    return *remote;
}

LRESULT FrameTest::Send(UINT message, WPARAM wparam, LPARAM lparam) const {
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(editor.Main(), message, wparam, lparam, SMTO_ABORTIFHUNG, 15000, &answer);
    return static_cast<LRESULT>(answer);
}

uint64_t FrameTest::User(const char* function, std::initializer_list<uint64_t> arguments) {
    return Remote().Call(L"user32.dll", function, arguments);
}

uint64_t FrameTest::OpenPopup(MenuIndex popup) {
    const uint64_t bar = User("GetMenu", {reinterpret_cast<uint64_t>(editor.Main())});
    const uint64_t menu = User("GetSubMenu", {bar, static_cast<uint64_t>(popup)});
    Send(WM_INITMENUPOPUP, menu, popup);
    return menu;
}

std::vector<FrameTest::MenuItem> FrameTest::Menu(MenuIndex popup) {
    constexpr unsigned Length = 400;
    const uint64_t menu = OpenPopup(popup);
    const uint64_t text = Remote().Allocate(Length * sizeof(wchar_t));
    std::vector<MenuItem> items;
    const auto count = static_cast<unsigned>(User("GetMenuItemCount", {menu}));
    for (unsigned i = 0; i < count; i++) {
        wchar_t buffer[Length] = {};
        User("GetMenuStringW", {menu, i, text, Length, MF_BYPOSITION});
        Remote().Read(text, buffer, sizeof buffer);
        const auto number = static_cast<UINT>(User("GetMenuItemID", {menu, i}));
        const auto state = static_cast<UINT>(User("GetMenuState", {menu, i, MF_BYPOSITION}));
        items.push_back({number, number ? buffer : L"", (state & (MF_GRAYED | MF_DISABLED)) == 0});
    }
    return items;
}

FrameTest::Names FrameTest::WindowItems() {
    Names texts;
    for (const MenuItem& item : Menu(WindowMenu))
        if (item.number >= IDM_FIRST_DOCUMENT) {
            EXPECT_EQ(item.number, IDM_FIRST_DOCUMENT + texts.size());
            texts.push_back(item.text);
        }
    return texts;
}

bool FrameTest::IsEnabled(UINT command) {
    for (int popup = FileMenu; popup <= HelpMenu; popup++) {
        const uint64_t menu = OpenPopup(static_cast<MenuIndex>(popup));
        const auto state = static_cast<UINT>(User("GetMenuState", {menu, command, MF_BYCOMMAND}));
        if (state != ~0u) return (state & (MF_GRAYED | MF_DISABLED)) == 0;
    }
    ADD_FAILURE() << "no menu item " << command;
    return false;
}

void FrameTest::Drop(const Names& paths) {
    std::wstring list;
    for (const std::wstring& path : paths) list += path + L'\0';
    list += L'\0';
    DROPFILES header = {};
    header.pFiles = sizeof header;
    header.fWide = TRUE;
    std::vector<char> bytes(sizeof header + list.size() * sizeof(wchar_t));
    memcpy(bytes.data(), &header, sizeof header);
    memcpy(bytes.data() + sizeof header, list.data(), list.size() * sizeof(wchar_t));

    RemoteProcess& process = Remote();
    const uint64_t block = process.Call(L"kernel32.dll", "GlobalAlloc", {GMEM_MOVEABLE, bytes.size()});
    process.Write(process.Call(L"kernel32.dll", "GlobalLock", {block}), bytes.data(), bytes.size());
    process.Call(L"kernel32.dll", "GlobalUnlock", {block});
    process.Call(L"user32.dll", "PostMessageW", {reinterpret_cast<uint64_t>(editor.Main()), WM_DROPFILES, block, 0});
}

bool FrameTest::WaitForEndWithCodeZero() const {
    DWORD code = 1;
    return editor.WaitForEnd(code) && code == 0;
}

std::wstring FrameTest::ReopenQuestion(const std::wstring& name) const {
    return L"File " + name + L" has been modified by another program.\nWould you like to reopen it?";
}
