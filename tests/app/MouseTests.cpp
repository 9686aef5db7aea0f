#include "app/EditTest.h"
#include "app/Input.h"

#include <algorithm>

// The mouse in the real program.

namespace {

class MouseTest : public EditTest {
protected:
    // Shows a text and learns from the caret where its characters are.
    void Show(const std::wstring& text) {
        Fill(text);
        ASSERT_TRUE(WaitForCaret(1, 1));
        ASSERT_TRUE(window::WaitFor([this] { return editor.Focus() && Caret().bottom > 0; }));
        const RECT first = Caret();
        ASSERT_TRUE(editor.Keys(L"Right"));
        ASSERT_TRUE(window::WaitFor([&] { return Caret().left > first.left; }));
        width = Caret().left - first.left;
        origin = {first.left, first.top};
        height = first.bottom - first.top;
        ASSERT_TRUE(editor.Keys(L"Left"));
        ASSERT_TRUE(WaitForCaret(1, 1));
    }
    POINT OnScreen(LONG x, LONG y) const {
        POINT place = {x, y};
        ClientToScreen(editor.Panes()[0], &place);
        return place;
    }
    // Just right of the left edge of a character, both counted from 1.
    POINT At(int line, int column) const {
        return OnScreen(origin.x + (column - 1) * width + 1, origin.y + (line - 1) * height + height / 2);
    }
    int Line() const {
        const std::wstring field = editor.Status(2).text;
        return field.starts_with(L"\tLn ") ? std::stoi(field.substr(4)) : 0;
    }
    std::vector<HWND> Menus() const {
        std::vector<HWND> menus = window::TopLevel(editor.Process());
        std::erase_if(menus, [](HWND found) { return window::ClassOf(found) != L"#32768"; });
        return menus;
    }

    POINT origin = {};
    LONG width = 0;
    LONG height = 0;
};

TEST_F(MouseTest, AClickPutsTheCaret) {
    ASSERT_TRUE(Start());
    Show(L"abcdef\nabcdef\nabc");
    input::Click(At(2, 4));
    EXPECT_TRUE(WaitForCaret(2, 4));
    input::Click(At(3, 9));
    EXPECT_TRUE(WaitForCaret(3, 4));
    input::Click(At(7, 1));
    EXPECT_TRUE(WaitForCaret(3, 1));
}

TEST_F(MouseTest, AClickWithShiftExtends) {
    ASSERT_TRUE(Start());
    Show(L"abcdef\nabcdef");
    input::Click(At(1, 3));
    ASSERT_TRUE(WaitForCaret(1, 3));
    ASSERT_TRUE(editor.Keys(L"+Shift"));
    input::Click(At(2, 3));
    EXPECT_TRUE(WaitForCaret(2, 3));
    ASSERT_TRUE(editor.Keys(L"-Shift"));
    ExpectSelection(L"cdef\nab");
}

TEST_F(MouseTest, DraggingSelectsUntilTheButtonIsReleased) {
    ASSERT_TRUE(Start());
    Show(L"abcdef\nabcdef\nabcdef");
    input::HoldLeftButton(At(1, 3));
    EXPECT_TRUE(WaitForCaret(1, 3));
    input::MoveMouse(At(3, 5));
    EXPECT_TRUE(WaitForCaret(3, 5));
    input::MoveMouse(At(2, 2));
    EXPECT_TRUE(WaitForCaret(2, 2));
    input::ReleaseLeftButton(At(2, 2));
    input::MoveMouse(At(3, 5));
    ExpectSelection(L"cdef\na");
    EXPECT_TRUE(WaitForCaret(2, 2));
}

TEST_F(MouseTest, AMouseHeldBelowTheWindowScrollsOn) {
    ASSERT_TRUE(Start());
    std::wstring text;
    for (int line = 0; line < 300; line++) text += L"line\n";
    Show(text);
    RECT view = {};
    GetClientRect(editor.Panes()[0], &view);
    const int rows = (view.bottom - origin.y) / height;
    input::HoldLeftButton(At(rows - 1, 1));
    ASSERT_TRUE(WaitForCaret(rows - 1, 1));
    // The one move comes to the line below the window; everything after it is the timer's.
    const POINT below = OnScreen(origin.x + 1, view.bottom + 1);
    input::MoveMouse(below);
    EXPECT_TRUE(window::WaitFor([&] { return Line() > rows + 5; }));
    input::ReleaseLeftButton(below);
    // The copy comes after the release: from then on nothing moves.
    ASSERT_TRUE(clipboard::Clear());
    ASSERT_TRUE(editor.Keys(L"Ctrl+C"));
    ASSERT_TRUE(window::WaitFor([] { return !clipboard::Text().empty(); }));
    const std::wstring copied = clipboard::Text();
    EXPECT_EQ(std::count(copied.begin(), copied.end(), L'\n'), Line() - (rows - 1));
}

TEST_F(MouseTest, ADoubleClickSelectsTheWord) {
    ASSERT_TRUE(Start());
    Show(L"one two_3 four");
    input::Click(At(1, 7), 2);
    EXPECT_TRUE(WaitForCaret(1, 10));
    ExpectSelection(L"two_3");
}

TEST_F(MouseTest, TheRightButtonOpensAMenuThatActsOnTheView) {
    ASSERT_TRUE(Start());
    Show(L"abc\ndef");
    input::RightClick(At(2, 2));
    ASSERT_TRUE(window::WaitFor([this] { return Menus().size() == 1; }));
    RECT menu = {};
    GetWindowRect(Menus()[0], &menu);
    const POINT click = At(2, 2);
    EXPECT_LE(std::abs(menu.left - click.x), 8);
    EXPECT_LE(std::abs(menu.top - click.y), 8);
    ASSERT_TRUE(editor.Keys(L"A"));
    EXPECT_TRUE(window::WaitFor([this] { return Menus().empty(); }));
    EXPECT_TRUE(WaitForCaret(2, 4));
    ExpectSelection(L"abc\ndef");
    input::RightClick(At(1, 2));
    ASSERT_TRUE(window::WaitFor([this] { return Menus().size() == 1; }));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(window::WaitFor([this] { return Menus().empty(); }));
    // Neither the click nor the menu's end moved the caret.
    ExpectSelection(L"abc\ndef");
}

} // namespace
