// The Options dialog of the real program, worked with keys.

#include "app/FrameTest.h"

#include <algorithm>
#include <map>

namespace {

class OptionsDialogTest : public FrameTest {
protected:
    void Open() {
        dialog = OpenDialog(IDM_OPTIONS);
        ASSERT_TRUE(dialog);
    }
    void OpenColors() {
        Open();
        ASSERT_TRUE(editor.Keys(L"Down Down"));
        ASSERT_TRUE(window::WaitFor([&] { return IsWindowVisible(Control(IDC_COLOR_LIST)); }));
    }
    // Of the dialog or of one of its pages.
    HWND Control(int number) const { return window::Control(dialog, number); }
    // Waits for the system's dialog of colours.
    HWND WaitForChooser() const {
        HWND chooser = nullptr;
        window::WaitFor([&] {
            chooser = editor.Dialog();
            return chooser && chooser != dialog;
        });
        return chooser == dialog ? nullptr : chooser;
    }
    bool WaitForOptionsAlone() const {
        return window::WaitFor([&] { return editor.Dialog() == dialog; });
    }
    // Chooses a colour in the system's dialog, by its fields for red, green and blue.
    void Choose(const std::wstring& red, const std::wstring& green, const std::wstring& blue) {
        const HWND chooser = WaitForChooser();
        ASSERT_TRUE(chooser);
        int field = 706;
        for (const std::wstring& part : {red, green, blue}) {
            DWORD_PTR answer = 0;
            SendMessageTimeoutW(GetDlgItem(chooser, field++), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(part.c_str()),
                                SMTO_ABORTIFHUNG, 5000, &answer);
        }
        ASSERT_TRUE(window::PressButton(chooser, L"OK"));
        ASSERT_TRUE(WaitForOptionsAlone());
    }
    // A key that is struck just after a window came to the front may come without its Alt; here it does no harm then.
    ::testing::AssertionResult OpenChooserWith(const std::wstring& key) {
        const bool opened = window::WaitFor(
            [&] { return editor.Keys(key) && window::WaitFor([&] { return editor.Dialog() != dialog; }, 1000); });
        return opened ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << "no chooser";
    }
    void DismissChooser() {
        ASSERT_TRUE(WaitForChooser());
        ASSERT_TRUE(editor.Keys(L"Escape"));
        ASSERT_TRUE(WaitForOptionsAlone());
    }
    void Confirm() {
        ASSERT_TRUE(window::PressButton(dialog, L"OK"));
        ASSERT_TRUE(WaitUntilSaved());
    }
    // Moves the dialog until it leaves a place of the screen free.
    bool MoveDialogAbove(POINT place) const {
        return window::WaitFor([&] {
            RECT area = {};
            GetWindowRect(dialog, &area);
            if (!PtInRect(&area, place)) return true;
            const int top = place.y - (area.bottom - area.top) - 10;
            SetWindowPos(dialog, nullptr, area.left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            return false;
        });
    }
    static std::string Saved() { return files::Read(files::SettingsPath()); }

    HWND dialog = nullptr;
};

// The keys of all settings in the order in which they are written, with their defaults.
constexpr std::pair<const char*, const char*> Defaults[] = {
    {"FontName", "Courier New"},
    {"FontSize", "10"},
    {"FontBold", "0"},
    {"CaretWidth", "2"},
    {"ShowWhitespace", "0"},
    {"ReplaceTabs", "1"},
    {"SpacesPerTab", "4"},
    {"PasteKeepSelection", "1"},
    {"SpaceColor", "#008080"},
    {"MarginWidth", "20"},
    {"MarginColor", "#dcdcdc"},
    {"BookmarkColor", "#00ffff"},
    {"GuideColor", "#dcdcdc"},
    {"ColumnGuide", "80"},
    {"IndentGuide", "1"},
    {"QuickOpenPath", ".;%INCLUDE%"},
    {"TextFileTypes", "C++ Files (*.cpp;*.c;*.cxx;*.h;*.hxx)|*.cpp;*.c;*.cxx;*.h;*.hxx|Text Files (*.txt)|*.txt|"
                      "HTML Files (*.htm;*.html)|*.htm;*.html|XML Files (*.xml;*.xsl)|*.xml;*.xsl|"
                      "All Files (*.*)|*.*"},
    {"ShowLineNumbers", "1"},
    {"VarWidthLineNumbers", "0"},
    {"RenderType", "0"},
    {"TextFg", "#000000"},
    {"TextBg", "#ffffff"},
    {"SelFg", "#ffffff"},
    {"SelBg", "#000000"},
    {"LineNumFg", "#000000"},
    {"LineNumBg", "#ffffdc"},
    {"CommentFg", "#008000"},
    {"CommentBg", "#ffffff"},
    {"LongCommentFg", "#008000"},
    {"LongCommentBg", "#ffffff"},
    {"StringFg", "#ff0000"},
    {"StringBg", "#ffffff"},
    {"KeywordFg", "#0000ff"},
    {"KeywordBg", "#ffffff"},
    {"NumberFg", "#800000"},
    {"NumberBg", "#ffffff"},
    {"BraceMatchFg", "#000000"},
    {"BraceMatchBg", "#ffff00"},
    {"HtmlTagFg", "#0000ff"},
    {"HtmlTagBg", "#ffffff"},
    {"HtmlAttrFg", "#800080"},
    {"HtmlAttrBg", "#ffffff"},
    {"HtmlAttrValueFg", "#ff00ff"},
    {"HtmlAttrValueBg", "#ffffff"},
    {"HtmlAttrQuotedValueFg", "#ff0000"},
    {"HtmlAttrQuotedValueBg", "#ffffff"},
    {"HtmlCommentFg", "#008000"},
    {"HtmlCommentBg", "#ffffff"},
    {"HtmlPunctFg", "#0000ff"},
    {"HtmlPunctBg", "#ffffff"},
    {"BinFg", "#ff0000"},
    {"BinBg", "#ffffff"},
};

// The lines of all settings but those of `first`, which precede them in the file.
std::string Lines(const std::map<std::string, std::string>& changed, const std::vector<std::string>& first = {}) {
    std::string lines;
    for (const auto& [key, value] : Defaults) {
        if (std::find(first.begin(), first.end(), key) != first.end()) continue;
        const auto other = changed.find(key);
        lines += key + ("=" + (other == changed.end() ? std::string(value) : other->second)) + "\r\n";
    }
    return lines;
}

COLORREF ScreenColour(POINT place) {
    const HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, place.x, place.y);
    ReleaseDC(nullptr, screen);
    return colour;
}

bool WaitForScreenColour(POINT place, COLORREF colour) {
    return window::WaitFor([&] { return ScreenColour(place) == colour; });
}

} // namespace

