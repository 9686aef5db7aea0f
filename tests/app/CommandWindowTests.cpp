#include "app/AppTest.h"
#include "app/Clipboard.h"

#include <algorithm>

// The command window and its language, typed.

namespace {

class CommandWindowTest : public AppTest {
protected:
    // Opens a file of ten lines and shows the command window.
    void Show() {
        ASSERT_TRUE(OpenFile(L"a.txt", "1\n2\n3\n4\n5\n6\n7\n8\n9\n10"));
        ASSERT_TRUE(editor.Keys(L"Alt+C"));
        ASSERT_TRUE(
            window::WaitFor([&] { return editor.CommandWindow() && editor.Focus() == editor.CommandWindow(); }));
    }
    bool WaitUntilHidden() {
        return window::WaitFor([&] { return !editor.CommandWindow(); });
    }
};

} // namespace

TEST_F(CommandWindowTest, IsHiddenAtStartAndToggledByAltC) {
    ASSERT_TRUE(OpenFile(L"a.txt", "1"));
    EXPECT_FALSE(editor.CommandWindow());
    EXPECT_EQ(editor.Status(0).text, L"");
    ASSERT_TRUE(editor.Keys(L"Alt+C"));
    EXPECT_TRUE(window::WaitFor([&] { return editor.CommandWindow() && editor.Focus() == editor.CommandWindow(); }));
    EXPECT_TRUE(editor.WaitForStatus(0, scratch.Folder()));
    EXPECT_EQ(editor.Status(0).drawing, SBT_NOBORDERS);
    ASSERT_TRUE(editor.Keys(L"Alt+C"));
    EXPECT_TRUE(WaitUntilHidden());
    EXPECT_TRUE(editor.WaitForStatus(0, L""));
}

TEST_F(CommandWindowTest, EscapeHidesItAndGivesTheFocusBack) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(WaitUntilHidden());
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L"* - Orvane"));
}

TEST_F(CommandWindowTest, PwdWritesTheDirectoryAndStays) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"pwd ignored"));
    EXPECT_TRUE(editor.WaitForCommandText(scratch.Folder()));
    EXPECT_EQ(editor.Focus(), editor.CommandWindow());
}

TEST_F(CommandWindowTest, CdChangesTheDirectory) {
    ASSERT_TRUE(files::MakeFolder(Path(L"sub folder")));
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"cd \"sub folder\""));
    EXPECT_TRUE(editor.WaitForStatus(0, Path(L"sub folder")));
    ASSERT_TRUE(editor.RunCommandLine(L"cd"));
    EXPECT_TRUE(editor.WaitForCommandText(Path(L"sub folder")));
    ASSERT_TRUE(editor.RunCommandLine(L"cd nowhere"));
    ASSERT_TRUE(editor.RunCommandLine(L"pwd"));
    EXPECT_TRUE(editor.WaitForCommandText(Path(L"sub folder")));
}

TEST_F(CommandWindowTest, FileWritesTheFullPath) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"f"));
    EXPECT_TRUE(editor.WaitForCommandText(Path(L"a.txt")));
}

TEST_F(CommandWindowTest, LineMovesTheCaretAndHidesTheWindow) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"line 5x"));
    EXPECT_TRUE(WaitUntilHidden());
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 5"));
    ASSERT_TRUE(editor.RunCommandLine(L"l 0"));
    EXPECT_TRUE(WaitUntilHidden());
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 5"));
}

TEST_F(CommandWindowTest, EditOpensAQuotedPathWithForwardSlashes) {
    ASSERT_TRUE(files::Write(Path(L"a b.txt"), "text"));
    ASSERT_NO_FATAL_FAILURE(Show());
    std::wstring path = Path(L"a b.txt");
    std::replace(path.begin(), path.end(), L'\\', L'/');
    ASSERT_TRUE(editor.RunCommandLine(L"edit \"" + path + L"\""));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"a b.txt") + L" - Orvane"));
}

TEST_F(CommandWindowTest, EditAsksBeforeItMakesAFile) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"e missing.txt"));
    EXPECT_TRUE(editor.Answer(L"Create file missing.txt?", L"No"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L" - Orvane"));
}

