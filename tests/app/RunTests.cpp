// Commands that run into output documents, started from the command window.

#include "app/RunTest.h"

TEST_F(RunTest, ACommandRunsIntoADocumentOfItsName) {
    Script(L"one", "say first\\r\\n\nwait go\nsay last\\r\\n\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    EXPECT_TRUE(WaitForRunning(L"%SPEAK% one"));
    EXPECT_TRUE(window::WaitFor([&] { return !editor.CommandWindow(); }));
    EXPECT_TRUE(WaitForText(L"first\r\n"));
    Give(L"go");
    EXPECT_TRUE(WaitForFinished(L"%SPEAK% one"));
    EXPECT_EQ(Text(), L"first\r\nlast\r\n");
}

TEST_F(RunTest, AnExclamationMarkRunsACommandOfACommandsName) {
    ASSERT_TRUE(files::Write(Path(L"pwd.bat"), "@echo told\r\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(L"!pwd.bat"));
    EXPECT_TRUE(WaitForFinished(L"pwd.bat"));
    EXPECT_EQ(Text(), L"told\r\n");
}

TEST_F(RunTest, ACaretAtTheEndFollowsAndAnotherStays) {
    Script(L"steps", "say 1\\n2\\n3\nwait one\nsay \\n4\\n5\nwait two\nsay \\n6\\n7\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"steps")));
    EXPECT_TRUE(WaitForLine(3));
    Give(L"one");
    EXPECT_TRUE(WaitForLine(5));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home"));
    EXPECT_TRUE(WaitForLine(1));
    Give(L"two");
    EXPECT_TRUE(WaitForFinished(Speak(L"steps")));
    EXPECT_TRUE(WaitForLine(1));
    EXPECT_EQ(Text(), L"1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7");
}

TEST_F(RunTest, TypingIntoTheOutputChangesNothing) {
    Script(L"one", "say text\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(RunToTheEnd(L"one"));
    ASSERT_TRUE(editor.Type(L"xy"));
    ASSERT_TRUE(editor.Keys(L"Backspace Delete Ctrl+V Tab"));
    EXPECT_EQ(Text(), L"text");
    EXPECT_EQ(editor.Title(), Speak(L"one") + L" - Orvane");
}

TEST_F(RunTest, TheSameCommandReusesItsDocument) {
    Script(L"one", "say some\\n\nwhere\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    for (int i = 0; i < 2; i++) {
        ASSERT_TRUE(RunToTheEnd(L"one"));
        EXPECT_TRUE(WaitForText(L"some\r\n" + scratch.Folder() + L"\r\n"));
        ASSERT_TRUE(ReturnToFile());
    }
    EXPECT_EQ(WindowItems(), Names({L"&1 " + Path(L"a.txt"), L"&2 %SPEAK% one"}));
}

TEST_F(RunTest, AShorterRunOutOfSightIsShownFromItsStart) {
    Script(L"one", "repeat 200 line\\n\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(RunToTheEnd(L"one"));
    ASSERT_TRUE(WaitForLine(201));
    ASSERT_TRUE(ReturnToFile());
    Script(L"one", "repeat 3 line\\n\n");
    ASSERT_TRUE(RunToTheEnd(L"one"));
    ASSERT_TRUE(WaitForLine(4));
    EXPECT_TRUE(WaitForCaretRow(3));
}

TEST_F(RunTest, WhatIsPrintedOutOfSightIsFollowed) {
    Script(L"one", "say first\\n\nwait go\nrepeat 1000 line\\n\nmake done\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    ASSERT_TRUE(WaitForLine(2));
    ASSERT_TRUE(ReturnToFile());
    Give(L"go");
    ASSERT_TRUE(Got(L"done"));
    ASSERT_TRUE(window::WaitFor([&] { return IsEnabled(IDM_CLOSE_OUTPUT_WINDOWS); })) << "it has ended";
    ASSERT_TRUE(editor.Keys(L"Ctrl+2"));
    ASSERT_TRUE(WaitForFinished(Speak(L"one")));
    ASSERT_TRUE(WaitForLine(1002));
    RECT client = {};
    GetClientRect(Panes().at(0), &client);
    const RECT caret = Caret();
    EXPECT_GT(caret.bottom, caret.top);
    EXPECT_LE(caret.bottom, client.bottom);
    EXPECT_GT(caret.bottom, client.bottom - 2 * (caret.bottom - caret.top)) << "on the last row";
}

TEST_F(RunTest, AnotherCommandGetsADocumentOfItsOwn) {
    Script(L"one", "say one\n");
    Script(L"two", "say two\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    for (const wchar_t* script : {L"one", L"two"}) {
        ASSERT_TRUE(RunToTheEnd(script));
        EXPECT_EQ(Text(), script);
    }
    EXPECT_EQ(WindowItems().size(), 3u);
}

TEST_F(RunTest, TheSameCommandAgainWhileItRunsLetsItRunOn) {
    Script(L"one", "say one\nmake started\nwait go\nsay two\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    ASSERT_TRUE(WaitForText(L"one"));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    EXPECT_TRUE(editor.Answer(L"This command is still running: " + Speak(L"one"), L"OK"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(WaitForText(L"one"));
    EXPECT_TRUE(WaitForRunning(Speak(L"one")));
    Give(L"go");
    EXPECT_TRUE(WaitForFinished(Speak(L"one")));
    EXPECT_EQ(Text(), L"onetwo");
    EXPECT_EQ(WindowItems().size(), 2u);
}

TEST_F(RunTest, ADocumentOfTheUsersIsNotTakenForOutput) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    ASSERT_TRUE(editor.Type(L"mine"));
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1* - Orvane"));
    ASSERT_TRUE(editor.RunCommandLine(L"!Untitled1"));
    ASSERT_TRUE(window::WaitFor([&] { return WindowItems().size() == 2; }));
    EXPECT_TRUE(WaitForFinished(L"Untitled1"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1* - Orvane"));
    EXPECT_EQ(Text(), L"mine");
}

TEST_F(RunTest, TheConsoleCollectsEverythingInOneDocument) {
    Script(L"one", "say one\\n\n");
    Script(L"two", "say two\\n\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(L"console"));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    ASSERT_TRUE(WaitForFinished(L"Output"));
    EXPECT_EQ(editor.Focus(), editor.CommandWindow()) << "for the next command";
    ASSERT_TRUE(LeaveTheCommandWindow());
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"two")));
    ASSERT_TRUE(RunInConsole(L"console 0"));
    EXPECT_TRUE(WaitForText(L"one\r\ntwo\r\n"));
    EXPECT_EQ(WindowItems(), Names({L"&1 " + Path(L"a.txt"), L"&2 Output"}));
}

TEST_F(RunTest, ClsEmptiesTheConsoleWhileACommandRuns) {
    Script(L"one", "say one\\n\nwait go\nsay two\\n\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(L"console"));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    ASSERT_TRUE(WaitForRunning(L"Output"));
    ASSERT_TRUE(LeaveTheCommandWindow());
    ASSERT_TRUE(WaitForLine(2));
    ASSERT_TRUE(RunInConsole(L"cls"));
    EXPECT_TRUE(WaitForText(L""));
    Give(L"go");
    ASSERT_TRUE(WaitForFinished(L"Output"));
    ASSERT_TRUE(RunInConsole(L"console 0"));
    EXPECT_TRUE(WaitForText(L"two\r\n"));
}

TEST_F(RunTest, InASplitTheOutputIsShownInTheOtherPane) {
    Script(L"one", "say one\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(RunToTheEnd(L"one"));
    ASSERT_TRUE(ReturnToFile());
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    EXPECT_TRUE(WaitForFinished(Speak(L"one")));
    EXPECT_TRUE(WaitForText(L"one"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    // So is that of a command without a document.
    Script(L"two", "say two\n");
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"two")));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    EXPECT_TRUE(WaitForFinished(Speak(L"two")));
    EXPECT_TRUE(WaitForText(L"two"));
    EXPECT_EQ(Panes().size(), 2u);
}

TEST_F(RunTest, InASplitTheConsoleIsShownInTheActivePane) {
    Script(L"one", "say one\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    ASSERT_TRUE(editor.RunCommandLine(L"console"));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    ASSERT_TRUE(WaitForFinished(L"Output"));
    ASSERT_TRUE(LeaveTheCommandWindow());
    EXPECT_TRUE(WaitForText(L"one"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
}

TEST_F(RunTest, ASecondCommandOfTheConsoleWhileOneRunsIsRefused) {
    Script(L"one", "say one\nwait go\nsay , last\n");
    Script(L"two", "make two.done\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(L"console"));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    ASSERT_TRUE(WaitForRunning(L"Output"));
    ASSERT_TRUE(LeaveTheCommandWindow());
    ASSERT_TRUE(WaitForText(L"one"));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"two")));
    EXPECT_TRUE(editor.Answer(L"A command is still running in the document Output.", L"OK"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(LeaveTheCommandWindow());
    EXPECT_TRUE(WaitForText(L"one"));
    EXPECT_TRUE(WaitForRunning(L"Output"));
    Give(L"go");
    EXPECT_TRUE(WaitForFinished(L"Output"));
    EXPECT_EQ(Text(), L"one, last");
    EXPECT_FALSE(files::Exists(Path(L"two.done")));
    EXPECT_EQ(WindowItems().size(), 2u);
}

TEST_F(RunTest, EnterAndDoubleClickGoToTheFilePositionOfTheLine) {
    ASSERT_TRUE(files::Write(Path(L"b.txt"), "1\n2\n3\n4\n5"));
    Script(L"one", "say nothing here\\nb.txt(3): error\\nb.txt:5: warning\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(RunToTheEnd(L"one"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home Down Enter"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    EXPECT_TRUE(WaitForLine(3));
    ASSERT_TRUE(editor.Keys(L"Ctrl+2"));
    ASSERT_TRUE(WaitForFinished(Speak(L"one")));
    // The third line, anywhere below the first two.
    const HWND pane = Panes().at(0);
    ASSERT_TRUE(editor.Keys(L"Ctrl+Home Down Down"));
    ASSERT_TRUE(WaitForLine(3));
    ASSERT_TRUE(WaitForCaretRow(2));
    const RECT caret = Caret();
    const LPARAM place = MAKELPARAM(caret.left + 30, (caret.top + caret.bottom) / 2);
    PostMessageW(pane, WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMessageW(pane, WM_LBUTTONUP, 0, place);
    PostMessageW(pane, WM_LBUTTONDBLCLK, MK_LBUTTON, place);
    PostMessageW(pane, WM_LBUTTONUP, 0, place);
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    EXPECT_TRUE(WaitForLine(5));
}

TEST_F(RunTest, AFilePositionBeyondTheEndIsTheLastLine) {
    ASSERT_TRUE(files::Write(Path(L"b.txt"), "1\n2\n3\n4\n5"));
    Script(L"one", "say b.txt(6)\\nb.txt(2147483649)\\nb.txt(4294967297)\\nb.txt(0)\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(RunToTheEnd(L"one"));
    for (const wchar_t* keys : {L"Ctrl+Home Enter", L"Ctrl+Home Down Enter", L"Ctrl+Home Down Down Enter"}) {
        ASSERT_TRUE(editor.Keys(keys));
        EXPECT_TRUE(WaitForFile(L"b.txt"));
        EXPECT_TRUE(WaitForLine(5)) << keys;
        ASSERT_TRUE(editor.Keys(L"Up Up Ctrl+2"));
        ASSERT_TRUE(WaitForFinished(Speak(L"one")));
    }
    ASSERT_TRUE(editor.Keys(L"Ctrl+End Enter"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    EXPECT_TRUE(WaitForLine(3)) << "no line, and so none to go to";
}

TEST_F(RunTest, StopToolAsksTheWindowsOfTheCommandToClose) {
    SetEnvironment(L"COMSPEC", SpeakerPath().c_str());
    SetEnvironment(L"SPEAKER_SCRIPT", L"window");
    Script(L"window", "say open\nwindow Orvane Test Command\nsay , closed\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    EXPECT_FALSE(IsEnabled(IDM_STOP_TOOL));
    ASSERT_TRUE(editor.RunCommandLine(L"!anything"));
    ASSERT_TRUE(WaitForRunning(L"anything"));
    ASSERT_TRUE(window::WaitFor([] { return FindWindowW(nullptr, L"Orvane Test Command") != nullptr; }));
    // Of the documents only the active one is looked at.
    ASSERT_TRUE(ReturnToFile());
    EXPECT_FALSE(IsEnabled(IDM_STOP_TOOL));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Break"));
    Settle();
    EXPECT_NE(FindWindowW(nullptr, L"Orvane Test Command"), nullptr);
    ASSERT_TRUE(editor.Keys(L"Ctrl+2"));
    ASSERT_TRUE(WaitForRunning(L"anything"));
    EXPECT_TRUE(IsEnabled(IDM_STOP_TOOL));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Break"));
    EXPECT_TRUE(WaitForFinished(L"anything"));
    EXPECT_EQ(Text(), L"open, closed");
    EXPECT_FALSE(IsEnabled(IDM_STOP_TOOL));
}

TEST_F(RunTest, CloseOutputWindowsLeavesWhatStillRuns) {
    Script(L"one", "say one\n");
    Script(L"two", "wait go\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(RunToTheEnd(L"one"));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"two")));
    ASSERT_TRUE(WaitForRunning(Speak(L"two")));
    ASSERT_TRUE(editor.Keys(L"Alt+Shift+Left"));
    EXPECT_TRUE(window::WaitFor([&] { return WindowItems().size() == 2; }));
    EXPECT_EQ(WindowItems().back(), L"&2 " + Speak(L"two"));
    Give(L"go");
    ASSERT_TRUE(WaitForFinished(Speak(L"two")));
    ASSERT_TRUE(editor.Keys(L"Alt+Shift+Left"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
}

TEST_F(RunTest, ClosingTheDocumentWhileItsCommandRuns) {
    Script(L"one", "say one\nmake started\nwait go\nsay two\nmake done\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    ASSERT_TRUE(Got(L"started"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    Give(L"go");
    EXPECT_TRUE(Got(L"done"));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(WaitForFile(L"a.txt", true));
}

TEST_F(RunTest, ClosingTheEditorWhileACommandRuns) {
    Script(L"one", "make started\nwait go\nsay two\nmake done\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    ASSERT_TRUE(Got(L"started"));
    editor.Close();
    EXPECT_TRUE(WaitForEndWithCodeZero());
    Give(L"go");
    EXPECT_TRUE(Got(L"done"));
}

TEST_F(RunTest, BytesOfAllKindsLeaveTheEditorAlive) {
    Script(L"one", "say a\\x00b\\xFF\\xFE\\x80\\x1A\\x07\nrepeat 100000 \\x00\\x01\\xFF\nwait go\nsay \\nend\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
    ASSERT_TRUE(WaitForRunning(Speak(L"one")));
    Give(L"go");
    ASSERT_TRUE(WaitForFinished(Speak(L"one")));
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(WaitForFile(L"a.txt", true));
}

TEST_F(RunTest, MuchOutputIsAllThere) {
    Script(L"one", "repeat 400000 0123456789 0123456789 0123456789 0123456789\\n\nsay end\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(RunToTheEnd(L"one"));
    EXPECT_TRUE(WaitForLine(400001));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 4"));
}

TEST_F(RunTest, AFileThatACommandChangesIsAskedAboutAtItsEnd) {
    Script(L"one", "wait go\nmake a.txt\n");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    for (const wchar_t* shown : {L"Ctrl+2", L"Ctrl+1"}) {
        DeleteFileW(Path(L"go").c_str());
        ASSERT_TRUE(editor.RunCommandLine(Speak(L"one")));
        ASSERT_TRUE(WaitForRunning(Speak(L"one")));
        ASSERT_TRUE(editor.Keys(shown));
        Give(L"go");
        EXPECT_TRUE(editor.Answer(ReopenQuestion(Path(L"a.txt")), L"Yes"));
        EXPECT_TRUE(editor.WaitForNoDialog());
    }
}

TEST_F(RunTest, ACommandThatIsTooLongForTheSystemIsNotRun) {
    const size_t length = 100'000; // the system takes 32,767 characters
    ASSERT_TRUE(files::Write(Path(L"a.txt"), std::string(length, 'x')));
    ASSERT_TRUE(Start(L"a.txt"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+A"));
    ASSERT_TRUE(editor.RunCommandLine(L"!rem %SEL%"));
    EXPECT_TRUE(window::WaitFor([&] { return editor.Title().starts_with(L"rem xxx"); }));
    EXPECT_FALSE(IsEnabled(IDM_STOP_TOOL)) << "nothing runs";
    EXPECT_EQ(WindowItems().size(), 2u);
    ASSERT_TRUE(ReturnToFile());
    ASSERT_TRUE(editor.Keys(L"Ctrl+End"));
    ASSERT_TRUE(editor.Type(L"y"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), std::string(length, 'x') + "y");
}

TEST_F(RunTest, WithoutAnInterpreterNothingRuns) {
    for (const wchar_t* interpreter : {L"", L"Z:\\nowhere\\cmd.exe"}) {
        Editor other;
        SetEnvironment(L"COMSPEC", interpreter);
        ASSERT_TRUE(other.Start(L"", scratch.Folder()));
        ASSERT_TRUE(other.WaitForTitle(L"Untitled1 - Orvane"));
        ASSERT_TRUE(other.RunCommandLine(L"!command"));
        EXPECT_TRUE(other.WaitForTitle(L"command - Orvane"));
        ASSERT_TRUE(other.Keys(L"Ctrl+1"));
        ASSERT_TRUE(other.Type(L"x"));
        EXPECT_TRUE(other.WaitForTitle(L"Untitled1* - Orvane"));
    }
}

TEST_F(RunTest, WithoutATemporaryFolderNothingRuns) {
    SetEnvironment(L"TMP", L"Z:\\nowhere");
    SetEnvironment(L"TEMP", L"Z:\\nowhere");
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(L"!command"));
    EXPECT_TRUE(WaitForFinished(L"command"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(WaitForFile(L"a.txt", true));
}
