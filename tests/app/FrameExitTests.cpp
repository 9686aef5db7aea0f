#include "app/FrameTest.h"

// The ways out of the program, and what is asked and written on each.

namespace {

class FrameExitTest : public FrameTest {
protected:
    // Three documents, of which the first and the last are modified; the last is shown.
    void OpenTwoModified() {
        ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt", L"c.txt"}));
        ASSERT_TRUE(Modify(L"c.txt"));
        ASSERT_TRUE(editor.Keys(L"Ctrl+1"));
        ASSERT_TRUE(WaitForFile(L"a.txt"));
        ASSERT_TRUE(Modify(L"a.txt"));
        ASSERT_TRUE(editor.Keys(L"Ctrl+3"));
        ASSERT_TRUE(WaitForFile(L"c.txt", true));
    }
    bool Answer(const wchar_t* name, const wchar_t* button) { return editor.Answer(SaveQuestion(Path(name)), button); }
    Names AllOpen() const {
        return {L"&1 " + Path(L"a.txt") + L"*", L"&2 " + Path(L"b.txt"), L"&3 " + Path(L"c.txt") + L"*"};
    }
};

} // namespace

TEST_F(FrameExitTest, ExitAsksForEachModifiedDocumentInListOrder) {
    ASSERT_NO_FATAL_FAILURE(OpenTwoModified());
    editor.Command(IDM_EXIT);
    EXPECT_TRUE(Answer(L"a.txt", L"Yes"));
    EXPECT_TRUE(Answer(L"c.txt", L"No"));
    EXPECT_TRUE(WaitForEndWithCodeZero());
    EXPECT_EQ(files::Read(Path(L"a.txt")), "xa.txt");
    EXPECT_EQ(files::Read(Path(L"c.txt")), "c.txt");
}