TEST_F(CommandWindowTest, SetoptWorksAtOnce) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"setopt ReplaceTabs 1"));
    EXPECT_TRUE(WaitUntilHidden());
    ASSERT_TRUE(editor.RunCommandLine(L"setopt SpacesPerTab 2 ignored"));
    EXPECT_TRUE(WaitUntilHidden());
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_EQ(SaveAndRead(L"a.txt").substr(0, 4), "  1\n");
}

TEST_F(CommandWindowTest, ReloadoptionsReadsTheFileAgain) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(files::Write(files::SettingsPath(), "[General]\nReplaceTabs=1\nSpacesPerTab=5\n"));
    ASSERT_TRUE(editor.RunCommandLine(L"reloadoptions"));
    EXPECT_TRUE(WaitUntilHidden());
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_EQ(SaveAndRead(L"a.txt").substr(0, 7), "     1\n");
}

TEST_F(CommandWindowTest, ConsoleKeepsTheWindowAndIsShown) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"console"));
    EXPECT_TRUE(editor.WaitForStatus(0, scratch.Folder() + L" [Console]"));
    ASSERT_TRUE(editor.RunCommandLine(L"line 3"));
    ASSERT_TRUE(editor.RunCommandLine(L"pwd"));
    EXPECT_TRUE(editor.WaitForCommandText(scratch.Folder()));
    ASSERT_TRUE(editor.RunCommandLine(L"console 0"));
    EXPECT_TRUE(editor.WaitForStatus(0, scratch.Folder()));
}

TEST_F(CommandWindowTest, RunExecutesEveryLineOfAScript) {
    ASSERT_TRUE(files::Write(Path(L"inner"), "line 7\n"));
    ASSERT_TRUE(files::Write(Path(L"outer"), "line 3\r\nrun inner\r\n"));
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"run outer"));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 7"));
}

TEST_F(CommandWindowTest, AScriptThatRunsItselfEndsWithAMessage) {
    ASSERT_TRUE(files::Write(Path(L"loop"), "run loop\nline 4\n"));
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"run loop"));
    const HWND box = editor.WaitForDialog();
    ASSERT_TRUE(box);
    EXPECT_EQ(window::TextOf(box), L"Orvane");
    EXPECT_NE(window::DialogText(box), L"");
    EXPECT_TRUE(window::PressButton(box, L"OK"));
    // All of the scripts end there, none goes on with its next line, and the editor is as usable as before.
    EXPECT_TRUE(WaitUntilHidden());
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 1"));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_EQ(SaveAndRead(L"a.txt").substr(0, 3), "x1\n");
}

TEST_F(CommandWindowTest, HistoryGoesUpAndDownAndStopsAtItsEnds) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"bookmark 2"));
    ASSERT_TRUE(editor.RunCommandLine(L"bookmark 3"));
    for (const wchar_t* text : {L"bookmark 3", L"bookmark 2"}) {
        ASSERT_TRUE(editor.Keys(L"Up"));
        EXPECT_TRUE(editor.WaitForCommandText(text));
    }
    ASSERT_TRUE(editor.Keys(L"Up Down"));
    EXPECT_TRUE(editor.WaitForCommandText(L"bookmark 3"));
    ASSERT_TRUE(editor.Keys(L"Down Up"));
    EXPECT_TRUE(editor.WaitForCommandText(L"bookmark 2"));
}

TEST_F(CommandWindowTest, F8FindsTheNextEntryWithTheSameBeginning) {
    ASSERT_NO_FATAL_FAILURE(Show());
    for (const wchar_t* line : {L"cd .", L"bookmark 2", L"console 0"}) {
        ASSERT_TRUE(editor.RunCommandLine(line));
        ASSERT_TRUE(window::WaitFor([&] { return editor.CommandWindow() != nullptr; }));
    }
    ASSERT_TRUE(editor.Keys(L"Home Shift+End Delete"));
    ASSERT_TRUE(editor.Type(L"c"));
    ASSERT_TRUE(editor.WaitForCommandText(L"c"));
    ASSERT_TRUE(editor.Keys(L"F8"));
    EXPECT_TRUE(editor.WaitForCommandText(L"cd ."));
    ASSERT_TRUE(editor.Keys(L"F8"));
    EXPECT_TRUE(editor.WaitForCommandText(L"console 0"));
}

