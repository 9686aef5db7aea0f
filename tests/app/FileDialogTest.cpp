#include "app/FileDialogTest.h"

bool FileDialogTest::WaitForDialogTitled(const std::wstring& title) const {
    return window::WaitFor([&] { return editor.Dialog() && window::TextOf(editor.Dialog()) == title; });
}

bool FileDialogTest::EndDialog(const std::wstring& button) const {
    const HWND dialog = editor.WaitForDialog();
    return dialog && window::PressButton(dialog, button) && window::WaitFor([&] { return !IsWindow(dialog); });
}

bool FileDialogTest::FillFileName(const std::wstring& name) {
    const HWND dialog = editor.WaitForDialog();
    // The name's field is a plain edit control, or the one of a combo box.
    HWND field = nullptr;
    const bool ready = window::WaitFor([&] {
        const HWND named = Control(0x480) ? Control(0x480) : Control(0x47C);
        const std::vector<HWND> inner = named ? window::Children(named, L"Edit") : std::vector<HWND>();
        field = inner.empty() ? named : inner[0];
        return field && IsWindowVisible(field) && editor.Focus() && IsChild(dialog, editor.Focus());
    });
    if (!ready) return false;
    SendMessageTimeoutW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()), SMTO_ABORTIFHUNG, 15000, nullptr);
    return window::WaitFor([&] { return window::TextOf(field) == name; });
}

bool FileDialogTest::TypeFileName(const std::wstring& name) {
    const HWND dialog = editor.WaitForDialog();
    return FillFileName(name) && editor.Keys(L"Enter") && window::WaitFor([&] { return !IsWindow(dialog); });
}

HWND FileDialogTest::Control(int id) const { return window::Control(editor.Dialog(), id); }

FrameTest::Names FileDialogTest::ListItems(int id) const {
    Names items;
    const LRESULT count = SendMessageW(Control(id), CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; i++) {
        wchar_t text[100] = {};
        SendMessageW(Control(id), CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        items.push_back(text);
    }
    return items;
}

int FileDialogTest::Selected(int id) const { return static_cast<int>(SendMessageW(Control(id), CB_GETCURSEL, 0, 0)); }

bool FileDialogTest::Choose(int id, const std::wstring& item) const {
    const Names items = ListItems(id);
    for (size_t i = 0; i < items.size(); i++)
        if (items[i] == item) return SendMessageW(Control(id), CB_SETCURSEL, i, 0) == static_cast<LRESULT>(i);
    return false;
}
