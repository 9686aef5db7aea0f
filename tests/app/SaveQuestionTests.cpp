#include "app/FileDialogTest.h"

// What the program asks before it saves something else than the user expects.

namespace {

enum { EncodingList = 1035 };

class SaveQuestionTest : public FileDialogTest {};

} // namespace

TEST_F(SaveQuestionTest, AFileThatAnotherProgramHasWrittenIsSavedOverOnYesOnly) {
    const std::wstring question = Path(L"a.txt") + L" has been modified by another program.\nSave over it?";
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "theirs"));
    ASSERT_TRUE(files::MoveTime(Path(L"a.txt"), 10));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    ASSERT_TRUE(editor.Answer(question, L"Cancel"));
    EXPECT_EQ(files::Read(Path(L"a.txt")), "theirs");
    EXPECT_TRUE(WaitForFile(L"a.txt", true));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    ASSERT_TRUE(editor.Answer(question, L"No"));
    ASSERT_TRUE(WaitForDialogTitled(L"Save As"));
    ASSERT_TRUE(EndDialog(L"Cancel"));
    EXPECT_EQ(files::Read(Path(L"a.txt")), "theirs");
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    ASSERT_TRUE(editor.Answer(question, L"Yes"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    EXPECT_EQ(files::Read(Path(L"a.txt")), "xa.txt");
}

TEST_F(SaveQuestionTest, BytesThatCannotComeBackAreAskedAboutOnce) {
    ASSERT_TRUE(OpenFile(L"a.txt", std::string("a\0b", 3)));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    ASSERT_TRUE(
        editor.Answer(Path(L"a.txt") + L" contains bytes that cannot be saved as they were.\nSave over it?", L"Yes"));
    EXPECT_TRUE(WaitForFile(L"a.txt"));
    EXPECT_EQ(files::Read(Path(L"a.txt")), "xa b");
    ASSERT_TRUE(Modify(L"a.txt"));
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xxa b");
}

TEST_F(SaveQuestionTest, CharactersThatTheEncodingCannotHoldAreAskedAbout) {
    ASSERT_TRUE(OpenFile(L"a.txt", "\xFF\xFE" + files::Utf16(L"\x6F22")));
    editor.Command(IDM_SAVE_AS);
    ASSERT_TRUE(WaitForDialogTitled(L"Save As"));
    ASSERT_TRUE(Choose(EncodingList, L"ANSI"));
    ASSERT_TRUE(TypeFileName(Path(L"b.txt")));
    ASSERT_TRUE(editor.Answer(
        Path(L"b.txt") + L" contains characters that its encoding cannot hold.\nSave them as question marks?", L"Yes"));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    EXPECT_EQ(files::Read(Path(L"b.txt")), "?");
}