TEST_F(CommandWindowTest, TabCompletesSettingKeysAndFiles) {
    ASSERT_TRUE(files::Write(Path(L"quite-alone.txt"), "text"));
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.Keys(L"Home Shift+End Delete"));
    ASSERT_TRUE(editor.Type(L"setopt VarW"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_TRUE(editor.WaitForCommandText(L"setopt VarWidthLineNumbers"));
    ASSERT_TRUE(editor.Keys(L"Home Shift+End Delete"));
    ASSERT_TRUE(editor.Type(L"edit quite"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_TRUE(editor.WaitForCommandText(L"edit quite-alone.txt"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(editor.WaitForTitle(Path(L"quite-alone.txt") + L" - Orvane"));
}

TEST_F(CommandWindowTest, TypingAndPastingEndACompletionRun) {
    ASSERT_TRUE(files::Write(Path(L"pa1"), "") && files::Write(Path(L"pa2"), "") && files::Write(Path(L"pa22"), ""));
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.Type(L"e pa"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    ASSERT_TRUE(editor.WaitForCommandText(L"e pa1"));
    ASSERT_TRUE(editor.Keys(L"Backspace 2 Tab"));
    ASSERT_TRUE(editor.WaitForCommandText(L"e pa2")) << "a run of its own, which begins with the first match";
    ASSERT_TRUE(editor.Keys(L"Tab"));
    ASSERT_TRUE(editor.WaitForCommandText(L"e pa22"));
    ASSERT_TRUE(editor.Keys(L"Shift+Tab"));
    ASSERT_TRUE(editor.WaitForCommandText(L"e pa2"));
    ASSERT_TRUE(clipboard::SetText(L"2"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+V Tab"));
    EXPECT_TRUE(editor.WaitForCommandText(L"e pa22"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_TRUE(editor.WaitForCommandText(L"e pa22")) << "the only match";
}

TEST_F(CommandWindowTest, TheFocusSelectsAllAndEnterKeepsTheText) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.Type(L"bookmark 2"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    ASSERT_TRUE(editor.WaitForCommandText(L"bookmark 2"));
    ASSERT_TRUE(editor.Type(L"pwd")) << "over the line, which is selected";
    ASSERT_TRUE(editor.WaitForCommandText(L"pwd"));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(WaitUntilHidden());
    ASSERT_TRUE(editor.Keys(L"Alt+C"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.Focus() == editor.CommandWindow(); }));
    ASSERT_TRUE(editor.Type(L"l 3"));
    EXPECT_TRUE(editor.WaitForCommandText(L"l 3"));
}

TEST_F(CommandWindowTest, ABlankLineRunsNothing) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"  "));
    EXPECT_TRUE(WaitUntilHidden());
    EXPECT_EQ(editor.Title(), Path(L"a.txt") + L" - Orvane");
    EXPECT_EQ(OpenDocuments(), std::vector<std::wstring>{Path(L"a.txt")});
}

TEST_F(CommandWindowTest, EditbinOfAMissingFileSaysSo) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"eb missing"));
    EXPECT_TRUE(editor.Answer(L"Failed opening file: " + Path(L"missing"), L"OK"));
}

TEST_F(CommandWindowTest, QuitEndsWithCodeZero) {
    ASSERT_NO_FATAL_FAILURE(Show());
    ASSERT_TRUE(editor.RunCommandLine(L"quit"));
    DWORD code = 1;
    EXPECT_TRUE(editor.WaitForEnd(code));
    EXPECT_EQ(code, 0u);
}

TEST_F(CommandWindowTest, QuitAsksAndQuitNowDoesNot) {
    ASSERT_TRUE(OpenFile(L"a.txt", "1"));
    ASSERT_TRUE(editor.Type(L"x"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L"* - Orvane"));
    ASSERT_TRUE(editor.RunCommandLine(L"q"));
    EXPECT_TRUE(editor.Answer(L"Save changes to " + Path(L"a.txt") + L"?", L"Cancel"));
    ASSERT_TRUE(editor.RunCommandLine(L"q!"));
    DWORD code = 1;
    EXPECT_TRUE(editor.WaitForEnd(code));
    EXPECT_EQ(code, 0u);
    EXPECT_EQ(files::Read(Path(L"a.txt")), "1");
}
