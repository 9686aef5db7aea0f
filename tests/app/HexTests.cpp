#include "app/AppTest.h"

// Files opened as bytes, edited and saved in the real program.

namespace {

std::string Counting(int count) {
    std::string bytes;
    for (int i = 0; i < count; i++) bytes += static_cast<char>(i);
    return bytes;
}

// For reading, without sharing the right to write.
HANDLE OpenAlone(const std::wstring& path) {
    return CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
}

// Beside the editor.
HANDLE OpenShared(const std::wstring& path) {
    return CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                       OPEN_EXISTING, 0, nullptr);
}

// Whether the system keeps others from writing what is locked; not all do.
bool LocksAreKept(const std::wstring& path) {
    const HANDLE holder = OpenShared(path);
    const HANDLE other = OpenShared(path);
    DWORD written = 0;
    const bool kept = LockFile(holder, 0, 0, 1, 0) && !WriteFile(other, ".", 1, &written, nullptr);
    CloseHandle(other);
    CloseHandle(holder);
    return kept;
}

} // namespace

class HexTest : public AppTest {
protected:
    // The status part of the caret's offset, and that of messages.
    static constexpr int Offset = 2;
    static constexpr int Message = 0;

    bool OpenBytes(const std::string& bytes) {
        return OpenFile(L"data.bin", bytes, L"-b ") && editor.WaitForStatus(Offset, L"0000000000");
    }
    bool WaitForModified(bool modified) const {
        return editor.WaitForTitle(Path(L"data.bin") + (modified ? L"* - Orvane" : L" - Orvane"));
    }
    bool WaitForOffset(const std::wstring& digits) const { return editor.WaitForStatus(Offset, digits); }
    std::string Save() { return SaveAndRead(L"data.bin"); }
    // A command after which the command window goes.
    bool Run(const std::wstring& line) {
        return editor.RunCommandLine(line) && window::WaitFor([this] { return !editor.CommandWindow(); });
    }
    // Types a pattern into the Find dialog, whose choice of hex patterns it changes, and confirms.
    bool Find(const std::wstring& pattern) {
        if (!editor.Keys(L"Ctrl+F") || !editor.WaitForDialog()) return false;
        return editor.Keys(L"Home Shift+End") && editor.Type(pattern) && editor.Keys(L"Alt+H Enter");
    }
    bool AnswerNotSaved() { return editor.Answer(L"Failed saving file: " + Path(L"data.bin"), L"OK"); }
    bool GoTo(const std::wstring& offset) {
        if (!editor.Keys(L"Ctrl+G") || !editor.WaitForDialog()) return false;
        return editor.Type(offset) && editor.Keys(L"Enter") && editor.WaitForNoDialog();
    }
};

