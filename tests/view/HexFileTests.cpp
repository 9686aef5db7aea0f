// Bytes in a frame of the test's own process, whose file does what a test says: it cannot be written, no longer
// takes bytes in the middle of a save, or has been deleted.

#include "HexFrameTest.h"
#include "support/NoRecoveryFolder.h"
#include "viewbase/win32/Clipboard.h"

namespace {

// What is done in place of the system's functions, one of which a test replaces at a time.

void* systemFunction = nullptr;
template <class Function> Function* System() { return reinterpret_cast<Function*>(systemFunction); }

DWORD refusedAccess = 0;
HANDLE WINAPI Refuse(LPCWSTR name, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security, DWORD creation,
                     DWORD attributes, HANDLE pattern) {
    if (!(access & refusedAccess))
        return System<decltype(CreateFileW)>()(name, access, sharing, security, creation, attributes, pattern);
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
}

int writesUntilFailure = 0;
BOOL WINAPI FailOneWrite(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED place) {
    if (--writesUntilFailure != 0) return System<decltype(WriteFile)>()(file, bytes, count, written, place);
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

BOOL WINAPI FailToFlush(HANDLE) {
    SetLastError(ERROR_IO_DEVICE);
    return FALSE;
}

FILE_STANDARD_INFO standardInfo;
BOOL WINAPI TellStandardInfo(HANDLE, FILE_INFO_BY_HANDLE_CLASS, LPVOID info, DWORD) {
    *static_cast<FILE_STANDARD_INFO*>(info) = standardInfo;
    return TRUE;
}

class ReplacedCalls : public ReplacedImport {
public:
    ReplacedCalls(const char* name, void* function) : ReplacedImport(name, function) {
        EXPECT_TRUE(IsImported()) << name;
        systemFunction = Original();
    }
};

class HexFileTest : public HexFrameTest {
protected:
    Messages NotSaved() const { return {L"Failed saving file: " + path}; }
};

// A file of five pages, each of which has been changed, the later ones first.
class HexSaveTest : public HexFileTest {
protected:
    static constexpr int Pages = 5;

    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(HexFileTest::SetUp());
        ASSERT_NO_FATAL_FAILURE(Open(before));
        for (size_t page = Pages; page--;) {
            editor->GoTo(page * PageSize + 7);
            Type(L"41");
            after[page * PageSize + 7] = 'A';
        }
        ASSERT_TRUE(TitleShows(true));
    }
    // What was to be saved is all there still and can be taken back.
    void ExpectUnsaved() const {
        EXPECT_TRUE(TitleShows(true));
        EXPECT_TRUE(Content() == after);
        EXPECT_TRUE(file->CanDo(DocumentCommand::Undo));
    }
    void ExpectThatItIsSavedNow() const {
        EXPECT_EQ(MessagesOf(IDM_SAVE), Messages());
        EXPECT_TRUE(TitleShows(false));
        EXPECT_TRUE(OnDisk() == after);
    }
    void UndoAll() const {
        for (int i = 0; i < 2 * Pages; ++i) Command(IDM_UNDO);
        EXPECT_FALSE(file->CanDo(DocumentCommand::Undo));
    }

    const std::string before = std::string(Pages * PageSize - 100, '.');
    std::string after = before;
    const NoRecoveryFolder noJournal; // whose writes would be counted, too
};

} // namespace

TEST_F(HexSaveTest, AWriteThatFailsOnTheThirdPageIsReportedAndTheNextSaveWritesAll) {
    {
        const ReplacedCalls full("WriteFile", reinterpret_cast<void*>(FailOneWrite));
        writesUntilFailure = 3;
        EXPECT_EQ(MessagesOf(IDM_SAVE), NotSaved());
    }
    ExpectUnsaved();
    // The pages that were changed first are written first, and what is written stays.
    std::string partly = before;
    partly[4 * PageSize + 7] = partly[3 * PageSize + 7] = 'A';
    EXPECT_TRUE(OnDisk() == partly);
    ExpectThatItIsSavedNow();
    UndoAll();
    EXPECT_TRUE(Content() == before);
    EXPECT_TRUE(TitleShows(true));
}

