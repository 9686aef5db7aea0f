#include "app/EditTest.h"

namespace {

std::wstring WithReturns(const std::wstring& text) {
    std::wstring out;
    for (const wchar_t unit : text) out += unit == L'\n' ? L"\r\n" : std::wstring(1, unit);
    return out;
}

} // namespace

RECT EditTest::Caret() const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(editor.Main(), nullptr), &info);
    return info.rcCaret;
}

void EditTest::Fill(const std::wstring& text) {
    // Commands, not keys: those are what is tested.
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