TEST_F(HexTest, TypingUndoRedoAndSaveChangeTheFileInPlace) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(editor.Type(L"4"));
    EXPECT_TRUE(WaitForModified(true));
    EXPECT_TRUE(WaitForOffset(L"0000000000"));
    ASSERT_TRUE(editor.Type(L"1"));
    EXPECT_TRUE(WaitForOffset(L"0000000001"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    EXPECT_TRUE(WaitForOffset(L"0000000000"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    EXPECT_TRUE(WaitForModified(false));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Y Ctrl+Y Down End"));
    EXPECT_TRUE(WaitForOffset(L"000000001F"));
    ASSERT_TRUE(editor.Type(L"ff"));
    EXPECT_TRUE(WaitForOffset(L"0000000020"));
    EXPECT_EQ(files::Read(Path(L"data.bin")), Counting(40)); // not before it is saved
    std::string expected = Counting(40);
    expected[0] = 0x41;
    expected[31] = '\xFF';
    EXPECT_EQ(Save(), expected);
}

TEST_F(HexTest, TheStatusBarShowsTheOffsetOnly) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(editor.Keys(L"Down Right"));
    EXPECT_TRUE(WaitForOffset(L"0000000011"));
    EXPECT_EQ(editor.Status(1).text, L"");
    EXPECT_EQ(editor.Status(3).text, L"");
    EXPECT_EQ(editor.Status(4).text, L"");
}

TEST_F(HexTest, AnEmptyFileIgnoresTyping) {
    ASSERT_TRUE(OpenBytes(""));
    ASSERT_TRUE(editor.Type(L"41"));
    ASSERT_TRUE(editor.Keys(L"Down End PageDown Right"));
    EXPECT_TRUE(WaitForOffset(L"0000000000"));
    EXPECT_EQ(editor.Title(), Path(L"data.bin") + L" - Orvane");
}

TEST_F(HexTest, PastedHexOverwritesAndNeverGrowsTheFile) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(clipboard::SetText(L"de AD\tbeef"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+V"));
    EXPECT_TRUE(WaitForOffset(L"0000000004"));
    ASSERT_TRUE(editor.Keys(L"Down Down Ctrl+V"));
    EXPECT_TRUE(WaitForOffset(L"0000000028"));
    ASSERT_TRUE(clipboard::SetText(L"no hex"));
    ASSERT_TRUE(editor.Keys(L"Up Ctrl+V"));
    EXPECT_TRUE(WaitForOffset(L"0000000018"));
    std::string expected = Counting(40);
    expected.replace(0, 4, "\xDE\xAD\xBE\xEF");
    expected.replace(36, 4, "\xDE\xAD\xBE\xEF");
    EXPECT_EQ(Save(), expected);
}

TEST_F(HexTest, TheSelectionIsCopiedAsHex) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(clipboard::Clear());
    ASSERT_TRUE(editor.Keys(L"End Shift+Right Shift+Right Shift+Right Ctrl+C"));
    EXPECT_TRUE(window::WaitFor([] { return clipboard::Text() == L"0F 10 11 "; }));
    EXPECT_FALSE(clipboard::HasFormat(L"orvane_singleline"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+A"));
    editor.Command(IDM_COPY);
    EXPECT_TRUE(window::WaitFor([] { return clipboard::Text().size() == 120; }));
}

TEST_F(HexTest, BytesAndTextAreFoundWithWrap) {
    ASSERT_TRUE(OpenBytes(Counting(40) + "needle NEEDLE"));
    ASSERT_TRUE(Find(L"0a 0B0c"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(WaitForOffset(L"000000000A"));
    EXPECT_EQ(editor.Status(Message).text, L"");
    ASSERT_TRUE(editor.Keys(L"F3"));
    EXPECT_TRUE(editor.WaitForStatus(Message, L"Passed end of file"));
    EXPECT_TRUE(WaitForOffset(L"000000000A"));

    ASSERT_TRUE(editor.Keys(L"Ctrl+F"));
    const HWND dialog = editor.WaitForDialog();
    ASSERT_TRUE(dialog);
    EXPECT_EQ(window::TextOf(GetDlgItem(dialog, IDC_FIND_WHAT)), L"0a 0B0c");
    EXPECT_EQ(SendDlgItemMessageW(dialog, IDC_HEX_PATTERN, BM_GETCHECK, 0, 0), BST_CHECKED);
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(Find(L"needle"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(WaitForOffset(L"0000000028"));
    ASSERT_TRUE(editor.Keys(L"F3"));
    EXPECT_TRUE(WaitForOffset(L"000000002F"));
    ASSERT_TRUE(editor.Keys(L"Shift+F3"));
    EXPECT_TRUE(WaitForOffset(L"0000000028"));
}

TEST_F(HexTest, AFailedSearchIsReportedAndKeepsTheSelection) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(editor.Keys(L"Right Right Shift+Right"));
    ASSERT_TRUE(Find(L"fe ff"));
    EXPECT_TRUE(editor.Answer(L"Text not found", L"OK"));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(clipboard::Clear());
    ASSERT_TRUE(editor.Keys(L"F3 Ctrl+C"));
    EXPECT_TRUE(window::WaitFor([] { return clipboard::Text() == L"02 "; }));
}

TEST_F(HexTest, GoToAsksForAnOffsetAndStopsAtTheEnd) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(editor.Keys(L"Down Right Shift+Right Ctrl+G"));
    const HWND dialog = editor.WaitForDialog();
    ASSERT_TRUE(dialog);
    EXPECT_EQ(window::TextOf(GetDlgItem(dialog, IDC_GOTO_LABEL)), L"&Offset");
    EXPECT_EQ(window::TextOf(GetDlgItem(dialog, IDC_GOTO_NUMBER)), L"0000000011"); // the anchor
    ASSERT_TRUE(editor.Type(L"1f"));
    ASSERT_TRUE(editor.Keys(L"Enter"));
    EXPECT_TRUE(WaitForOffset(L"000000001F"));
    ASSERT_TRUE(GoTo(L"123456789abcdef0123456789"));
    EXPECT_TRUE(WaitForOffset(L"0000000028"));
    ASSERT_TRUE(GoTo(L"nowhere"));
    ASSERT_TRUE(editor.Keys(L"Left"));
    EXPECT_TRUE(WaitForOffset(L"0000000027"));
    editor.Command(IDM_GOTO);
    ASSERT_TRUE(editor.WaitForDialog());
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(editor.WaitForNoDialog());
    EXPECT_TRUE(WaitForOffset(L"0000000027"));
}

TEST_F(HexTest, OffsetsBeyondFourGigabytesAreShownEditedAndSaved) {
    constexpr LONGLONG Size = (5LL << 30) + 16;
    const std::wstring path = Path(L"data.bin");
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    LARGE_INTEGER end = {};
    end.QuadPart = Size;
    const bool sized = SetFilePointerEx(file, end, nullptr, FILE_BEGIN) && SetEndOfFile(file);
    CloseHandle(file);
    if (!sized) GTEST_SKIP() << "no room for a large file";
    ASSERT_TRUE(Start(L"-b data.bin"));
    ASSERT_TRUE(WaitForModified(false));
    ASSERT_TRUE(GoTo(L"14000000a"));
    EXPECT_TRUE(WaitForOffset(L"014000000A"));
    ASSERT_TRUE(editor.Type(L"c3"));
    ASSERT_TRUE(WaitForModified(true));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    ASSERT_TRUE(WaitForModified(false));

    const HANDLE saved = OpenShared(path);
    ASSERT_NE(saved, INVALID_HANDLE_VALUE);
    LARGE_INTEGER size = {};
    EXPECT_TRUE(GetFileSizeEx(saved, &size));
    EXPECT_EQ(size.QuadPart, Size);
    end.QuadPart = 0x14000000ALL;
    unsigned char value = 0;
    DWORD read = 0;
    EXPECT_TRUE(SetFilePointerEx(saved, end, nullptr, FILE_BEGIN) && ReadFile(saved, &value, 1, &read, nullptr));
    EXPECT_EQ(value, 0xC3);
    CloseHandle(saved);
}

TEST_F(HexTest, AReadOnlyFileIsShownButNotTypedInto) {
    ASSERT_TRUE(files::Write(Path(L"data.bin"), Counting(40)));
    const HANDLE reader = OpenAlone(Path(L"data.bin"));
    ASSERT_NE(reader, INVALID_HANDLE_VALUE);
    ASSERT_TRUE(Start(L"-b data.bin"));
    ASSERT_TRUE(WaitForModified(false));
    ASSERT_TRUE(clipboard::SetText(L"ff"));
    ASSERT_TRUE(editor.Keys(L"Down Ctrl+V"));
    ASSERT_TRUE(editor.Type(L"41"));
    ASSERT_TRUE(editor.Keys(L"Right"));
    EXPECT_TRUE(WaitForOffset(L"0000000011"));
    EXPECT_EQ(editor.Title(), Path(L"data.bin") + L" - Orvane");
    CloseHandle(reader);
}

TEST_F(HexTest, AFileThatBecameShorterIsNotSaved) {
    ASSERT_TRUE(OpenBytes(Counting(100)));
    ASSERT_TRUE(editor.Type(L"41"));
    ASSERT_TRUE(WaitForModified(true));
    const HANDLE file = OpenShared(Path(L"data.bin"));
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    SetFilePointer(file, 10, nullptr, FILE_BEGIN);
    EXPECT_TRUE(SetEndOfFile(file));
    CloseHandle(file);
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(editor.Answer(Path(L"data.bin") + L" has been modified by another program.\nSave over it?", L"Yes"));
    EXPECT_TRUE(AnswerNotSaved());
    EXPECT_TRUE(WaitForModified(true));
    EXPECT_EQ(files::Read(Path(L"data.bin")), Counting(10));
}

TEST_F(HexTest, SavingAReadOnlyDocumentWithoutChangesSucceeds) {
    ASSERT_TRUE(files::Write(Path(L"data.bin"), Counting(40)));
    const HANDLE reader = OpenAlone(Path(L"data.bin"));
    ASSERT_NE(reader, INVALID_HANDLE_VALUE);
    ASSERT_TRUE(Start(L"-b data.bin"));
    ASSERT_TRUE(WaitForModified(false));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    editor.Command(IDM_SAVE_ALL);
    // A message that something was not saved would keep the program from leaving.
    editor.Command(IDM_EXIT);
    DWORD code = 1;
    EXPECT_TRUE(editor.WaitForEnd(code));
    EXPECT_EQ(code, 0u);
    CloseHandle(reader);
}

TEST_F(HexTest, AFileWithTheReadOnlyAttributeIsShownButNotTypedInto) {
    const std::wstring path = Path(L"data.bin");
    ASSERT_TRUE(files::Write(path, Counting(40)));
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
    const HANDLE writer = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (writer != INVALID_HANDLE_VALUE) {
        CloseHandle(writer);
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        GTEST_SKIP() << "this user may still write it";
    }
    ASSERT_TRUE(Start(L"-b data.bin"));
    ASSERT_TRUE(WaitForModified(false));
    ASSERT_TRUE(editor.Type(L"41"));
    ASSERT_TRUE(editor.Keys(L"Right"));
    EXPECT_TRUE(WaitForOffset(L"0000000001"));
    EXPECT_EQ(editor.Title(), Path(L"data.bin") + L" - Orvane");
    SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL); // so that it can be deleted
}

TEST_F(HexTest, AFileThatWasMovedAwayOrReplacedIsNotSaved) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(editor.Type(L"41"));
    ASSERT_TRUE(WaitForModified(true));
    ASSERT_TRUE(MoveFileW(Path(L"data.bin").c_str(), Path(L"data.bak").c_str()));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(AnswerNotSaved());
    ASSERT_TRUE(editor.WaitForNoDialog());
    ASSERT_TRUE(files::Write(Path(L"data.bin"), Counting(50)));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(AnswerNotSaved());
    EXPECT_TRUE(WaitForModified(true));
    EXPECT_EQ(files::Read(Path(L"data.bin")), Counting(50));
    EXPECT_EQ(files::Read(Path(L"data.bak")), Counting(40));
}

TEST_F(HexTest, AFileThatWasDeletedIsNotSaved) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(editor.Type(L"41"));
    ASSERT_TRUE(WaitForModified(true));
    ASSERT_TRUE(DeleteFileW(Path(L"data.bin").c_str())); // the editor is not in the way
    if (files::Exists(Path(L"data.bin"))) GTEST_SKIP() << "deleted here only once it is closed";
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(AnswerNotSaved());
    EXPECT_TRUE(WaitForModified(true));
    EXPECT_FALSE(files::Exists(Path(L"data.bin")));
}

TEST_F(HexTest, ASaveThatFailsInTheMiddleKeepsTheChangesAndTheStar) {
    constexpr DWORD PageSize = 16384;
    const std::string content(5 * PageSize, '.');
    ASSERT_TRUE(files::Write(Path(L"probe"), "."));
    if (!LocksAreKept(Path(L"probe"))) GTEST_SKIP() << "locks do not prevent writing";
    ASSERT_TRUE(OpenBytes(content));
    for (const wchar_t* offset : {L"0", L"4000", L"8000", L"c000", L"10000"}) {
        ASSERT_TRUE(GoTo(offset));
        ASSERT_TRUE(editor.Type(L"41"));
    }
    ASSERT_TRUE(WaitForModified(true));
    // Nobody else may write the third page while this handle holds it.
    const HANDLE holder = OpenShared(Path(L"data.bin"));
    ASSERT_NE(holder, INVALID_HANDLE_VALUE);
    ASSERT_TRUE(LockFile(holder, 2 * PageSize, 0, PageSize, 0));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    EXPECT_TRUE(AnswerNotSaved());
    UnlockFile(holder, 2 * PageSize, 0, PageSize, 0);
    CloseHandle(holder);
    ASSERT_TRUE(editor.WaitForNoDialog());
    // Undone altogether, it is still not what the file holds.
    for (int i = 0; i < 10; ++i) ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    ASSERT_TRUE(WaitForOffset(L"0000000000"));
    EXPECT_TRUE(WaitForModified(true));
    EXPECT_EQ(Save(), content);
}

TEST_F(HexTest, TheEditbinCommandOpensOnceAndTellsFailures) {
    ASSERT_TRUE(files::Write(Path(L"data.bin"), Counting(40)));
    ASSERT_TRUE(Start());
    ASSERT_TRUE(Run(L"editbin data.bin"));
    EXPECT_TRUE(WaitForModified(false));
    ASSERT_TRUE(editor.Type(L"41"));
    EXPECT_TRUE(WaitForModified(true));
    ASSERT_TRUE(Run(L"eb DATA.BIN")); // the same document again
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z Ctrl+Z"));
    EXPECT_TRUE(WaitForModified(false));
    // What is not there is not made.
    ASSERT_TRUE(editor.RunCommandLine(L"eb folder\\missing.bin"));
    EXPECT_TRUE(editor.Answer(L"Failed opening file: " + Path(L"folder\\missing.bin"), L"OK"));
    EXPECT_FALSE(files::Exists(Path(L"folder")));
}

TEST_F(HexTest, CommandsForTextDoNothing) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(editor.Keys(L"Right Shift+Right"));
    for (const wchar_t* command : {L"line 2", L"setengine cpp"}) ASSERT_TRUE(Run(command)) << command;
    ASSERT_TRUE(editor.RunCommandLine(L"bookmark 1"));
    ASSERT_TRUE(editor.Keys(L"Escape"));
    ASSERT_TRUE(window::WaitFor([this] { return !editor.CommandWindow(); }));
    for (const UINT command : {IDM_CUT, IDM_DELETE, IDM_REPLACE, IDM_BOOKMARK, IDM_COPY_HTML}) editor.Command(command);
    ASSERT_TRUE(clipboard::Clear());
    editor.Command(IDM_COPY);
    EXPECT_TRUE(window::WaitFor([] { return clipboard::Text() == L"01 "; }));
    EXPECT_EQ(editor.Title(), Path(L"data.bin") + L" - Orvane");
}

TEST_F(HexTest, ASessionOpensTheBytesAgain) {
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "one\ntwo"));
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(Run(L"e a.txt"));
    ASSERT_TRUE(editor.WaitForTitle(Path(L"a.txt") + L" - Orvane"));
    ASSERT_TRUE(Run(L"ss session"));
    EXPECT_EQ(files::Read(Path(L"session")),
              files::Utf8(L"sessionfile\r\neb " + Path(L"data.bin") + L"\r\ne " + Path(L"a.txt") + L"\r\nl 1\r\n"));
    editor.Close();
    DWORD code = 1;
    ASSERT_TRUE(editor.WaitForEnd(code));
    EXPECT_EQ(code, 0u);

    Editor again;
    ASSERT_TRUE(again.Start(L"-r session", scratch.Folder()));
    EXPECT_TRUE(again.WaitForTitle(Path(L"a.txt") + L" - Orvane"));
    ASSERT_TRUE(again.Keys(L"Ctrl+1"));
    EXPECT_TRUE(again.WaitForTitle(Path(L"data.bin") + L" - Orvane"));
    EXPECT_TRUE(again.WaitForStatus(Offset, L"0000000000"));
    ASSERT_TRUE(again.Type(L"41"));
    EXPECT_TRUE(again.WaitForStatus(Offset, L"0000000001"));
}

