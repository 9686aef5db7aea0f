#include "app/FileDialogTest.h"

// Documents in the frame: new, shown, switched, saved and closed, with their titles and menu items.

using FrameDocumentTest = FileDialogTest;

TEST_F(FrameDocumentTest, UntitledNumbersAreNotUsedAgain) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(editor.WaitForTitle(L"Orvane"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+N"));
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled2 - Orvane"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+N"));
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled3 - Orvane"));
}

TEST_F(FrameDocumentTest, ClosingTheLastDocumentRemovesEveryPane) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    EXPECT_TRUE(editor.WaitForTitle(L"Orvane"));
    EXPECT_TRUE(WaitForPaneCount(0));
    for (const int part : {1, 2, 3, 4}) EXPECT_EQ(editor.Status(part).text, L"") << part;
    EXPECT_EQ(WindowItems(), Names{L"< no open documents >"});
    // The frame still has the keyboard, and what it opens gets a new first pane.
    ASSERT_TRUE(editor.Keys(L"Ctrl+N"));
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    EXPECT_TRUE(WaitForPanes({Expected(0, 0, 65536, 65536)}));
    EXPECT_EQ(GetDlgCtrlID(Panes()[0]), 8194);
    ASSERT_TRUE(editor.Type(L"x"));
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled1* - Orvane"));
}

TEST_F(FrameDocumentTest, PanesOfAClosedDocumentShowTheOneBeforeIt) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt"}));
    ASSERT_TRUE(editor.Keys(L"Ctrl+2"));
    ASSERT_TRUE(WaitForFile(L"b.txt"));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(WaitForPaneCount(2));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    ASSERT_TRUE(WaitForFocus(Panes()[1]));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    // Before the first one comes the last.
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    EXPECT_TRUE(WaitForFile(L"c.txt"));
    EXPECT_EQ(WindowItems(), Names{L"&1 " + Path(L"c.txt")});
}

TEST_F(FrameDocumentTest, CloseAsksAboutChangesAndCancelKeepsThem) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(Modify(L"b.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"b.txt")), L"Cancel"));
    EXPECT_TRUE(WaitForFile(L"b.txt", true));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"b.txt")), L"No"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    EXPECT_EQ(files::Read(Path(L"b.txt")), "b.txt");
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"a.txt")), L"Yes"));
    EXPECT_TRUE(editor.WaitForTitle(L"Orvane"));
    EXPECT_EQ(files::Read(Path(L"a.txt")), "xa.txt");
}

TEST_F(FrameDocumentTest, AnUntitledDocumentIsClosedOnlyWhenItsSaveSucceeded) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.Type(L"text"));
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1* - Orvane"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(editor.Answer(SaveQuestion(L"Untitled1"), L"Yes"));
    ASSERT_TRUE(WaitForDialogTitled(L"Save As"));
    ASSERT_TRUE(EndDialog(L"Cancel"));
    EXPECT_TRUE(editor.WaitForTitle(L"Untitled1* - Orvane"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(editor.Answer(SaveQuestion(L"Untitled1"), L"Yes"));
    ASSERT_TRUE(WaitForDialogTitled(L"Save As"));
    ASSERT_TRUE(TypeFileName(Path(L"saved.txt")));
    EXPECT_TRUE(editor.WaitForTitle(L"Orvane"));
    EXPECT_EQ(files::Read(Path(L"saved.txt")), "text");
}

TEST_F(FrameDocumentTest, AFailedSaveKeepsTheDocumentOpen) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Modify(L"a.txt"));
    const HANDLE held = CreateFileW(Path(L"a.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"a.txt")), L"Yes"));
    EXPECT_TRUE(editor.Answer(L"Failed saving file: " + Path(L"a.txt"), L"OK"));
    CloseHandle(held);
    EXPECT_TRUE(WaitForFile(L"a.txt", true));
}

TEST_F(FrameDocumentTest, SaveAllGoesOnAfterACancelledDialog) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+N"));
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    ASSERT_TRUE(editor.RunCommandLine(L"e b.txt"));
    ASSERT_TRUE(editor.Answer(L"Create file b.txt?", L"Yes"));
    ASSERT_TRUE(WaitForFile(L"b.txt"));
    editor.Command(IDM_SAVE_ALL);
    ASSERT_TRUE(WaitForDialogTitled(L"Save As"));
    ASSERT_TRUE(EndDialog(L"Cancel"));
    // Modified or not, everything is written.
    EXPECT_TRUE(window::WaitFor([&] { return files::Exists(Path(L"b.txt")); }));
    EXPECT_EQ(files::Read(Path(L"a.txt")), "xa.txt");
    EXPECT_EQ(WindowItems(), (Names{L"&1 " + Path(L"a.txt"), L"&2 Untitled1", L"&3 " + Path(L"b.txt")}));
}