TEST_F(OptionsDialogTest, EnterAndSpacePressTheButtonOfThePageThatHasTheFocus) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    OpenColors();
    ASSERT_TRUE(editor.Keys(L"Tab Tab"));
    ASSERT_TRUE(WaitForFocus(Control(IDC_COLOR_FOREGROUND)));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    Choose(L"17", L"34", L"51");
    ASSERT_TRUE(WaitForFocus(Control(IDC_COLOR_FOREGROUND)));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    ASSERT_TRUE(WaitForFocus(Control(IDC_COLOR_BACKGROUND)));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    Choose(L"221", L"238", L"255");
    ASSERT_TRUE(WaitForFocus(Control(IDC_COLOR_BACKGROUND)));
    ASSERT_TRUE(editor.Keys(L"Space"));
    DismissChooser();
    Confirm();
    EXPECT_EQ(Saved(), "[General]\r\n" + Lines({{"TextFg", "#112233"}, {"TextBg", "#ddeeff"}}));
}

TEST_F(OptionsDialogTest, TheMnemonicsOfTheColorsPageOpenTheChooser) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    OpenColors();
    ASSERT_TRUE(OpenChooserWith(L"Alt+F"));
    DismissChooser();
    ASSERT_TRUE(WaitForFocus(Control(IDC_COLOR_FOREGROUND)));
    ASSERT_TRUE(OpenChooserWith(L"Alt+B"));
    Choose(L"1", L"2", L"3");
    Confirm();
    EXPECT_EQ(Saved(), "[General]\r\n" + Lines({{"TextBg", "#010203"}}));
}