TEST_F(FrameExitTest, CancelAnywhereClosesNothing) {
    ASSERT_NO_FATAL_FAILURE(OpenTwoModified());
    editor.Close();
    EXPECT_TRUE(Answer(L"a.txt", L"No"));
    EXPECT_TRUE(Answer(L"c.txt", L"Cancel"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_EQ(WindowItems(), AllOpen());
    // With the keys, too.
    editor.Close();
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Keys(L"Escape"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_EQ(WindowItems(), AllOpen());
    EXPECT_EQ(files::Read(Path(L"a.txt")), "a.txt");
}

TEST_F(FrameExitTest, AFailedSaveEndsTheExit) {
    ASSERT_NO_FATAL_FAILURE(OpenTwoModified());
    const HANDLE held = CreateFileW(Path(L"a.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    editor.Close();
    EXPECT_TRUE(Answer(L"a.txt", L"Yes"));
    EXPECT_TRUE(editor.Answer(L"Failed saving file: " + Path(L"a.txt"), L"OK"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    CloseHandle(held);
    EXPECT_EQ(WindowItems(), AllOpen());
}

TEST_F(FrameExitTest, CloseBoxQuitAndExitAskTheSameWay) {
    ASSERT_NO_FATAL_FAILURE(OpenTwoModified());
    for (const auto& leave : std::vector<std::function<void()>>{
             [&] { PostMessageW(editor.Main(), WM_SYSCOMMAND, SC_CLOSE, 0); },
             [&] { ASSERT_TRUE(editor.RunCommandLine(L"quit")); },
             [&] { editor.Command(IDM_EXIT); },
         }) {
        leave();
        EXPECT_TRUE(Answer(L"a.txt", L"No"));
        EXPECT_TRUE(Answer(L"c.txt", L"Cancel"));
        EXPECT_TRUE(editor.WaitForNoDialog());
    }
    EXPECT_EQ(WindowItems(), AllOpen());
}

TEST_F(FrameExitTest, ASecondCloseRequestAsksNothingMore) {
    ASSERT_NO_FATAL_FAILURE(OpenTwoModified());
    editor.Close();
    ASSERT_TRUE(editor.WaitForDialog());
    editor.Close();
    Settle();
    EXPECT_EQ(window::TopLevel(editor.Process()).size(), 2u); // the main window and one question
    EXPECT_TRUE(Answer(L"a.txt", L"Cancel"));
    Settle();
    EXPECT_FALSE(editor.Dialog());
    EXPECT_EQ(WindowItems(), AllOpen());
}

TEST_F(FrameExitTest, QuitNowWaitsForTheQuestionOfTheSameScript) {
    ASSERT_TRUE(files::Write(Path(L"script"), "q!\ne missing\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(editor.RunCommandLine(L"run script"));
    EXPECT_TRUE(editor.Answer(L"Create file missing?", L"Yes"));
    EXPECT_TRUE(WaitForEndWithCodeZero());
    EXPECT_EQ(files::Read(Path(L"a.txt")), "a.txt");
}

TEST_F(FrameExitTest, EndOfTheWindowsSessionIsAnsweredAtOnceWhenNothingIsModified) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    EXPECT_EQ(Send(WM_QUERYENDSESSION), 1);
    EXPECT_FALSE(editor.Dialog());
    // The session goes on after all.
    Send(WM_ENDSESSION, FALSE);
    EXPECT_TRUE(Modify(L"a.txt"));
}

TEST_F(FrameExitTest, EndOfTheWindowsSessionIsRefusedAndAskedAboutAfterwards) {
    ASSERT_NO_FATAL_FAILURE(OpenTwoModified());
    EXPECT_EQ(Send(WM_QUERYENDSESSION), 0);
    Settle();
    EXPECT_FALSE(editor.Dialog());
    Send(WM_ENDSESSION, FALSE);
    EXPECT_TRUE(Answer(L"a.txt", L"Cancel"));
    EXPECT_TRUE(editor.WaitForNoDialog());
    EXPECT_EQ(WindowItems(), AllOpen());
    EXPECT_EQ(Send(WM_QUERYENDSESSION), 0);
    Send(WM_ENDSESSION, FALSE);
    EXPECT_TRUE(Answer(L"a.txt", L"Yes"));
    EXPECT_TRUE(Answer(L"c.txt", L"No"));
    EXPECT_TRUE(WaitForEndWithCodeZero());
    EXPECT_EQ(files::Read(Path(L"a.txt")), "xa.txt");
    EXPECT_EQ(files::Read(Path(L"c.txt")), "c.txt");
}

TEST_F(FrameExitTest, TheWindowsSessionThatEndsAllTheSameAsksNothing) {
    ASSERT_NO_FATAL_FAILURE(OpenTwoModified());
    EXPECT_EQ(Send(WM_QUERYENDSESSION), 0);
    PostMessageW(editor.Main(), WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(WaitForEndWithCodeZero());
    EXPECT_EQ(files::Read(Path(L"a.txt")), "a.txt");
}

TEST_F(FrameExitTest, EndOfTheWindowsSessionDuringAQuestionIsRefused) {
    ASSERT_NO_FATAL_FAILURE(OpenTwoModified());
    editor.Close();
    ASSERT_TRUE(editor.WaitForDialog());
    EXPECT_EQ(Send(WM_QUERYENDSESSION), 0);
    EXPECT_TRUE(Answer(L"a.txt", L"Cancel"));
    EXPECT_EQ(WindowItems(), AllOpen());
}

TEST_F(FrameExitTest, CommandsAndDropsUnderADialogDoNothing) {
    ASSERT_TRUE(OpenFiles({L"a.txt", L"b.txt"}));
    ASSERT_TRUE(editor.Keys(L"Ctrl+F"));
    ASSERT_TRUE(editor.WaitForDialog());
    editor.Command(IDM_CLOSE);
    editor.Command(IDM_CLOSE_PANE);
    editor.Close();
    Drop({Path(L"a.txt")});
    Settle();
    EXPECT_TRUE(editor.Dialog());
    EXPECT_EQ(editor.Title(), TitleOf(L"b.txt"));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(Modify(L"b.txt"));
    EXPECT_EQ(WindowItems().size(), 2u);
}
