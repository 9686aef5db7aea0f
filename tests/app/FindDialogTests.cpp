#include "app/EditTest.h"

// The Find, Replace and Go To dialogs of the real program, driven through their controls and keys.

namespace {

using Names = std::vector<std::wstring>;
using Numbers = std::vector<int>;

class FindDialogTest : public EditTest {
protected:
    // Strikes the keys that open a dialog and waits until one of its controls has the focus.
    ::testing::AssertionResult Open(const std::wstring& keys) {
        if (!editor.Keys(keys)) return ::testing::AssertionFailure() << "no keys";
        return WaitForDialog();
    }
    ::testing::AssertionResult WaitForDialog() {
        dialog = editor.WaitForDialog();
        if (!window::WaitFor([this] { return dialog && IsChild(dialog, editor.Focus()); }))
            return ::testing::AssertionFailure() << "no dialog";
        return ::testing::AssertionSuccess();
    }
    bool Close() { return editor.Keys(L"Escape") && editor.WaitForNoDialog(); }

    HWND Control(int number) const { return GetDlgItem(dialog, number); }
    LRESULT Ask(int number, UINT message, WPARAM first = 0, LPARAM second = 0) const {
        DWORD_PTR answer = 0;
        SendMessageTimeoutW(number ? Control(number) : dialog, message, first, second, SMTO_ABORTIFHUNG, 5000, &answer);
        return static_cast<LRESULT>(answer);
    }
    std::wstring TextOf(int number) const { return window::TextOf(Control(number)); }
    bool IsChecked(int number) const { return Ask(number, BM_GETCHECK) == BST_CHECKED; }
    bool WaitForCheck(int number, bool checked) const {
        return window::WaitFor([&] { return IsChecked(number) == checked; });
    }
    bool IsEnabled(int number) const { return IsWindowEnabled(Control(number)); }
    int DefaultButton() const {
        const LRESULT answer = Ask(0, DM_GETDEFID);
        return HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : 0;
    }
    // Of the control that has the focus; a combo box has it through its edit control.
    int FocusedControl() const {
        const HWND focus = editor.Focus();
        return GetDlgCtrlID(GetParent(focus) == dialog ? focus : GetParent(focus));
    }
    bool WaitForFocus(int number) const {
        return window::WaitFor([&] { return FocusedControl() == number; });
    }
    // The entries of a combo box from the top.
    Names Entries(int number) const {
        Names entries;
        for (LRESULT i = 0; i < Ask(number, CB_GETCOUNT); ++i) {
            const auto index = static_cast<WPARAM>(i);
            std::wstring text(static_cast<size_t>(Ask(number, CB_GETLBTEXTLEN, index)) + 1, L'\0');
            Ask(number, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text.data()));
            text.pop_back();
            entries.push_back(text);
        }
        return entries;
    }
    // Where keys are not what is tested, commands and messages do the rest.
    ::testing::AssertionResult OpenAgain(UINT command) {
        editor.Command(command);
        return WaitForDialog();
    }
    void Press(int number) const { PostMessageW(Control(number), BM_CLICK, 0, 0); }
    void SetText(int number, const std::wstring& text) const {
        Ask(number, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    void SetBoth(const std::wstring& wanted, const std::wstring& replacement) const {
        SetText(IDC_FIND_WHAT, wanted);
        SetText(IDC_REPLACE_WITH, replacement);
    }
    bool FocusByKey(const std::wstring& key, int number) { return editor.Keys(key) && WaitForFocus(number); }
    // Without a dialog, and with all keys that were struck arrived.
    void ExpectCopied(const std::wstring& text) {
        ASSERT_TRUE(clipboard::Clear());
        editor.Command(IDM_COPY);
        const std::wstring expected = WithReturns(text);
        window::WaitFor([&] { return clipboard::Text() == expected; });
        EXPECT_EQ(clipboard::Text(), expected);
        EXPECT_FALSE(clipboard::HasFormat(L"orvane_singleline"));
    }
    void ExpectWhole(const std::wstring& text) {
        editor.Command(IDM_SELECT_ALL);
        ExpectCopied(text);
    }
    void ExpectTabOrder(const Numbers& controls) {
        for (size_t i = 0; i <= controls.size(); ++i) {
            const int control = controls[i % controls.size()];
            EXPECT_TRUE(WaitForFocus(control)) << "control " << control << ", stop " << i;
            ASSERT_TRUE(editor.Keys(L"Tab"));
        }
    }
    // Waits for a message over the dialog and closes it.
    void AnswerMessage(const std::wstring& text) {
        const HWND asking = dialog;
        ASSERT_TRUE(window::WaitFor([&] {
            const HWND box = editor.Dialog();
            return box && box != asking && window::DialogText(box) == text;
        }));
        EXPECT_EQ(window::TextOf(editor.Dialog()), L"Orvane");
        EXPECT_FALSE(IsWindowEnabled(asking));
        EXPECT_TRUE(editor.Answer(text, L"OK"));
        EXPECT_EQ(editor.WaitForDialog(), asking);
    }

    void AnswerNotFound() { AnswerMessage(L"Text not found"); }

    HWND dialog = nullptr;
};

} // namespace

// Find.

TEST_F(FindDialogTest, FindOpensEmptyAndSearchesDown) {
    ASSERT_TRUE(Start());
    Fill(L"one two");
    ASSERT_TRUE(Open(L"Ctrl+F"));
    EXPECT_EQ(window::TextOf(dialog), L"Find");
    EXPECT_EQ(TextOf(IDC_FIND_WHAT), L"");
    EXPECT_EQ(Entries(IDC_FIND_WHAT), Names());
    EXPECT_EQ(TextOf(IDC_WHOLE_WORD), L"Match &Whole Word Only");
    EXPECT_FALSE(IsChecked(IDC_WHOLE_WORD));
    EXPECT_EQ(TextOf(IDC_MATCH_CASE), L"Match &Case");
    EXPECT_FALSE(IsChecked(IDC_MATCH_CASE));
    EXPECT_EQ(Control(IDC_HEX_PATTERN), nullptr);
    EXPECT_EQ(TextOf(IDC_DIRECTION_GROUP), L"Direction");
    EXPECT_EQ(TextOf(IDC_FIND_UP), L"&Up");
    EXPECT_FALSE(IsChecked(IDC_FIND_UP));
    EXPECT_EQ(TextOf(IDC_FIND_DOWN), L"&Down");
    EXPECT_TRUE(IsChecked(IDC_FIND_DOWN));
    EXPECT_EQ(TextOf(IDOK), L"&Find Next");
    EXPECT_EQ(TextOf(IDCANCEL), L"Cancel");
    EXPECT_EQ(window::DialogText(dialog), L"Fi&nd what:");
    EXPECT_EQ(DefaultButton(), IDOK);
    ExpectTabOrder({IDC_FIND_WHAT, IDC_WHOLE_WORD, IDC_MATCH_CASE, IDC_FIND_DOWN, IDOK, IDCANCEL});
    EXPECT_TRUE(Close());
    EXPECT_TRUE(WaitForCaret(1, 1));
}

TEST_F(FindDialogTest, EnterFindsAndCloses) {
    ASSERT_TRUE(Start());
    Fill(L"one two one");
    ASSERT_TRUE(Open(L"Ctrl+F"));
    ASSERT_TRUE(editor.Type(L"two"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(WaitForCaret(1, 8));
    ExpectCopied(L"two");
}

TEST_F(FindDialogTest, FindKeepsItsChoicesForEveryDocument) {
    ASSERT_TRUE(Start());
    Fill(L"ab AB ABC ab");
    ASSERT_TRUE(Open(L"Ctrl+F"));
    ASSERT_TRUE(editor.Type(L"AB"));
    ASSERT_TRUE(window::WaitFor([&] { return TextOf(IDC_FIND_WHAT) == L"AB"; }));
    for (const int button : {IDC_WHOLE_WORD, IDC_MATCH_CASE, IDC_FIND_UP}) Press(button);
    EXPECT_TRUE(WaitForCheck(IDC_WHOLE_WORD, true));
    EXPECT_TRUE(WaitForCheck(IDC_MATCH_CASE, true));
    EXPECT_TRUE(WaitForCheck(IDC_FIND_UP, true));
    EXPECT_FALSE(IsChecked(IDC_FIND_DOWN));
    Press(IDOK);
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(WaitForCaret(1, 6));
    EXPECT_TRUE(editor.WaitForStatus(0, L"Passed end of file"));
    Fill(L"other");
    ASSERT_TRUE(OpenAgain(IDM_FIND));
    EXPECT_EQ(TextOf(IDC_FIND_WHAT), L"AB");
    EXPECT_EQ(Entries(IDC_FIND_WHAT), Names({L"AB"}));
    EXPECT_TRUE(IsChecked(IDC_WHOLE_WORD));
    EXPECT_TRUE(IsChecked(IDC_MATCH_CASE));
    EXPECT_TRUE(IsChecked(IDC_FIND_UP));
    EXPECT_FALSE(IsChecked(IDC_FIND_DOWN));
    EXPECT_TRUE(Close());
}

TEST_F(FindDialogTest, AFailedSearchIsReportedAndTheDialogStays) {
    ASSERT_TRUE(Start());
    Fill(L"abc");
    ASSERT_TRUE(Open(L"Ctrl+F"));
    ASSERT_TRUE(editor.Type(L"zz"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    AnswerNotFound();
    EXPECT_EQ(TextOf(IDC_FIND_WHAT), L"zz");
    ASSERT_TRUE(Close());
    EXPECT_TRUE(WaitForCaret(1, 1));
    ASSERT_TRUE(OpenAgain(IDM_FIND));
    EXPECT_EQ(Entries(IDC_FIND_WHAT), Names({L"zz"}));
    EXPECT_TRUE(Close());
}

TEST_F(FindDialogTest, AnEmptyTextIsNotFound) {
    ASSERT_TRUE(Start());
    Fill(L"abc");
    ASSERT_TRUE(Open(L"Ctrl+F"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    AnswerNotFound();
    ASSERT_TRUE(Close());
    ASSERT_TRUE(editor.Keys(L"F3 End"));
    EXPECT_TRUE(WaitForCaret(1, 4));
    ExpectWhole(L"abc");
}

TEST_F(FindDialogTest, TheSelectionIsTheTextToFind) {
    ASSERT_TRUE(Start());
    Fill(L"ab cd\nab");
    ASSERT_TRUE(Open(L"Shift+Right Shift+Right Ctrl+F"));
    EXPECT_EQ(TextOf(IDC_FIND_WHAT), L"ab");
    EXPECT_EQ(Entries(IDC_FIND_WHAT), Names());
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(WaitForCaret(2, 3));
    // One over a line end is not.
    ASSERT_TRUE(editor.WaitForNoDialog());
    editor.Command(IDM_SELECT_ALL);
    ASSERT_TRUE(OpenAgain(IDM_FIND));
    EXPECT_EQ(TextOf(IDC_FIND_WHAT), L"ab");
    EXPECT_TRUE(Close());
}

// Replace.

TEST_F(FindDialogTest, ReplaceWithoutASelectionIsForTheWholeFile) {
    ASSERT_TRUE(Start());
    Fill(L"abc");
    ASSERT_TRUE(Open(L"Ctrl+H"));
    EXPECT_EQ(window::TextOf(dialog), L"Replace");
    EXPECT_EQ(window::DialogText(dialog), L"Fi&nd what:\nRe&place with:");
    EXPECT_EQ(TextOf(IDC_IN_SELECTION), L"&Selection");
    EXPECT_EQ(TextOf(IDC_IN_WHOLE_FILE), L"Wh&ole File");
    EXPECT_EQ(TextOf(IDOK), L"&Find Next");
    EXPECT_EQ(TextOf(IDC_REPLACE_ONE), L"&Replace");
    EXPECT_EQ(TextOf(IDC_REPLACE_ALL), L"Replace &All");
    EXPECT_FALSE(IsEnabled(IDC_IN_SELECTION));
    EXPECT_FALSE(IsChecked(IDC_IN_SELECTION));
    EXPECT_TRUE(IsChecked(IDC_IN_WHOLE_FILE));
    for (const int button : {IDOK, IDC_REPLACE_ONE, IDC_REPLACE_ALL, IDCANCEL}) EXPECT_TRUE(IsEnabled(button));
    EXPECT_EQ(DefaultButton(), IDOK);
    ExpectTabOrder({IDC_FIND_WHAT, IDC_REPLACE_WITH, IDC_WHOLE_WORD, IDC_MATCH_CASE, IDC_IN_WHOLE_FILE, IDOK,
                    IDC_REPLACE_ONE, IDC_REPLACE_ALL, IDCANCEL});
    EXPECT_TRUE(Close());
}

TEST_F(FindDialogTest, ASelectionWithinALineIsReplacedOneByOne) {
    ASSERT_TRUE(Start());
    Fill(L"ab cd ab");
    ASSERT_TRUE(Open(L"Right Right Right Shift+Right Shift+Right Ctrl+H"));
    EXPECT_EQ(TextOf(IDC_FIND_WHAT), L"cd");
    EXPECT_TRUE(IsEnabled(IDC_IN_SELECTION));
    EXPECT_TRUE(IsChecked(IDC_IN_WHOLE_FILE));
    EXPECT_TRUE(IsEnabled(IDOK));
    EXPECT_TRUE(IsEnabled(IDC_REPLACE_ONE));
    SetBoth(L"ab", L"xyz");
    // What is selected is replaced although it is not what is sought.
    Press(IDC_REPLACE_ONE);
    ASSERT_TRUE(Close());
    EXPECT_TRUE(WaitForCaret(1, 10));
    ExpectCopied(L"ab");
    ASSERT_TRUE(OpenAgain(IDM_REPLACE));
    EXPECT_EQ(TextOf(IDC_REPLACE_WITH), L"xyz");
    Press(IDC_REPLACE_ONE);
    EXPECT_TRUE(editor.WaitForStatus(0, L"Passed end of file"));
    Press(IDC_REPLACE_ONE);
    AnswerNotFound();
    EXPECT_TRUE(Close());
    ExpectWhole(L"xyz xyz xyz");
    editor.Command(IDM_UNDO);
    ExpectWhole(L"ab xyz xyz");
}

TEST_F(FindDialogTest, FindNextLeavesTheReplaceDialogOpen) {
    ASSERT_TRUE(Start());
    Fill(L"ab Ab abc");
    ASSERT_TRUE(Open(L"Ctrl+H"));
    SetBoth(L"Ab", L"x");
    Press(IDC_MATCH_CASE);
    EXPECT_TRUE(WaitForCheck(IDC_MATCH_CASE, true));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_EQ(editor.Dialog(), dialog);
    // From the one match with this case the search wraps to itself.
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(editor.WaitForStatus(0, L"Passed end of file"));
    for (const int button : {IDC_MATCH_CASE, IDC_WHOLE_WORD, IDOK}) Press(button);
    EXPECT_TRUE(WaitForCheck(IDC_WHOLE_WORD, true));
    EXPECT_TRUE(Close());
    EXPECT_TRUE(WaitForCaret(1, 3));
    ASSERT_TRUE(OpenAgain(IDM_REPLACE));
    EXPECT_FALSE(IsChecked(IDC_MATCH_CASE));
    EXPECT_TRUE(IsChecked(IDC_WHOLE_WORD));
    EXPECT_EQ(TextOf(IDC_REPLACE_WITH), L"x");
    EXPECT_TRUE(Close());
    ExpectWhole(L"ab Ab abc");
}

TEST_F(FindDialogTest, ReplaceAllTellsItsCountAndIsOneStep) {
    ASSERT_TRUE(Start());
    Fill(L"aaa");
    ASSERT_TRUE(Open(L"Ctrl+H"));
    SetBoth(L"a", L"aa");
    Press(IDC_REPLACE_ALL);
    EXPECT_TRUE(editor.WaitForStatus(0, L"3 occurences replaced"));
    EXPECT_EQ(editor.Dialog(), dialog);
    SetBoth(L"b", L"c");
    Press(IDC_REPLACE_ALL);
    EXPECT_TRUE(editor.WaitForStatus(0, L"0 occurences replaced"));
    EXPECT_TRUE(Close());
    ExpectWhole(L"aaaaaa");
    editor.Command(IDM_UNDO);
    ExpectWhole(L"aaa");
}

TEST_F(FindDialogTest, ASelectionOfSeveralLinesOnlyOffersReplaceAll) {
    ASSERT_TRUE(Start());
    Fill(L"ab\nab\nab\nab\nab");
    ASSERT_TRUE(Open(L"Down Shift+Down Shift+Down Shift+Down Ctrl+H"));
    EXPECT_TRUE(IsChecked(IDC_IN_SELECTION));
    EXPECT_FALSE(IsChecked(IDC_IN_WHOLE_FILE));
    EXPECT_FALSE(IsEnabled(IDOK));
    EXPECT_FALSE(IsEnabled(IDC_REPLACE_ONE));
    EXPECT_TRUE(IsEnabled(IDC_REPLACE_ALL));
    EXPECT_EQ(DefaultButton(), IDC_REPLACE_ALL);
    SetBoth(L"ab", L"xyz");
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(editor.WaitForStatus(0, L"3 occurences replaced"));
    EXPECT_TRUE(Close());
    EXPECT_TRUE(WaitForCaret(5, 1));
    ExpectCopied(L"xyz\nxyz\nxyz\n");
    ExpectWhole(L"ab\nxyz\nxyz\nxyz\nab");
    editor.Command(IDM_UNDO);
    ExpectWhole(L"ab\nab\nab\nab\nab");
}

TEST_F(FindDialogTest, ATextThatWouldBecomeTooLongIsLeftAsItIs) {
    ASSERT_TRUE(Start());
    const std::wstring text(5000, L'a');
    Fill(text);
    ASSERT_TRUE(Open(L"Ctrl+H"));
    SetBoth(L"a", std::wstring(1000000, L'b'));
    Press(IDC_REPLACE_ALL);
    AnswerMessage(L"The text would become too long");
    EXPECT_TRUE(editor.WaitForStatus(0, L"0 occurences replaced"));
    EXPECT_TRUE(Close());
    ExpectWhole(text);
}

TEST_F(FindDialogTest, BothFieldsRememberTheirLastTwentyTexts) {
    ASSERT_TRUE(Start());
    Fill(L"abcdefghijklmnopqrstu");
    ASSERT_TRUE(Open(L"Ctrl+H"));
    const auto find = [&](wchar_t letter) {
        SetBoth(std::wstring(1, letter), std::wstring(2, letter));
        Ask(IDOK, BM_CLICK);
    };
    for (wchar_t letter = L'a'; letter <= L'u'; ++letter) find(letter);
    find(L'e'); // comes to the top
    EXPECT_TRUE(Close());
    ASSERT_TRUE(OpenAgain(IDM_REPLACE));
    Names wanted;
    Names replacements;
    for (const wchar_t letter : std::wstring(L"eutsrqponmlkjihgfdcb")) {
        wanted.emplace_back(1, letter);
        replacements.emplace_back(2, letter);
    }
    EXPECT_EQ(Entries(IDC_FIND_WHAT), wanted);
    EXPECT_EQ(Entries(IDC_REPLACE_WITH), replacements);
    EXPECT_EQ(TextOf(IDC_REPLACE_WITH), L"ee");
    EXPECT_TRUE(Close());
    ASSERT_TRUE(OpenAgain(IDM_FIND));
    EXPECT_EQ(Entries(IDC_FIND_WHAT), wanted);
    EXPECT_TRUE(Close());
}

TEST_F(FindDialogTest, AFailedSearchStopsAMacro) {
    ASSERT_TRUE(Start());
    Fill(L"ab ab ab");
    ASSERT_TRUE(editor.Keys(L"Ctrl+F3 Ctrl+Home Ctrl+Shift+R"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.Title().starts_with(L"Recording - "); }));
    ASSERT_TRUE(editor.Keys(L"F3 X Ctrl+Shift+R"));
    ASSERT_TRUE(window::WaitFor([&] { return !editor.Title().starts_with(L"Recording - "); }));
    ExpectText(L"x ab ab");
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home Ctrl+Shift+P Ctrl+Shift+P"));
    ExpectText(L"x x x");
    // Without a match there is no x either.
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home Ctrl+Shift+P"));
    ExpectText(L"x x x");
}

TEST_F(FindDialogTest, TheUnderlinedLettersLeadToTheControls) {
    ASSERT_TRUE(Start());
    Fill(L"ab ab ab ab");
    ASSERT_TRUE(Open(L"Ctrl+H"));
    EXPECT_TRUE(FocusByKey(L"Alt+P", IDC_REPLACE_WITH));
    EXPECT_TRUE(FocusByKey(L"Alt+N", IDC_FIND_WHAT));
    SetBoth(L"ab", L"xy");
    ASSERT_TRUE(editor.Keys(L"Alt+W"));
    EXPECT_TRUE(WaitForCheck(IDC_WHOLE_WORD, true));
    ASSERT_TRUE(editor.Keys(L"Alt+C"));
    EXPECT_TRUE(WaitForCheck(IDC_MATCH_CASE, true));
    ASSERT_TRUE(editor.Keys(L"Alt+F Alt+R Alt+R Alt+A"));
    EXPECT_TRUE(editor.WaitForStatus(0, L"2 occurences replaced"));
    ASSERT_TRUE(Close());
    ExpectWhole(L"xy xy xy xy");
}

TEST_F(FindDialogTest, TheUnderlinedLettersOfTheChoicesToo) {
    ASSERT_TRUE(Start());
    Fill(L"ab ab");
    ASSERT_TRUE(Open(L"Shift+Right Shift+Right Ctrl+H"));
    EXPECT_TRUE(FocusByKey(L"Alt+S", IDC_IN_SELECTION));
    EXPECT_TRUE(WaitForCheck(IDC_IN_SELECTION, true));
    EXPECT_TRUE(FocusByKey(L"Alt+O", IDC_IN_WHOLE_FILE));
    EXPECT_TRUE(WaitForCheck(IDC_IN_SELECTION, false));
    ASSERT_TRUE(Close());
    ASSERT_TRUE(OpenAgain(IDM_FIND));
    EXPECT_TRUE(FocusByKey(L"Alt+U", IDC_FIND_UP));
    EXPECT_TRUE(WaitForCheck(IDC_FIND_UP, true));
    EXPECT_TRUE(FocusByKey(L"Alt+D", IDC_FIND_DOWN));
    EXPECT_TRUE(WaitForCheck(IDC_FIND_UP, false));
    ASSERT_TRUE(editor.Keys(L"Alt+F"));
    EXPECT_TRUE(WaitForCaret(1, 6));
    EXPECT_TRUE(editor.WaitForNoDialog());
}

// Searches that take long.

namespace {

class LongSearchTest : public FindDialogTest {
protected:
    // Opens a file in which every whole word of the first line's length but that line is part of a longer one.
    void OpenSlowFile() {
        std::string text = std::string(1500, 'a') + "\n";
        for (int line = 0; line < 12000; line++) text += std::string(2000, 'a') + "\n";
        ASSERT_TRUE(OpenFile(L"a.txt", text));
    }
    bool WaitForProgress() const {
        return window::WaitFor([this] { return editor.Status(0).text.starts_with(L"Searching: "); });
    }
};

} // namespace

TEST_F(LongSearchTest, EscapeEndsASearchAndLeavesTheSelection) {
    OpenSlowFile();
    ASSERT_TRUE(Open(L"Shift+End Ctrl+F"));
    Press(IDC_WHOLE_WORD);
    Press(IDOK);
    EXPECT_TRUE(WaitForProgress());
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(editor.WaitForStatus(0, L""));
    // The dialog has nothing to say and stays.
    EXPECT_EQ(editor.Dialog(), dialog);
    EXPECT_TRUE(IsChecked(IDC_WHOLE_WORD));
    ASSERT_TRUE(Close());
    EXPECT_TRUE(WaitForCaret(1, 1501));
    ExpectCopied(std::wstring(1500, L'a'));
}

TEST_F(LongSearchTest, EscapeEndsAReplacementAndNothingIsReplaced) {
    OpenSlowFile();
    ASSERT_TRUE(Open(L"Shift+End Ctrl+H"));
    Press(IDC_WHOLE_WORD);
    Press(IDC_REPLACE_ALL);
    EXPECT_TRUE(WaitForProgress());
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(editor.WaitForStatus(0, L"0 occurences replaced"));
    EXPECT_EQ(editor.Dialog(), dialog);
    ASSERT_TRUE(Close());
    EXPECT_EQ(editor.Title(), Path(L"a.txt") + L" - Orvane");
    ExpectCopied(std::wstring(1500, L'a'));
}

TEST_F(LongSearchTest, KeysStruckBeforeEscapeDoNotHideIt) {
    OpenSlowFile();
    ASSERT_TRUE(Open(L"Shift+End Ctrl+F"));
    Press(IDC_WHOLE_WORD);
    Press(IDOK);
    EXPECT_TRUE(WaitForProgress());
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(editor.WaitForStatus(0, L""));
    ASSERT_TRUE(Close());
    ASSERT_TRUE(editor.Keys(L"Home Down F3"));
    EXPECT_TRUE(WaitForProgress());
    ASSERT_TRUE(editor.Keys(L"F3"));
    // Held down, the key repeats itself.
    EXPECT_TRUE(window::WaitFor([this] { return editor.Keys(L"+Escape") && editor.Status(0).text.empty(); }));
    ASSERT_TRUE(editor.Keys(L"-Escape"));
    EXPECT_TRUE(WaitForCaret(2, 1));
}

// Go To.

TEST_F(FindDialogTest, GoToShowsTheLineAndSelectsTheOneAskedFor) {
    ASSERT_TRUE(Start());
    Fill(L"aa\nbb\ncc");
    ASSERT_TRUE(Open(L"Down Ctrl+G"));
    EXPECT_EQ(window::TextOf(dialog), L"Go To");
    EXPECT_EQ(TextOf(IDC_GOTO_LABEL), L"&Line");
    EXPECT_EQ(TextOf(IDC_GOTO_NUMBER), L"2");
    EXPECT_EQ(TextOf(IDOK), L"OK");
    EXPECT_EQ(TextOf(IDCANCEL), L"Cancel");
    EXPECT_EQ(DefaultButton(), IDOK);
    ExpectTabOrder({IDC_GOTO_NUMBER, IDOK, IDCANCEL});
    EXPECT_TRUE(FocusByKey(L"Alt+L", IDC_GOTO_NUMBER));
    SetText(IDC_GOTO_NUMBER, L"1");
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(WaitForCaret(1, 1));
    ExpectCopied(L"aa");
}

TEST_F(FindDialogTest, GoToZeroStaysAndBeyondTheEndIsTheLastLine) {
    ASSERT_TRUE(Start());
    Fill(L"aa\nbb\ncc");
    ASSERT_TRUE(Open(L"Down Right Ctrl+G"));
    ASSERT_TRUE(editor.Type(L"0"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(WaitForCaret(2, 2));
    ASSERT_TRUE(OpenAgain(IDM_GOTO));
    ASSERT_TRUE(editor.Type(L"4"));
    EXPECT_TRUE(Close());
    EXPECT_TRUE(WaitForCaret(2, 2));
    ASSERT_TRUE(OpenAgain(IDM_GOTO));
    ASSERT_TRUE(editor.Type(L"4000000000"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(WaitForCaret(3, 1));
    ExpectCopied(L"cc");
}

TEST_F(FindDialogTest, WithShiftThereIsNoGoToDialog) {
    ASSERT_TRUE(Start());
    Fill(L"aa\nbb");
    ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+G Down Right"));
    EXPECT_TRUE(WaitForCaret(2, 2));
    EXPECT_EQ(editor.Dialog(), nullptr);
}
