#include "app/EditTest.h"

std::wstring EditTest::WithReturns(const std::wstring& text) {
    std::wstring out;
    for (const wchar_t unit : text) out += unit == L'\n' ? L"\r\n" : std::wstring(1, unit);
    return out;
}

RECT EditTest::Caret() const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(editor.Main(), nullptr), &info);
    return info.rcCaret;
}

void EditTest::Fill(const std::wstring& text) {
    // Without the focus a view leaves the status bar as it is, and a key goes nowhere.
    ASSERT_TRUE(editor.Keys(L""));
    ASSERT_TRUE(window::WaitFor([this] { return editor.Panes().size() == 1 && editor.Focus() == editor.Panes()[0]; }));
    ASSERT_TRUE(window::WaitFor([this] { return editor.Title().ends_with(L" - Orvane"); }));
    const std::wstring before = editor.Title();
    editor.Command(IDM_NEW);
    ASSERT_TRUE(window::WaitFor([&] { return editor.Title() != before; }));
    const std::wstring fresh = editor.Title();
    ASSERT_TRUE(clipboard::SetText(WithReturns(text)));
    editor.Command(IDM_PASTE);
    // The clipboard is read by the time the title shows a change.
    ASSERT_TRUE(text.empty() || window::WaitFor([&] { return editor.Title() != fresh; }));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home"));
    ASSERT_TRUE(WaitForCaret(1, 1));
}

void EditTest::ExpectText(const std::wstring& text) {
    ASSERT_TRUE(clipboard::Clear());
    ASSERT_TRUE(editor.Keys(L"Ctrl+A"));
    ExpectSelection(text);
}

void EditTest::ExpectSelection(const std::wstring& text) {
    ASSERT_TRUE(clipboard::Clear());
    ASSERT_TRUE(editor.Keys(L"Ctrl+C"));
    const std::wstring expected = WithReturns(text);
    window::WaitFor([&] { return clipboard::Text() == expected; });
    EXPECT_EQ(clipboard::Text(), expected);
    // Without a selection the whole line would have been copied.
    EXPECT_FALSE(clipboard::HasFormat(L"orvane_singleline"));
}
