#include "view/DialogDriver.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <vector>

namespace {

constexpr UINT PollPeriod = 10; // milliseconds

std::map<UINT_PTR, std::function<void(HWND)>> waiting; // by timer
std::vector<HWND> driven;

BOOL CALLBACK CollectNew(HWND window, LPARAM found) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    const bool known = std::find(driven.begin(), driven.end(), window) != driven.end();
    if (known || std::wstring(name) != L"#32770" || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

void CALLBACK OnTick(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND window = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), CollectNew, reinterpret_cast<LPARAM>(&window));
    if (!window || waiting.find(timer) == waiting.end()) return;
    KillTimer(nullptr, timer);
    const std::function<void(HWND)> drive = std::move(waiting[timer]);
    waiting.erase(timer);
    driven.push_back(window);
    drive(window);
    driven.pop_back();
}

std::vector<std::wstring> Items(HWND list, UINT count, UINT length, UINT text) {
    std::vector<std::wstring> items;
    const LRESULT number = SendMessageW(list, count, 0, 0);
    for (LRESULT i = 0; i < number; ++i) {
        const auto index = static_cast<WPARAM>(i);
        std::wstring item(static_cast<size_t>(SendMessageW(list, length, index, 0)) + 1, L'\0');
        SendMessageW(list, text, index, reinterpret_cast<LPARAM>(item.data()));
        item.pop_back();
        items.push_back(item);
    }
    return items;
}

} // namespace

void dialog::WhenShown(std::function<void(HWND)> drive) {
    const UINT_PTR timer = SetTimer(nullptr, 0, PollPeriod, OnTick);
    ASSERT_NE(timer, 0u);
    waiting[timer] = std::move(drive);
}

std::wstring dialog::TextOf(HWND window, int control) {
    const HWND item = GetDlgItem(window, control);
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(item)) + 1, L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(item, text.data(), static_cast<int>(text.size()))));
    return text;
}

void dialog::SetText(HWND window, int control, const std::wstring& text) {
    SetDlgItemTextW(window, control, text.c_str());
}

void dialog::Click(HWND window, int control) {
    ASSERT_NE(GetDlgItem(window, control), nullptr) << control;
    SendDlgItemMessageW(window, control, BM_CLICK, 0, 0);
}

bool dialog::IsChecked(HWND window, int control) { return IsDlgButtonChecked(window, control) == BST_CHECKED; }

bool dialog::IsEnabled(HWND window, int control) { return IsWindowEnabled(GetDlgItem(window, control)); }

std::vector<std::wstring> dialog::ListItems(HWND window, int control) {
    const HWND list = GetDlgItem(window, control);
    wchar_t name[16] = {};
    GetClassNameW(list, name, 16);
    if (std::wstring(name) == L"ComboBox") return Items(list, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
    return Items(list, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
}

void dialog::ChooseItem(HWND window, int control, int index) {
    SendDlgItemMessageW(window, control, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(control, LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(GetDlgItem(window, control)));
}

int dialog::SelectedItem(HWND window, int control) {
    return static_cast<int>(SendDlgItemMessageW(window, control, LB_GETCURSEL, 0, 0));
}