TEST_F(HexSaveTest, UndoneAltogetherAHalfWrittenFileIsStillModified) {
    {
        const ReplacedCalls full("WriteFile", reinterpret_cast<void*>(FailOneWrite));
        writesUntilFailure = 3;
        EXPECT_EQ(MessagesOf(IDM_SAVE), NotSaved());
    }
    UndoAll();
    EXPECT_TRUE(TitleShows(true));
    EXPECT_EQ(MessagesOf(IDM_SAVE), Messages());
    EXPECT_TRUE(TitleShows(false));
    EXPECT_TRUE(OnDisk() == before);
}

TEST_F(HexSaveTest, BytesThatDoNotReachTheDiskAreNotSaved) {
    {
        const ReplacedCalls broken("FlushFileBuffers", reinterpret_cast<void*>(FailToFlush));
        EXPECT_EQ(MessagesOf(IDM_SAVE), NotSaved());
    }
    ExpectUnsaved();
    ExpectThatItIsSavedNow();
}

TEST_F(HexSaveTest, AFileThatWasDeletedIsNotWritten) {
    for (const bool pending : {false, true}) { // gone already, or with its last user
        const ReplacedCalls deleted("GetFileInformationByHandleEx", reinterpret_cast<void*>(TellStandardInfo));
        standardInfo = {};
        standardInfo.DeletePending = pending;
        standardInfo.NumberOfLinks = pending;
        EXPECT_EQ(MessagesOf(IDM_SAVE), NotSaved());
        ExpectUnsaved();
        EXPECT_TRUE(OnDisk() == before);
    }
    ExpectThatItIsSavedNow();
}

TEST_F(HexSaveTest, SavingAllGoesOnAfterAFileThatFails) {
    const std::u16string other = folder.Write("other.txt", "text");
    ASSERT_TRUE(OpenFileArgument(main->Commands(), other.c_str(), NoLine, false, false));
    Type(L"more ");
    {
        const ReplacedCalls full("WriteFile", reinterpret_cast<void*>(FailOneWrite));
        writesUntilFailure = 3;
        EXPECT_EQ(MessagesOf(IDM_SAVE_ALL), NotSaved());
    }
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(folder.Read("other.txt"), "more text");
}

TEST_F(HexFileTest, AFileThatMayOnlyBeReadIsShownAndNeverWritten) {
    const std::string content = "0123456789";
    {
        const ReplacedCalls refused("CreateFileW", reinterpret_cast<void*>(Refuse));
        refusedAccess = GENERIC_WRITE;
        ASSERT_NO_FATAL_FAILURE(Open(content));
    }
    EXPECT_TRUE(file->IsReadOnly());
    EXPECT_EQ(Content(), content);
    const ClipboardItem digits = {ClipboardFormat::UnicodeText, u"4142", 5 * sizeof(Char)};
    ASSERT_TRUE(Clipboard::Write(main->Window(), &digits, 1));
    Type(L"41");
    HexClipboard::Paste(*editor);
    EXPECT_EQ(Content(), content);
    EXPECT_EQ(editor->Caret(), 0u);
    EXPECT_TRUE(TitleShows(false));
    for (const UINT save : {IDM_SAVE, IDM_SAVE_ALL}) EXPECT_EQ(MessagesOf(save), Messages()) << "nothing to write";
    EXPECT_EQ(OnDisk(), content);
}

TEST_F(HexFileTest, AFileThatMayNotEvenBeReadIsNotOpened) {
    const ReplacedCalls refused("CreateFileW", reinterpret_cast<void*>(Refuse));
    refusedAccess = GENERIC_READ | GENERIC_WRITE;
    const std::u16string secret = folder.Write("secret.bin", "x");
    EXPECT_FALSE(OpenBinaryArgument(main->Commands(), secret.c_str()));
    EXPECT_EQ(messages, Messages{L"Failed opening file: " + std::wstring(secret.begin(), secret.end())});
    EXPECT_EQ(main->Commands().Documents().Count(), 0u);
}