TEST_F(OptionsDialogTest, EnterInAFieldConfirms) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    Open();
    ASSERT_TRUE(ReachWith(L"Alt+S", Control(IDC_SPACES_PER_TAB)));
    ASSERT_TRUE(editor.Keys(L"End Backspace"));
    ASSERT_TRUE(editor.Type(L"-3"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(WaitUntilSaved());
    EXPECT_EQ(Saved(), "[General]\r\n" + Lines({{"SpacesPerTab", "0"}}));
}

TEST_F(OptionsDialogTest, EscapeClosesTheListOfFontsBeforeTheDialog) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    Open();
    const HWND fonts = Control(IDC_FONT_NAME);
    ASSERT_TRUE(editor.Keys(L"Down"));
    ASSERT_TRUE(window::WaitFor([&] { return IsWindowVisible(fonts); }));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    ASSERT_TRUE(window::WaitFor([&] { return IsChild(fonts, editor.Focus()); }));
    const auto isOpen = [&] { return SendMessageW(fonts, CB_GETDROPPEDSTATE, 0, 0) != 0; };
    ASSERT_TRUE(
        window::WaitFor([&] { return editor.Keys(L"Alt+Down") && window::WaitFor([&] { return isOpen(); }, 1000); }));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(window::WaitFor([&] { return !isOpen(); }));
    Settle();
    EXPECT_EQ(editor.Dialog(), dialog);
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(WaitUntilSaved());
    EXPECT_FALSE(files::Exists(files::SettingsPath()));
}

TEST_F(OptionsDialogTest, IsInTheMiddleOfTheFrame) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    Open();
    EXPECT_TRUE(WaitUntilCentred(dialog));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(editor.WaitForNoDialog());
}

