// The user's tools: menu, hot keys, variables, prompted arguments, and the dialogs that edit the settings.

#include "app/RunTest.h"

#include <algorithm>

namespace {

class ToolTest : public RunTest {
protected:
    // Writes a settings file with these sections; to be called before the editor starts.
    static void Settings(const std::string& sections) { ASSERT_TRUE(files::Write(files::SettingsPath(), sections)); }
    // A tool whose output is collected.
    static std::string Captured(const std::string& name, const std::string& command, const std::string& more = "") {
        return "[Tool]\nDisplayName=" + name + "\nCommand=" + command + "\nRedirectOutput=1\n" + more;
    }
    static std::string Detached(const std::string& name, const std::string& command, const std::string& more = "") {
        return "[Tool]\nDisplayName=" + name + "\nCommand=" + command + "\n" + more;
    }
    // The speaker's path as a command line has it.
    static std::string Program() { return files::Utf8(L"\"" + SpeakerPath() + L"\""); }
    // Prints its directory and arguments, a line each.
    void Where() const { Script(L"where", "where\n"); }
    bool WaitForOutput(const std::wstring& text) {
        return window::WaitFor(
            [&] { return editor.Title().find(L"*Running*") == std::wstring::npos && Text() == text; });
    }
    Names ToolItems() {
        Names texts;
        for (const MenuItem& item : Menu(ToolsMenu))
            if (item.number >= IDM_FIRST_TOOL) {
                EXPECT_EQ(item.number, IDM_FIRST_TOOL + texts.size());
                texts.push_back(item.text);
            }
        return texts;
    }
};

} // namespace

TEST_F(ToolTest, TheMenuListsTheTools) {
    Settings(Detached("&First", "a") + Detached("Dropped", "") + Detached("Se&cond\tF5", "b"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    EXPECT_EQ(ToolItems(), Names({L"&First", L"Se&cond\tF5"}));
}

TEST_F(ToolTest, WithoutToolsTheMenuSaysSo) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    const std::vector<MenuItem> items = Menu(ToolsMenu);
    const auto item =
        std::find_if(items.begin(), items.end(), [](const MenuItem& menu) { return menu.number == IDM_FIRST_TOOL; });
    ASSERT_NE(item, items.end());
    EXPECT_FALSE(item->enabled);
}

TEST_F(ToolTest, ReloadoptionsRebuildsTheMenu) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    Settings(Detached("New one", "a"));
    ASSERT_TRUE(editor.RunCommandLine(L"reloadoptions"));
    EXPECT_TRUE(window::WaitFor([&] { return ToolItems() == Names({L"New one"}); }));
}

TEST_F(ToolTest, VariablesAreThoseOfTheActiveFile) {
    Where();
    Settings(Captured("Where", "%SPEAK% where %FILE% %EXT% \"%PATH%\" \"%DIR%\""));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    editor.Command(IDM_FIRST_TOOL);
    const std::wstring path = Path(L"a.txt");
    EXPECT_TRUE(WaitForFinished(L"%SPEAK% where a.txt .txt \"" + path + L"\" \"" + scratch.Folder() + L"\" "));
    EXPECT_TRUE(WaitForText(scratch.Folder() + L"\r\na.txt\r\n.txt\r\n" + path + L"\r\n" + scratch.Folder() + L"\r\n"));
}

TEST_F(ToolTest, WhatIsNoVariableIsKept) {
    Settings(Captured("Rem", "rem %PATHX% %PATH%X %path% %WORDS% 100% %%"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForFinished(L"rem %PATHX% " + Path(L"a.txt") + L"X %path% %WORDS% 100% %% "));
}

TEST_F(ToolTest, PathsWithBlanksAreQuotedByTheUser) {
    Where();
    ASSERT_TRUE(files::MakeFolder(Path(L"my folder")));
    Settings(Captured("Where", "%SPEAK% " + files::Utf8(Path(L"where")) + " \"%FILE%\" %EXT%", "StartDir=%DIR%\n"));
    ASSERT_TRUE(OpenFiles({L"my folder\\my file.c"}));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForOutput(Path(L"my folder") + L"\r\nmy file.c\r\n.c\r\n"));
}

