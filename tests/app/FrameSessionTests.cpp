#include "app/FrameTest.h"

// Sessions: what is written of the open documents, and what comes back.

namespace {

class FrameSessionTest : public FrameTest {
protected:
    std::string Bytes(const std::wstring& path) const { return files::Utf8(path); }
    bool Run(const std::wstring& line) {
        return editor.RunCommandLine(line) && window::WaitFor([&] { return !editor.CommandWindow(); });
    }
    // Saves to a file that does not exist yet and reads it.
    std::string Saved(const std::wstring& name) {
        EXPECT_TRUE(Run(L"savesession " + name));
        return files::Read(Path(name));
    }
    // Two texts and a file of bytes, with a caret and bookmarks.
    void OpenSome() {
        ASSERT_TRUE(files::Write(Path(L"one two.txt"), "1\n2\n3\n4\n5\n6\n"));
        ASSERT_TRUE(files::Write(Path(L"b.txt"), "1\n2"));
        ASSERT_TRUE(files::Write(Path(L"bytes.bin"), "123"));
        ASSERT_TRUE(Start(L"\"one two.txt\" b.txt -b bytes.bin"));
        ASSERT_TRUE(WaitForFile(L"bytes.bin"));
        ASSERT_TRUE(editor.Keys(L"Ctrl+1 Ctrl+F2 Down Down Down Down Ctrl+F2 Up"));
        ASSERT_TRUE(editor.WaitForStatus(2, L"\tLn 4"));
        ASSERT_TRUE(editor.Keys(L"Ctrl+N"));
        ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    }
    std::string Some() const {
        return "sessionfile\r\ne " + Bytes(Path(L"one two.txt")) + "\r\nl 4\r\nbm 1\r\nbm 5\r\ne " +
               Bytes(Path(L"b.txt")) + "\r\nl 1\r\neb " + Bytes(Path(L"bytes.bin")) + "\r\n";
    }
    // Answers every question with No and every message with OK until the title is that of the file and there are no
    // more.
    bool DeclineUntil(const std::wstring& name) {
        return window::WaitFor([&] {
            const HWND box = editor.Dialog();
            if (!box) {
                Settle(); // the title is there before the last message
                return editor.Title() == TitleOf(name) && !editor.Dialog();
            }
            if (!window::PressButton(box, L"No")) window::PressButton(box, L"OK");
            return false;
        });
    }
};

} // namespace

TEST_F(FrameSessionTest, HoldsFilesCaretsAndBookmarksInOpeningOrder) {
    ASSERT_NO_FATAL_FAILURE(OpenSome());
    EXPECT_EQ(Saved(L"a.ses"), Some());
}

TEST_F(FrameSessionTest, OfUntitledDocumentsItIsOneLine) {
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.WaitForTitle(L"Untitled1 - Orvane"));
    ASSERT_TRUE(Run(L"opened"));
    EXPECT_EQ(Saved(L"a.ses"), "sessionfile\r\n");
}

TEST_F(FrameSessionTest, IsUtf8) {
    ASSERT_TRUE(OpenFiles({L"\x20AC \x3B1.txt"}));
    EXPECT_EQ(Saved(L"a.ses"), "sessionfile\r\ne " + Bytes(Path(L"\x20AC \x3B1.txt")) + "\r\nl 1\r\n");
}

TEST_F(FrameSessionTest, ComesBackAsItWas) {
    ASSERT_NO_FATAL_FAILURE(OpenSome());
    ASSERT_EQ(Saved(L"a.ses"), Some());
    Editor again;
    ASSERT_TRUE(again.Start(L"-r a.ses", scratch.Folder()));
    ASSERT_TRUE(again.WaitForTitle(TitleOf(L"bytes.bin")));
    ASSERT_TRUE(again.RunCommandLine(L"savesession b.ses"));
    EXPECT_EQ(files::Read(Path(L"b.ses")), Some());
}

TEST_F(FrameSessionTest, RunTwiceItTakesTheBookmarksAway) {
    ASSERT_NO_FATAL_FAILURE(OpenSome());
    ASSERT_EQ(Saved(L"a.ses"), Some());
    ASSERT_TRUE(Run(L"run a.ses"));
    const std::string bare = "sessionfile\r\ne " + Bytes(Path(L"one two.txt")) + "\r\nl 4\r\ne " +
                             Bytes(Path(L"b.txt")) + "\r\nl 1\r\neb " + Bytes(Path(L"bytes.bin")) + "\r\n";
    EXPECT_EQ(Saved(L"b.ses"), bare);
}

TEST_F(FrameSessionTest, SavingDoesNotMakeItTheSession) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_NE(Saved(L"a.ses"), "");
    ASSERT_TRUE(editor.RunCommandLine(L"savesession"));
    EXPECT_TRUE(editor.Answer(L"Please specify a filename.", L"OK"));
}

TEST_F(FrameSessionTest, TheSessionThatWasRunIsSavedWithoutAQuestion) {
    ASSERT_TRUE(files::Write(Path(L"a.ses"), "sessionfile\r\n"));
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Run(L"run a.ses"));
    ASSERT_TRUE(Run(L"ss"));
    const std::string saved = "sessionfile\r\ne " + Bytes(Path(L"a.txt")) + "\r\nl 1\r\n";
    EXPECT_EQ(files::Read(Path(L"a.ses")), saved);
    ASSERT_TRUE(files::Write(Path(L"a.ses"), ""));
    ASSERT_TRUE(Run(L"ss A.SES"));
    EXPECT_EQ(files::Read(Path(L"a.ses")), saved);
}