TEST_F(FrameDocumentTest, NextAndPreviousFileGoRound) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt"}));
    for (const wchar_t* name : {L"a.txt", L"b.txt", L"c.txt"}) {
        ASSERT_TRUE(editor.Keys(L"Alt+N"));
        EXPECT_TRUE(WaitForFile(name));
    }
    for (const wchar_t* name : {L"b.txt", L"a.txt", L"c.txt"}) {
        ASSERT_TRUE(editor.Keys(L"Alt+P"));
        EXPECT_TRUE(WaitForFile(name));
    }
}

TEST_F(FrameDocumentTest, DigitsShowTheFirstTenDocuments) {
    Names names;
    for (wchar_t letter = L'a'; letter <= L'k'; letter++) names.push_back(std::wstring(1, letter) + L".txt");
    ASSERT_TRUE(OpenFiles(names));
    for (int digit = 1; digit <= 10; digit++) {
        ASSERT_TRUE(editor.Keys(L"Ctrl+" + std::to_wstring(digit % 10)));
        EXPECT_TRUE(WaitForFile(names[static_cast<size_t>(digit) - 1]));
    }
    const Names items = WindowItems();
    ASSERT_EQ(items.size(), names.size());
    EXPECT_EQ(items[9], L"&10 " + Path(L"j.txt"));
    EXPECT_EQ(items[10], L"&11 " + Path(L"k.txt"));
    // Nothing was typed by the digits.
    EXPECT_EQ(editor.Title(), TitleOf(L"j.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    ASSERT_TRUE(WaitForFile(L"h.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+0"));
    ASSERT_TRUE(Modify(L"h.txt"));
}

TEST_F(FrameDocumentTest, CtrlTabWalksInOrderOfUseWhileCtrlIsHeld) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt", L"d.txt"}));
    ASSERT_TRUE(editor.Keys(L"Ctrl+2"));
    ASSERT_TRUE(WaitForFile(L"b.txt"));
    // Most recently used first: b d c a. The order is frozen while Ctrl is down.
    ASSERT_TRUE(editor.Keys(L"+Ctrl Tab"));
    EXPECT_TRUE(WaitForFile(L"d.txt"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_TRUE(WaitForFile(L"c.txt"));
    ASSERT_TRUE(editor.Keys(L"Shift+Tab"));
    EXPECT_TRUE(WaitForFile(L"d.txt"));
    ASSERT_TRUE(editor.Keys(L"Tab Tab"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Tab"));
    EXPECT_TRUE(WaitForFile(L"b.txt")); // from the least to the most recently used
    ASSERT_TRUE(editor.Keys(L"Shift+Tab"));
    EXPECT_TRUE(WaitForFile(L"a.txt")); // and back
    ASSERT_TRUE(editor.Keys(L"-Ctrl"));
    // Now a b d c.
    ASSERT_TRUE(editor.Keys(L"Ctrl+Tab"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Tab"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    EXPECT_TRUE(Modify(L"a.txt"));
}

TEST_F(FrameDocumentTest, ALostReleaseOfCtrlEndsTheSwitching) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt"}));
    ASSERT_TRUE(editor.Keys(L"+Ctrl Tab"));
    ASSERT_TRUE(WaitForFile(L"b.txt"));
    Send(WM_ACTIVATEAPP, FALSE); // another program takes over and gets the release
    ASSERT_TRUE(editor.Keys(L"-Ctrl Ctrl+1"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Tab"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
}

TEST_F(FrameDocumentTest, WindowMenuListsAndShowsTheDocuments) {
    ASSERT_TRUE(OpenFiles({L"a & b.txt", L"c%s.txt"}));
    ASSERT_TRUE(Modify(L"c%s.txt"));
    std::wstring folder = scratch.Folder();
    EXPECT_EQ(WindowItems(), (Names{L"&1 " + folder + L"\\a && b.txt", L"&2 " + Path(L"c%s.txt") + L"*"}));
    editor.Command(IDM_FIRST_DOCUMENT);
    EXPECT_TRUE(WaitForFile(L"a & b.txt"));
    editor.Command(IDM_FIRST_DOCUMENT + 2); // there is none
    editor.Command(IDM_FIRST_DOCUMENT + 1);
    EXPECT_TRUE(WaitForFile(L"c%s.txt", true));
    // The box has the name as it is.
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"c%s.txt")), L"No"));
    ASSERT_TRUE(Modify(L"a & b.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F4"));
    EXPECT_TRUE(editor.Answer(SaveQuestion(Path(L"a & b.txt")), L"No"));
}

TEST_F(FrameDocumentTest, ShowingADocumentOfAnotherPaneGivesItASecondView) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(editor.Keys(L"Alt+Right Ctrl+1"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"End"));
    ASSERT_TRUE(editor.Keys(L"F6 Ctrl+1"));
    ASSERT_TRUE(WaitForFile(L"a.txt"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 1"));
    ASSERT_TRUE(editor.Keys(L"F6"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 6"));
}

TEST_F(FrameDocumentTest, AHiddenDocumentKeepsItsCaret) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(editor.Keys(L"End Ctrl+1"));
    ASSERT_TRUE(editor.WaitForStatus(3, L"\tCol 1"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+2"));
    EXPECT_TRUE(editor.WaitForStatus(3, L"\tCol 6"));
}

TEST_F(FrameDocumentTest, OutputDocumentsAreClosedTogether) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt", L"d.txt"}));
    EXPECT_FALSE(IsEnabled(IDM_CLOSE_OUTPUT_WINDOWS));
    for (const wchar_t* digit : {L"Ctrl+2", L"Ctrl+4"}) {
        ASSERT_TRUE(editor.Keys(digit));
        ASSERT_TRUE(editor.RunCommandLine(L"mkoutput"));
        ASSERT_TRUE(window::WaitFor([&] { return !editor.CommandWindow(); }));
    }
    EXPECT_TRUE(IsEnabled(IDM_CLOSE_OUTPUT_WINDOWS));
    ASSERT_TRUE(editor.Keys(L"Alt+Shift+Left"));
    EXPECT_TRUE(WaitForFile(L"c.txt"));
    EXPECT_EQ(WindowItems(), (Names{L"&1 " + Path(L"a.txt"), L"&2 " + Path(L"c.txt")}));
}

TEST_F(FrameDocumentTest, EscapeLeavesAnOutputDocument) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(L"opened"));
    ASSERT_TRUE(editor.WaitForTitle(L"Output - Orvane"));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    // In any other document Escape changes nothing.
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(Modify(L"b.txt"));
}

TEST_F(FrameDocumentTest, TheCommandWindowGetsTheFocusBack) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.RunCommandLine(L"console 1"));
    ASSERT_TRUE(window::WaitFor([&] { return editor.Status(0).text == scratch.Folder() + L" [Console]"; }));
    ASSERT_TRUE(editor.Keys(L"Home Shift+End Delete"));
    ASSERT_TRUE(editor.Type(L"e missing\n"));
    ASSERT_TRUE(editor.Answer(L"Create file missing?", L"No"));
    EXPECT_TRUE(WaitForFocus(editor.CommandWindow()));
}

TEST_F(FrameDocumentTest, StatusFieldZeroShowsMessagesUntilTheCaretMoves) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(editor.Keys(L"Alt+C"));
    ASSERT_TRUE(editor.WaitForStatus(0, scratch.Folder()));
    ASSERT_TRUE(editor.Keys(L"F6")); // into the pane; the command window stays
    ASSERT_TRUE(WaitForFocus(Panes()[0]));
    EXPECT_TRUE(editor.WaitForStatus(0, scratch.Folder()));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Shift+4"));
    EXPECT_TRUE(editor.WaitForStatus(0, L"Macro 4 selected"));
    ASSERT_TRUE(editor.Keys(L"Right"));
    EXPECT_TRUE(editor.WaitForStatus(0, scratch.Folder()));
    EXPECT_TRUE(Modify(L"a.txt"));
    EXPECT_TRUE(editor.WaitForStatus(0, scratch.Folder()));
}