TEST_F(OptionsDialogTest, OkWritesTheWholeFile) {
    ASSERT_TRUE(files::Write(files::SettingsPath(),
                             "; a remark\n[Engine_X]\nBase=C\n[General]\nReplaceTabs=0\nMine=kept\n"
                             "TextFg=#010203\n[Tool]\nDisplayName=x\nCommand=y\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    Open();
    PostMessageW(Control(IDC_REPLACE_TABS), BM_CLICK, 0, 0);
    PostMessageW(Control(IDC_SHOW_WHITESPACE), BM_CLICK, 0, 0);
    Confirm();
    const std::string expected = "[Engine_X]\r\nBase=C\r\n\r\n[General]\r\nReplaceTabs=1\r\nMine=kept\r\n"
                                 "TextFg=#010203\r\n" +
                                 Lines({{"ShowWhitespace", "1"}}, {"ReplaceTabs", "TextFg"}) +
                                 "\r\n[Tool]\r\nDisplayName=x\r\nCommand=y\r\n";
    EXPECT_EQ(Saved(), expected);
}

TEST_F(OptionsDialogTest, OkKeepsAllThatTheFileBesideTheProgramHolds) {
    ASSERT_TRUE(files::Write(files::ShippedSettingsPath(),
                             "; a remark\n[General]\nTextFg=#010203\n; another\n[Tool]\nDisplayName=x\nCommand=y\n"
                             "[Engine_X]\nExtensions=x\nKeywords=if\n[Engine_Y]\nExtensions=y\nHTML=1\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    Open();
    PostMessageW(Control(IDC_SHOW_WHITESPACE), BM_CLICK, 0, 0);
    Confirm();
    EXPECT_FALSE(files::Exists(files::SettingsPath()));
    EXPECT_EQ(files::Read(files::ShippedSettingsPath()), "[General]\r\nTextFg=#010203\r\n" +
                                                             Lines({{"ShowWhitespace", "1"}}, {"TextFg"}) +
                                                             "\r\n[Tool]\r\nDisplayName=x\r\nCommand=y\r\n"
                                                             "\r\n[Engine_X]\r\nExtensions=x\r\nKeywords=if\r\n"
                                                             "\r\n[Engine_Y]\r\nExtensions=y\r\nHTML=1\r\n");
}

TEST_F(OptionsDialogTest, SettingsThatAnotherEditorHasSavedAreAskedAbout) {
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\nColumnGuide=70\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    Editor other;
    ASSERT_TRUE(other.Start(L"", scratch.Folder()));
    other.Command(IDM_OPTIONS);
    const HWND otherDialog = other.WaitForDialog();
    ASSERT_TRUE(otherDialog);
    PostMessageW(window::Control(otherDialog, IDC_SHOW_WHITESPACE), BM_CLICK, 0, 0);
    ASSERT_TRUE(window::PressButton(otherDialog, L"OK"));
    ASSERT_TRUE(other.WaitForNoDialog() && other.Settle());
    const std::string ofOther = Saved();
    ASSERT_NE(ofOther.find("ShowWhitespace=1\r\n"), std::string::npos);

    const std::wstring question = files::SettingsPath() + L" has been modified by another program.\nSave over it?";
    for (const wchar_t* const answer : {L"No", L"Yes"}) {
        Open();
        ASSERT_TRUE(window::PressButton(dialog, L"OK"));
        ASSERT_TRUE(editor.Answer(question, answer));
        ASSERT_TRUE(WaitUntilSaved());
        EXPECT_EQ(Saved() == ofOther, std::wstring(answer) == L"No");
    }
    EXPECT_NE(Saved().find("ShowWhitespace=0\r\n"), std::string::npos);
    Open();
    Confirm(); // of what it has saved itself it does not ask
}

TEST_F(OptionsDialogTest, AFileThatWasNotUnderstoodIsAskedAboutUntilItWasRead) {
    const std::string malformed = "[General]\nColumnGuide=70\n[Tool\n";
    ASSERT_TRUE(files::Write(files::SettingsPath(), malformed));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    Open();
    ASSERT_TRUE(window::PressButton(dialog, L"OK"));
    ASSERT_TRUE(editor.Answer(L"Reading " + files::SettingsPath() +
                                  L" stopped at line 3.\nWhat follows would be lost. Save over it?",
                              L"No"));
    ASSERT_TRUE(WaitUntilSaved());
    EXPECT_EQ(Saved(), malformed);
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\nColumnGuide=60\n"));
    ASSERT_TRUE(editor.RunCommandLine(L"reloadoptions"));
    Open();
    Confirm();
    EXPECT_NE(Saved().find("ColumnGuide=60\r\n"), std::string::npos);
}

TEST_F(OptionsDialogTest, CancelLeavesTheFileAsItIs) {
    const std::string before = "; a remark\n\n[General]\nReplaceTabs=0\n[Tool]\nDisplayName=x\nCommand=y";
    ASSERT_TRUE(files::Write(files::SettingsPath(), before));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    OpenColors();
    ASSERT_TRUE(OpenChooserWith(L"Alt+F"));
    Choose(L"17", L"34", L"51");
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(WaitUntilSaved());
    EXPECT_EQ(Saved(), before);
}

TEST_F(OptionsDialogTest, OkAndSetoptRepaintEveryPane) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(SetClientSize(900, 600));
    editor.Command(IDM_SPLIT_VERTICALLY);
    ASSERT_TRUE(WaitForPaneCount(2));
    Settle();
    // Near the lower edge of each pane, where no text is.
    std::vector<POINT> places;
    for (const HWND pane : Panes()) {
        RECT area = {};
        GetClientRect(pane, &area);
        places.push_back({area.right / 2, area.bottom - 40});
        ClientToScreen(pane, &places.back());
        EXPECT_TRUE(WaitForScreenColour(places.back(), RGB(255, 255, 255)));
    }
    ASSERT_TRUE(editor.RunCommandLine(L"setopt TextBg #c0ffee"));
    for (const POINT place : places) EXPECT_TRUE(WaitForScreenColour(place, RGB(0xC0, 0xFF, 0xEE)));
    OpenColors();
    PostMessageW(Control(IDC_COLOR_BACKGROUND), BM_CLICK, 0, 0);
    Choose(L"17", L"238", L"51");
    // What a dialog uncovers is painted anyway.
    for (const POINT place : places) {
        ASSERT_TRUE(MoveDialogAbove(place));
        ASSERT_TRUE(WaitForScreenColour(place, RGB(0xC0, 0xFF, 0xEE)));
    }
    Confirm();
    for (const POINT place : places) EXPECT_TRUE(WaitForScreenColour(place, RGB(17, 238, 51)));
}