TEST_F(HexTest, TwoPanesShowTheSameBytes) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(editor.Keys(L"Alt+Right"));
    ASSERT_TRUE(window::WaitFor([this] { return editor.Panes().size() == 2; }));
    ASSERT_TRUE(editor.Keys(L"F6"));
    ASSERT_TRUE(editor.Type(L"41"));
    ASSERT_TRUE(WaitForModified(true));
    ASSERT_TRUE(editor.Keys(L"F6 Down Ctrl+Z"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+Z"));
    EXPECT_TRUE(WaitForModified(false));
    ASSERT_TRUE(editor.Keys(L"Alt+Left"));
    ASSERT_TRUE(window::WaitFor([this] { return editor.Panes().size() == 1; }));
    ASSERT_TRUE(editor.Type(L"5"));
    EXPECT_TRUE(WaitForModified(true));
}

TEST_F(HexTest, ClosingModifiedBytesAsks) {
    ASSERT_TRUE(OpenBytes(Counting(40)));
    ASSERT_TRUE(editor.Type(L"41"));
    ASSERT_TRUE(WaitForModified(true));
    editor.Close();
    EXPECT_TRUE(editor.Answer(L"Save changes to " + Path(L"data.bin") + L"?", L"Yes"));
    DWORD code = 1;
    EXPECT_TRUE(editor.WaitForEnd(code));
    EXPECT_EQ(code, 0u);
    std::string expected = Counting(40);
    expected[0] = 0x41;
    EXPECT_EQ(files::Read(Path(L"data.bin")), expected);
}