TEST_F(ToolTest, TheDirectoryOfAFileInARootKeepsItsBackslash) {
    Where();
    const std::wstring file = L"C:\\orvane-test-root.txt";
    ASSERT_TRUE(files::Write(file, "text"));
    Settings(Captured("Where", Program() + " " + files::Utf8(Path(L"where")) + " %DIR%", "StartDir=%DIR%\n"));
    ASSERT_TRUE(Start(file));
    ASSERT_TRUE(editor.WaitForTitle(file + L" - Orvane"));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForOutput(L"C:\\\r\nC:\\\r\n"));
    DeleteFileW(file.c_str());
}

TEST_F(ToolTest, WordAndSelection) {
    Where();
    Settings(Captured("Where", Program() + " where [%WORD%] [%SEL%]"));
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "foo bar"));
    ASSERT_TRUE(Start(L"a.txt"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Right"));
    ASSERT_TRUE(editor.WaitForStatus(3, L"\tCol 2"));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForOutput(scratch.Folder() + L"\r\n[foo]\r\n[foo]\r\n"));
    ASSERT_TRUE(ReturnToFile());
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home Shift+Right Shift+Right"));
    ASSERT_TRUE(editor.WaitForStatus(3, L"\tCol 3"));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForOutput(scratch.Folder() + L"\r\n[foo]\r\n[fo]\r\n"));
}

TEST_F(ToolTest, WithoutADocumentVariablesAreEmptyAndTheToolRuns) {
    Where();
    Settings(Captured("Where", Program() + " where [%FILE%%DIR%%WORD%%SEL%]"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(editor.WaitForTitle(L"Orvane"));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForOutput(scratch.Folder() + L"\r\n[]\r\n"));
    EXPECT_EQ(WindowItems().size(), 1u);
}

TEST_F(ToolTest, ASelectionOfSeveralLinesKeepsItsBreaks) {
    Settings(Captured("Rem", "rem %SEL%"));
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "one\r\ntwo\r\n"));
    ASSERT_TRUE(Start(L"a.txt"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Shift+Down Shift+End"));
    ASSERT_TRUE(editor.WaitForStatus(3, L"\tCol 4"));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForFinished(L"rem one\ntwo ")) << "as the text has them";
}

TEST_F(ToolTest, BytesHaveNeitherWordNorSelection) {
    Settings(Captured("Rem", "rem %FILE% [%WORD%%SEL%]"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}, L"-b"));
    ASSERT_TRUE(editor.Keys(L"Shift+Right Shift+Right"));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForFinished(L"rem a.txt [] "));
}

