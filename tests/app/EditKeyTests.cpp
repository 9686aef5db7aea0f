#include "app/EditTest.h"

// Every editing key in the real program: the text, the caret and the clipboard after it.

namespace {

struct KeyCase {
    const wchar_t* text; // lines separated by \n; the caret starts in front of it
    const wchar_t* keys;
    int line; // of the caret afterwards, counted from 1 as the status bar does
    int column;
    const wchar_t* result; // null: the text is as it was
};

constexpr const wchar_t* Same = nullptr;

constexpr KeyCase MoveCases[] = {
    {L"ab", L"End Left", 1, 2, Same},
    {L"ab\ncd", L"Down Left", 1, 3, Same},
    {L"ab\ncd", L"End Right", 2, 1, Same},
    {L"ab", L"End Right", 1, 3, Same},
    {L"ab cd", L"End Ctrl+Left", 1, 4, Same},
    {L"ab\ncd", L"Down Ctrl+Left", 1, 3, Same},
    {L"ab cd", L"Ctrl+Right", 1, 3, Same},
    {L"abcd\na\nabcd", L"End Down Down", 3, 5, Same},
    {L"abcd\na\nabcd", L"End Down", 2, 2, Same},
    {L"a\nb", L"Down Up", 1, 1, Same},
    {L"a\nbc", L"Ctrl+End", 2, 3, Same},
    {L"a\nbc", L"Ctrl+End Ctrl+Home", 1, 1, Same},
    {L"a\nb\nc", L"PageDown", 3, 1, Same},
    {L"a\nb\nc", L"PageDown PageUp", 1, 1, Same},
    {L"a\nb\nc", L"Ctrl+PageDown", 3, 1, Same},
    {L"a\nb\nc", L"Ctrl+PageDown Ctrl+PageUp", 1, 1, Same},
    {L"    x", L"End Home", 1, 5, Same},
    {L"    x", L"End Home Home", 1, 1, Same},
    {L"a\nb\nc", L"Down Ctrl+F2 Down F2", 2, 1, Same},
    {L"a\nb\nc", L"Ctrl+F2 Down Shift+F2", 1, 1, Same},
    {L"a\nb\nc", L"Ctrl+F2 Down Ctrl+Shift+F2 Down F2", 3, 1, Same},
    {L"ab cd ab", L"Ctrl+F3", 1, 3, Same},
    {L"ab cd ab", L"Ctrl+F3 F3", 1, 9, Same},
    {L"ab cd ab", L"Ctrl+F3 F3 F3", 1, 3, Same},
    {L"ab cd ab", L"Ctrl+F3 Shift+F3", 1, 9, Same},
    {L"ab cd ab", L"Ctrl+Shift+F3", 1, 9, Same},
    {L"(a)b", L"Ctrl+]", 1, 3, Same},
    {L"(a)b", L"Ctrl+] Ctrl+]", 1, 1, Same},
};

// What Shift selects is seen by deleting it.
constexpr KeyCase SelectCases[] = {
    {L"abc", L"End Shift+Left Delete", 1, 3, L"ab"},
    {L"abc", L"Shift+Right Delete", 1, 1, L"bc"},
    {L"ab cd", L"End Ctrl+Shift+Left Delete", 1, 4, L"ab "},
    {L"ab cd", L"Ctrl+Shift+Right Delete", 1, 1, L" cd"},
    {L"a\nb", L"Down Shift+Up Delete", 1, 1, L"b"},
    {L"a\nb", L"Shift+Down Delete", 1, 1, L"b"},
    {L"a\nb", L"Ctrl+End Shift+PageUp Delete", 1, 2, L"a"},
    {L"a\nb", L"Shift+PageDown Delete", 1, 1, L"b"},
    {L"  ab", L"End Shift+Home Delete", 1, 3, L"  "},
    {L"ab\nc", L"Shift+End Delete", 1, 1, L"\nc"},
    {L"a\nbc", L"Down Right Ctrl+Shift+Home Delete", 1, 1, L"c"},
    {L"a\nb", L"Right Ctrl+Shift+End Delete", 1, 2, L"a"},
    {L"(a)b", L"Ctrl+Shift+] Delete", 1, 1, L")b"},
    {L"ab\nc", L"Ctrl+A X", 1, 2, L"x"},
    {L"ab cd", L"Shift+Right Shift+Escape Delete", 1, 1, L"b cd"},
};

constexpr KeyCase EditCases[] = {
    {L"abc", L"Shift+Right Shift+Right Delete", 1, 1, L"c"},
    {L"abc", L"Shift+End Escape Delete", 1, 4, Same},
    {L"abc", L"Delete", 1, 1, L"bc"},
    {L"a\nb", L"End Delete", 1, 2, L"ab"},
    {L"ab cd", L"Ctrl+Delete", 1, 1, L" cd"},
    {L"abc", L"End Backspace", 1, 3, L"ab"},
    {L"a\nb", L"Down Backspace", 1, 2, L"ab"},
    {L"      x", L"Home Backspace", 1, 5, L"    x"},
    {L"        x", L"Home Backspace", 1, 5, L"    x"},
    {L"ab cd", L"End Ctrl+Backspace", 1, 4, L"ab "},
    {L"abc", L"Shift+Right Shift+Delete", 1, 1, L"bc"},
    {L"ab", L"Shift+Right Ctrl+Insert End Shift+Insert", 1, 4, L"aba"},
    {L"abc", L"Shift+Right Ctrl+X", 1, 1, L"bc"},
    {L"abc", L"Shift+Right Ctrl+X End Ctrl+V", 1, 4, L"bca"},
    {L"ab\ncd", L"Right Ctrl+X", 1, 1, L"cd"},
    {L"ab\ncd", L"Right Ctrl+C Ctrl+V", 2, 2, L"ab\nab\ncd"},
    {L"ab cd", L"Ctrl+W Delete", 1, 1, L" cd"},
    {L"a", L"End B Ctrl+Z", 1, 2, Same},
    {L"a", L"End B Ctrl+Z Ctrl+Y", 1, 3, L"ab"},
    {L"ab", L"End Tab", 1, 5, L"ab  "},
    {L"a\nb\nc", L"Shift+Down Shift+Down Tab", 3, 1, L"    a\n    b\nc"},
    {L"    a\n  b\nc", L"Shift+Down Shift+Down Shift+Tab", 3, 1, L"a\nb\nc"},
    {L"    x", L"End Enter", 2, 5, L"    x\n    "},
    {L"abc", L"Shift+Right Z", 1, 2, L"zbc"},
};

class EditKeyTest : public EditTest {
protected:
    bool WaitForCaretRow(int row, LONG height) const {
        return window::WaitFor([&] { return Caret().top == row * height; });
    }
    void Run(const KeyCase& test) {
        SCOPED_TRACE(testing::Message() << "text " << testing::PrintToString(test.text) << ", keys " << test.keys);
        Fill(test.text);
        ASSERT_TRUE(editor.Keys(test.keys));
        EXPECT_TRUE(WaitForCaret(test.line, test.column));
        ExpectText(test.result ? test.result : test.text);
    }
};

TEST_F(EditKeyTest, MovingKeys) {
    ASSERT_TRUE(Start());
    for (const KeyCase& test : MoveCases) Run(test);
}

TEST_F(EditKeyTest, MovingKeysWithShift) {
    ASSERT_TRUE(Start());
    for (const KeyCase& test : SelectCases) Run(test);
}

TEST_F(EditKeyTest, ScrollingKeysMoveTheTextUnderTheCaret) {
    ASSERT_TRUE(Start());
    std::wstring text;
    for (int line = 0; line < 200; line++) text += L"x\n";
    Fill(text);
    ASSERT_TRUE(WaitForCaret(1, 1));
    const LONG height = Caret().bottom - Caret().top;
    ASSERT_TRUE(editor.Keys(L"Down Down Ctrl+Down"));
    EXPECT_TRUE(WaitForCaretRow(1, height));
    EXPECT_TRUE(WaitForCaret(3, 1));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Down Ctrl+Down"));
    EXPECT_TRUE(WaitForCaret(4, 1)); // it would have left the view
    EXPECT_TRUE(WaitForCaretRow(0, height));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Up Ctrl+Up"));
    EXPECT_TRUE(WaitForCaretRow(2, height));
    EXPECT_TRUE(WaitForCaret(4, 1));
    ASSERT_TRUE(editor.Keys(L"Ctrl+T"));
    EXPECT_TRUE(WaitForCaretRow(0, height));
    EXPECT_TRUE(WaitForCaret(4, 1));
}

TEST_F(EditKeyTest, EditingKeys) {
    ASSERT_TRUE(Start());
    for (const KeyCase& test : EditCases) Run(test);
}

TEST_F(EditKeyTest, InsertTogglesOvertyping) {
    ASSERT_TRUE(Start());
    Fill(L"abc");
    ASSERT_TRUE(editor.Keys(L"Insert"));
    EXPECT_TRUE(editor.WaitForStatus(4, L"\tOVR"));
    ASSERT_TRUE(editor.Keys(L"X"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 2"));
    ASSERT_TRUE(editor.Keys(L"Insert"));
    EXPECT_TRUE(editor.WaitForStatus(4, L"\tINS"));
    ExpectText(L"xbc");
}

// A search that wraps says so, in either direction; the next move of the caret clears it.
TEST_F(EditKeyTest, ASearchThatWrapsSaysSo) {
    ASSERT_TRUE(Start());
    Fill(L"ab cd ab");
    ASSERT_TRUE(editor.Keys(L"Ctrl+F3 F3 F3"));
    EXPECT_TRUE(editor.WaitForStatus(0, L"Passed end of file"));
    ASSERT_TRUE(editor.Keys(L"Right"));
    EXPECT_TRUE(editor.WaitForStatus(0, L""));
}

TEST_F(EditKeyTest, AWholeLineCopyCarriesItsMark) {
    ASSERT_TRUE(Start());
    Fill(L"ab\ncd");
    ASSERT_TRUE(editor.Keys(L"Right Ctrl+C"));
    EXPECT_TRUE(window::WaitFor([] { return clipboard::Text() == L"ab\r\n"; }));
    EXPECT_TRUE(clipboard::HasFormat(L"orvane_singleline"));
    ASSERT_TRUE(editor.Keys(L"Shift+Left Ctrl+C"));
    EXPECT_TRUE(window::WaitFor([] { return clipboard::Text() == L"a"; }));
    EXPECT_FALSE(clipboard::HasFormat(L"orvane_singleline"));
}

std::string WithoutTerminator(std::string bytes) {
    while (!bytes.empty() && bytes.back() == '\0') bytes.pop_back();
    return bytes;
}

TEST_F(EditKeyTest, CopyWithColoursPutsThreeFormatsOnTheClipboard) {
    ASSERT_TRUE(OpenFile(L"a.cpp", "int {x}; // <\"&>"));
    ASSERT_TRUE(clipboard::Clear());
    ASSERT_TRUE(editor.Keys(L"Ctrl+A"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 17"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+H"));
    const std::wstring html = L"<pre>\n<font color=\"#0000ff\">int</font><font color=\"#000000\"> {x}; </font>"
                              L"<font color=\"#008000\">// &lt;&quot;&&gt;</font></pre>";
    EXPECT_TRUE(window::WaitFor([&] { return clipboard::Text() == html; }));
    EXPECT_EQ(clipboard::Text(), html);
    EXPECT_EQ(WithoutTerminator(clipboard::Bytes(L"HTML Format")), files::Utf8(html));
    EXPECT_EQ(WithoutTerminator(clipboard::Bytes(L"Rich Text Format")),
              "{\\rtf1\\ansi\\ansicpg1252\n{\\colortbl;"
              "\\red0\\green128\\blue128;\\red220\\green220\\blue220;\\red0\\green255\\blue255;\\red0\\green0\\blue0;"
              "\\red255\\green255\\blue255;\\red255\\green255\\blue220;\\red0\\green128\\blue0;\\red255\\green0\\blue0;"
              "\\red0\\green0\\blue255;\\red128\\green0\\blue0;\\red255\\green255\\blue0;\\red128\\green0\\blue128;"
              "\\red255\\green0\\blue255;}"
              "{\\cf9 int}{\\cf4  \\{x\\}; }{\\cf7 // <\"&>}}");
}

} // namespace