TEST_F(FrameSessionTest, AnotherFileIsReplacedOnYesOnly) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(files::Write(Path(L"my file"), "old"));
    const std::wstring question = L"my file already exists.\nWould you like to overwrite it?";
    for (const wchar_t* button : {L"No", L"Cancel"}) {
        ASSERT_TRUE(editor.RunCommandLine(L"ss my file"));
        EXPECT_TRUE(editor.Answer(question, button));
        ASSERT_TRUE(window::WaitFor([&] { return !editor.CommandWindow(); }));
        EXPECT_FALSE(editor.Dialog());
        EXPECT_EQ(files::Read(Path(L"my file")), "old");
    }
    ASSERT_TRUE(editor.RunCommandLine(L"ss my file"));
    EXPECT_TRUE(editor.Answer(question, L"Yes"));
    ASSERT_TRUE(window::WaitFor([&] { return !editor.CommandWindow(); }));
    EXPECT_EQ(files::Read(Path(L"my file")), "sessionfile\r\ne " + Bytes(Path(L"a.txt")) + "\r\nl 1\r\n");
}

TEST_F(FrameSessionTest, AFailureIsReported) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(files::MakeFolder(Path(L"folder")));
    ASSERT_TRUE(editor.RunCommandLine(L"ss folder"));
    EXPECT_TRUE(editor.Answer(L"folder already exists.\nWould you like to overwrite it?", L"Yes"));
    EXPECT_TRUE(editor.Answer(L"Failed saving file: folder", L"OK"));
    ASSERT_TRUE(editor.RunCommandLine(L"ss missing\\x"));
    EXPECT_TRUE(editor.Answer(L"Failed saving file: missing\\x", L"OK"));
}

TEST_F(FrameSessionTest, MissingFilesAreAskedAbout) {
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "1\n2\n3\n4\n5"));
    ASSERT_TRUE(files::Write(Path(L"s"), "sessionfile\r\ne a.txt\r\nl 2\r\ne gone.txt\r\nl 4\r\nbm 5\r\n"
                                         "e made.txt\r\nl 1\r\n"));
    ASSERT_TRUE(Start(L"-r s"));
    EXPECT_TRUE(editor.Answer(L"Create file gone.txt?", L"No"));
    // The lines that belong to it go to the document that is active.
    EXPECT_TRUE(editor.Answer(L"Create file made.txt?", L"Yes"));
    ASSERT_TRUE(WaitForFile(L"made.txt"));
    EXPECT_EQ(Saved(L"t"), "sessionfile\r\ne " + Bytes(Path(L"a.txt")) + "\r\nl 4\r\nbm 5\r\ne " +
                               Bytes(Path(L"made.txt")) + "\r\nl 1\r\n");
    EXPECT_FALSE(files::Exists(Path(L"made.txt"))); // not before it is saved
}

TEST_F(FrameSessionTest, DirectoriesDevicesAndItselfAreSurvived) {
    ASSERT_TRUE(files::MakeFolder(Path(L"folder")));
    ASSERT_TRUE(files::Write(Path(L"last.txt"), ""));
    ASSERT_TRUE(files::Write(Path(L"s"),
                             "sessionfile\r\ne .\r\ne ..\r\ne folder\r\ne folder\\\r\ne C:\\\r\neb folder\r\n"
                             "e NUL\r\ne CON\r\ne COM1\r\ne \\\\.\\C:\r\neb \\\\.\\NUL\r\neb CON\r\n"
                             "e s\r\nl 99999\r\nl 4294967295\r\nbm 99999\r\nbm 4294967295\r\n"
                             "e *\r\ne ?:\r\ne \"\r\ne\r\nl\r\nrun s2\r\nrun folder\r\ne last.txt\r\n"));
    ASSERT_TRUE(Start(L"-r s"));
    EXPECT_TRUE(DeclineUntil(L"last.txt"));
    EXPECT_TRUE(Modify(L"last.txt"));
}

TEST_F(FrameSessionTest, AMillionLinesAndAHundredMegabytesOfZerosAreSurvived) {
    std::string lines = "sessionfile\r\ne last.txt\r\n";
    // Few that show: telling the server of Wine about a row or the caret takes up to a tenth of a millisecond.
    for (int i = 0; i < 500000; i++) lines += i % 50 ? "l 2\r\nl 2\r\n" : "bm 2\r\nl 2\r\n";
    ASSERT_TRUE(files::Write(Path(L"s"), lines));
    const HANDLE zeros = CreateFileW(Path(L"zeros").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    SetFilePointer(zeros, 100 << 20, nullptr, FILE_BEGIN);
    SetEndOfFile(zeros);
    CloseHandle(zeros);
    ASSERT_TRUE(files::Write(Path(L"last.txt"), "1\n2"));
    ASSERT_TRUE(Start(L"-r zeros -r s"));
    // A million commands take their time.
    ASSERT_TRUE(window::WaitFor([&] { return editor.Title() == TitleOf(L"last.txt"); }, 120000));
    EXPECT_TRUE(editor.WaitForStatus(2, L"\tLn 2"));
    EXPECT_EQ(Saved(L"t"), "sessionfile\r\ne " + Bytes(Path(L"last.txt")) + "\r\nl 2\r\n");
}