TEST_F(ToolTest, InTheConsoleAToolPrintsIntoItsDocument) {
    Where();
    Settings(Captured("Where", Program() + " where"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(RunInConsole(L"console"));
    for (const wchar_t* times : {L"1", L"12"}) {
        editor.Command(IDM_FIRST_TOOL);
        std::wstring expected;
        for (const wchar_t* time = times; *time; ++time) expected += scratch.Folder() + L"\r\n";
        EXPECT_TRUE(WaitForOutput(expected));
    }
    EXPECT_EQ(WindowItems(), Names({L"&1 " + Path(L"a.txt"), L"&2 Output"}));
}

TEST_F(ToolTest, AToolOfWhichOnlyBlanksAreLeftStillRuns) {
    Settings(Captured("Blank", "%FILE%"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(editor.WaitForTitle(L"Orvane"));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForFinished(L" ")) << "no file, a blank and no arguments";
}

TEST_F(ToolTest, TheSameToolTwiceReusesOneDocument) {
    Where();
    Settings(Captured("Where", Program() + " where"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    const std::wstring line = L"\"" + SpeakerPath() + L"\" where ";
    for (int i = 0; i < 2; i++) {
        editor.Command(IDM_FIRST_TOOL);
        EXPECT_TRUE(WaitForFinished(line)) << "the command, a blank and no arguments";
        EXPECT_TRUE(WaitForText(scratch.Folder() + L"\r\n"));
        ASSERT_TRUE(ReturnToFile());
    }
    EXPECT_EQ(WindowItems(), Names({L"&1 " + Path(L"a.txt"), L"&2 " + line}));
}

TEST_F(ToolTest, ADetachedToolStartsInItsDirectory) {
    ASSERT_TRUE(files::MakeFolder(Path(L"sub")));
    Script(L"mark", "make done\n");
    Settings(Detached("Mark", Program() + " " + files::Utf8(Path(L"mark")), "StartDir=%DIR%\\sub\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(Got(L"sub\\done"));
    EXPECT_EQ(WindowItems().size(), 1u);
}

TEST_F(ToolTest, TheCommandOfADetachedToolHasItsVariables) {
    Script(L"mark.txt", "make done\n");
    Settings(Detached("Mark", Program() + " %FILE%"));
    ASSERT_TRUE(Start(L"mark.txt"));
    ASSERT_TRUE(WaitForFile(L"mark.txt"));
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(Got(L"done"));
}

TEST_F(ToolTest, ADetachedToolStartsInSight) {
    Script(L"tell", "startup told\n");
    Settings(Detached("Tell", Program() + " tell"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    editor.Command(IDM_FIRST_TOOL);
    ASSERT_TRUE(Got(L"told"));
    EXPECT_EQ(files::Read(Path(L"told")), "normal");
}

TEST_F(ToolTest, ADetachedToolThatCannotStartIsPassedOver) {
    Settings(Detached("Nothing", "no-such-program-at-all") + Detached("Nowhere", Program(), "StartDir=Z:\\nowhere\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    editor.Command(IDM_FIRST_TOOL);
    editor.Command(IDM_FIRST_TOOL + 1);
    editor.Command(IDM_FIRST_TOOL + 2);
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(editor.Dialog(), nullptr);
}

TEST_F(ToolTest, ArgumentsArePromptedForAndRemembered) {
    Where();
    Settings(Captured("Where", Program() + " where", "PromptArgs=1\nLastArgs=one %EXT%\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    editor.Command(IDM_FIRST_TOOL);
    HWND prompt = editor.WaitForDialog();
    ASSERT_TRUE(prompt);
    EXPECT_EQ(window::TextOf(prompt), L"Tool Arguments");
    const HWND shown = GetDlgItem(prompt, IDC_TOOL_ARGUMENTS_COMMAND);
    EXPECT_EQ(window::TextOf(shown), L"\"" + SpeakerPath() + L"\" where");
    EXPECT_NE(GetWindowLongW(shown, GWL_STYLE) & ES_READONLY, 0);
    EXPECT_EQ(window::TextOf(GetDlgItem(prompt, IDC_TOOL_ARGUMENTS_EDIT)), L"one %EXT%");
    ASSERT_TRUE(editor.Keys(L"End"));
    ASSERT_TRUE(editor.Type(L" three"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(WaitForOutput(scratch.Folder() + L"\r\none\r\n.txt\r\nthree\r\n"));
    // Cancel starts nothing and forgets what was typed.
    editor.Command(IDM_FIRST_TOOL);
    prompt = editor.WaitForDialog();
    ASSERT_TRUE(prompt);
    EXPECT_EQ(window::TextOf(GetDlgItem(prompt, IDC_TOOL_ARGUMENTS_EDIT)), L"one %EXT% three");
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_EQ(WindowItems().size(), 2u);
    editor.Command(IDM_FIRST_TOOL);
    prompt = editor.WaitForDialog();
    ASSERT_TRUE(prompt);
    EXPECT_EQ(window::TextOf(GetDlgItem(prompt, IDC_TOOL_ARGUMENTS_EDIT)), L"one %EXT% three");
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(WaitUntilSaved());
    // Nothing of this is written; the Tools dialog does it.
    EXPECT_EQ(files::Read(files::SettingsPath()).find("three"), std::string::npos);
    editor.Command(IDM_CUSTOMIZE);
    ASSERT_TRUE(window::WaitFor([&] { return editor.Dialog() && window::TextOf(editor.Dialog()) == L"Tools"; }));
    ASSERT_TRUE(window::PressButton(editor.Dialog(), L"OK"));
    EXPECT_TRUE(WaitUntilSaved());
    EXPECT_NE(files::Read(files::SettingsPath()).find("LastArgs=one %EXT% three\r\n"), std::string::npos);
}

TEST_F(ToolTest, HotKeysStartTools) {
    Script(L"one", "make one.done\n");
    Script(L"two", "make two.done\n");
    Settings(Detached("One", Program() + " one", "HotKey=118\n") +                // F7
             Detached("Two", Program() + " two", "HotKey=75\nHotKeyFlags=28\n")); // Ctrl+Shift+Alt+K
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.Keys(L"F7"));
    EXPECT_TRUE(Got(L"one.done"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+Alt+K"));
    EXPECT_TRUE(Got(L"two.done"));
}

TEST_F(ToolTest, TheFirstOfTwoToolsWithOneHotKeyHasIt) {
    Settings(Captured("One", "rem one", "HotKey=118\n") + Captured("Two", "rem two", "HotKey=118\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.Keys(L"F7"));
    EXPECT_TRUE(WaitForFinished(L"rem one "));
    EXPECT_EQ(WindowItems().size(), 2u);
}

TEST_F(ToolTest, ReloadoptionsExchangesTheHotKeys) {
    Settings(Captured("One", "rem one", "HotKey=118\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    Settings(Captured("One", "rem one", "HotKey=120\n"));
    ASSERT_TRUE(editor.RunCommandLine(L"reloadoptions"));
    ASSERT_TRUE(window::WaitFor([&] { return !editor.CommandWindow(); }));
    ASSERT_TRUE(editor.Keys(L"F7"));
    Settle();
    EXPECT_EQ(WindowItems().size(), 1u) << "the old key is dead";
    ASSERT_TRUE(editor.Keys(L"F9"));
    EXPECT_TRUE(WaitForFinished(L"rem one "));
}

TEST_F(ToolTest, TheKeysOfTheMenuComeBeforeHotKeys) {
    Script(L"one", "make one.done\n");
    Script(L"two", "make two.done\n");
    Settings(Detached("One", Program() + " one", "HotKey=83\nHotKeyFlags=8\n") + // Ctrl+S
             Detached("Two", Program() + " two", "HotKey=118\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"F7"));
    EXPECT_TRUE(Got(L"two.done"));
    EXPECT_FALSE(files::Exists(Path(L"one.done")));
}

TEST_F(ToolTest, ThousandsOfTools) {
    std::string sections;
    for (int i = 0; i < 4999; i++) sections += Detached("Tool " + std::to_string(i), "nothing");
    Script(L"last", "make last.done\n");
    Settings(sections + Detached("Last", Program() + " last", "HotKey=118\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    editor.Command(IDM_FIRST_TOOL + 4999);
    EXPECT_TRUE(Got(L"last.done"));
    DeleteFileW(Path(L"last.done").c_str());
    ASSERT_TRUE(editor.Keys(L"F7"));
    EXPECT_TRUE(Got(L"last.done"));
}

TEST_F(ToolTest, ToolsAreAddedInTheDialogAndWorkAtOnce) {
    Script(L"one", "make one.done\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    const HWND tools = OpenDialog(IDM_CUSTOMIZE);
    ASSERT_TRUE(tools);
    const HWND title = GetDlgItem(tools, IDC_TOOLS_TITLE);
    ASSERT_TRUE(ReachWith(L"Alt+T", title));
    ASSERT_TRUE(editor.Keys(L"Alt+A"));
    ASSERT_TRUE(window::WaitFor([&] { return window::TextOf(title) == L"New Tool"; }));
    ASSERT_TRUE(ReachWith(L"Alt+T", title));
    ASSERT_TRUE(editor.Keys(L"Home Shift+End"));
    ASSERT_TRUE(editor.Type(L"Mark it"));
    ASSERT_TRUE(ReachWith(L"Alt+C", GetDlgItem(tools, IDC_TOOLS_COMMAND)));
    ASSERT_TRUE(editor.Type(L"\"" + SpeakerPath() + L"\" one"));
    ASSERT_TRUE(ReachWith(L"Alt+H", GetDlgItem(tools, IDC_TOOLS_HOT_KEY)));
    ASSERT_TRUE(editor.Keys(L"F7"));
    ASSERT_TRUE(
        window::WaitFor([&] { return SendDlgItemMessageW(tools, IDC_TOOLS_HOT_KEY, HKM_GETHOTKEY, 0, 0) == VK_F7; }));
    ASSERT_TRUE(window::PressButton(tools, L"OK"));
    const std::string expected = "[Tool]\r\nDisplayName=Mark it\r\nCommand=" + Program() + " one\r\nHotKey=118\r\n";
    ASSERT_TRUE(WaitUntilSaved());
    EXPECT_EQ(files::Read(files::SettingsPath()), expected);
    EXPECT_EQ(ToolItems(), Names({L"Mark it"}));
    ASSERT_TRUE(editor.Keys(L"F7"));
    EXPECT_TRUE(Got(L"one.done"));
}

TEST_F(ToolTest, ADeletedToolIsGoneWithItsKey) {
    Settings(Captured("One", "rem one", "HotKey=118\n") + Captured("Two", "rem two", "HotKey=120\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    const auto deleteFirst = [&] {
        const HWND tools = OpenDialog(IDM_CUSTOMIZE);
        return tools && window::PressButton(tools, L"Delete") && window::PressButton(tools, L"OK") &&
               editor.WaitForNoDialog();
    };
    ASSERT_TRUE(deleteFirst());
    EXPECT_EQ(ToolItems(), Names({L"Two"}));
    ASSERT_TRUE(editor.Keys(L"F7"));
    Settle();
    EXPECT_EQ(WindowItems().size(), 1u) << "nothing runs";
    editor.Command(IDM_FIRST_TOOL);
    EXPECT_TRUE(WaitForFinished(L"rem two ")) << "it is the first tool now";
    ASSERT_TRUE(ReturnToFile());
    ASSERT_TRUE(editor.Keys(L"F9"));
    EXPECT_TRUE(WaitForFinished(L"rem two ")) << "its key is still its own";
    ASSERT_TRUE(deleteFirst());
    EXPECT_EQ(ToolItems(), Names({L"< no tools >"}));
    EXPECT_FALSE(IsEnabled(IDM_FIRST_TOOL));
}

TEST_F(ToolTest, CancelInTheToolsDialogWritesNothing) {
    const std::string written = "[Tool]\nDisplayName=x\nCommand=y\n";
    Settings(written);
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    const HWND tools = OpenDialog(IDM_CUSTOMIZE);
    ASSERT_TRUE(tools);
    for (const wchar_t* button : {L"Add", L"Delete", L"Delete"}) ASSERT_TRUE(window::PressButton(tools, button));
    Settle();
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(WaitUntilSaved());
    EXPECT_EQ(files::Read(files::SettingsPath()), written);
    EXPECT_EQ(ToolItems(), Names({L"x"}));
}

TEST_F(ToolTest, OptionsWorkAtOnceAndAreSaved) {
    Settings("[General]\nReplaceTabs=0\nMine=kept\n[Tool]\nDisplayName=x\nCommand=y\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    const HWND options = OpenDialog(IDM_OPTIONS);
    ASSERT_TRUE(options);
    EXPECT_EQ(window::TextOf(options), L"Options");
    ASSERT_TRUE(ReachWith(L"Alt+S", window::Control(options, IDC_SPACES_PER_TAB)));
    ASSERT_TRUE(editor.Keys(L"Home Shift+End"));
    ASSERT_TRUE(editor.Type(L"3"));
    ASSERT_TRUE(editor.Keys(L"Alt+R"));
    const HWND replaceTabs = window::Control(options, IDC_REPLACE_TABS);
    ASSERT_TRUE(window::WaitFor([&] { return SendMessageW(replaceTabs, BM_GETCHECK, 0, 0) == BST_CHECKED; }));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(WaitUntilSaved());
    const std::string saved = files::Read(files::SettingsPath());
    EXPECT_EQ(saved.substr(0, 63), "[General]\r\nReplaceTabs=1\r\nMine=kept\r\nFontName=Courier New\r\nFont");
    EXPECT_NE(saved.find("\r\nSpacesPerTab=3\r\n"), std::string::npos);
    const std::string tool = "BinBg=#ffffff\r\n\r\n[Tool]\r\nDisplayName=x\r\nCommand=y\r\n";
    EXPECT_EQ(saved.substr(saved.size() - std::min(saved.size(), tool.size())), tool);
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_EQ(SaveAndRead(L"a.txt").substr(0, 4), "   a");
}

TEST_F(ToolTest, CancelInTheOptionsDialogWritesNothing) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    const HWND options = OpenDialog(IDM_OPTIONS);
    ASSERT_TRUE(options);
    for (const wchar_t* box : {L"Replace tabs with spaces", L"Show whitespace"})
        ASSERT_TRUE(window::PressButton(options, box));
    Settle();
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(WaitUntilSaved());
    EXPECT_FALSE(files::Exists(files::SettingsPath()));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_EQ(SaveAndRead(L"a.txt").substr(0, 5), "    a");
}
