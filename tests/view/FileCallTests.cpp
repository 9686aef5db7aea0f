// How files are asked of the system, and what becomes of its answers. What Wine would answer otherwise than Windows
// is answered by the test.

#include "CallCounter.h"
#include "base/Platform.h"
#include "support/FailureInjection.h"
#include "support/NoRecoveryFolder.h"
#include "support/ScratchFolder.h"
#include "support/TextDocument.h"

#include <chrono>
#include <gtest/gtest.h>
#include <vector>

using Platform::File;

namespace {

struct OpenCall {
    DWORD access;
    DWORD sharing;
    DWORD creation;
    DWORD attributes;
};

class FileCallTest : public testing::Test {
protected:
    FileCallTest()
        : create("CreateFileW", reinterpret_cast<void*>(Create)), write("WriteFile", reinterpret_cast<void*>(Write)),
          flush("FlushFileBuffers", reinterpret_cast<void*>(Flush)), cut("SetEndOfFile", reinterpret_cast<void*>(Cut)),
          driveType("GetDriveTypeW", reinterpret_cast<void*>(DriveType)) {
        EXPECT_TRUE(create.IsImported() && write.IsImported() && flush.IsImported() && cut.IsImported());
        realCreate = reinterpret_cast<decltype(&CreateFileW)>(create.Original());
        realWrite = reinterpret_cast<decltype(&WriteFile)>(write.Original());
        realFlush = reinterpret_cast<decltype(&FlushFileBuffers)>(flush.Original());
        realCut = reinterpret_cast<decltype(&SetEndOfFile)>(cut.Original());
        opens.clear();
        openError = writeError = flushError = ERROR_SUCCESS;
        failingOpens = failingWrites = failingCuts = 0;
        answerTime = 0;
        kindOfDrive = DRIVE_FIXED;
        now += 600'000;
        Platform::SetTestClock(&now);
    }
    ~FileCallTest() override { Platform::SetTestClock(nullptr); }

    bool SaveAs(const char* name, const std::u16string& text) const {
        TextDocument document(text);
        return document->Save(folder.Path(name).c_str(), Encoding::Keep, LineEnding::Keep);
    }

    // The bytes were put into the file that was there: one that is replaced loses its alternate streams.
    static void ExpectWrittenInPlace() {
        size_t writing = 0;
        for (const OpenCall& call : opens) {
            EXPECT_NE(call.creation, DWORD{CREATE_ALWAYS});
            EXPECT_NE(call.creation, DWORD{TRUNCATE_EXISTING});
            // An attempt to make the file fails with the one that is there.
            if (!(call.access & GENERIC_WRITE) || call.creation == CREATE_NEW) continue;
            ++writing;
            EXPECT_EQ(call.creation, DWORD{OPEN_ALWAYS});
            EXPECT_EQ(call.sharing, 0u);
            EXPECT_EQ(call.attributes, DWORD{FILE_ATTRIBUTE_ARCHIVE});
        }
        EXPECT_EQ(writing, 1u);
    }

    static inline std::vector<OpenCall> opens;
    static inline DWORD openError;
    static inline int failingOpens; // so many fail with openError
    static inline DWORD writeError;
    static inline int failingWrites;
    static inline int failingCuts;     // as of a file that is mapped
    static inline DWORD flushError;    // of every flush; none when 0
    static inline uint64_t answerTime; // milliseconds that opening takes
    static inline UINT kindOfDrive;
    static inline uint64_t now = 1'000'000;
    ScratchFolder folder;

private:
    const NoRecoveryFolder noCopies; // whose files would be opened, too
    static HANDLE WINAPI Create(LPCWSTR name, DWORD access, DWORD sharing, LPSECURITY_ATTRIBUTES security,
                                DWORD creation, DWORD attributes, HANDLE pattern) {
        opens.push_back({access, sharing, creation, attributes});
        now += answerTime;
        constexpr DWORD Special = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
        const DWORD known = GetFileAttributesW(name);
        DWORD error = failingOpens-- > 0 ? openError : ERROR_SUCCESS;
        if (creation == CREATE_ALWAYS && known != INVALID_FILE_ATTRIBUTES && (known & Special & ~attributes))
            error = ERROR_ACCESS_DENIED;
        if (error == ERROR_SUCCESS) return realCreate(name, access, sharing, security, creation, attributes, pattern);
        SetLastError(error);
        return INVALID_HANDLE_VALUE;
    }
    static BOOL WINAPI Write(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written, LPOVERLAPPED place) {
        if (failingWrites-- <= 0) return realWrite(file, bytes, count, written, place);
        SetLastError(writeError);
        return FALSE;
    }
    static BOOL WINAPI Flush(HANDLE file) {
        if (!flushError) return realFlush(file);
        SetLastError(flushError);
        return FALSE;
    }
    static BOOL WINAPI Cut(HANDLE file) {
        if (failingCuts-- <= 0) return realCut(file);
        SetLastError(ERROR_USER_MAPPED_FILE);
        return FALSE;
    }
    static UINT WINAPI DriveType(LPCWSTR) { return kindOfDrive; }

    static inline decltype(&CreateFileW) realCreate;
    static inline decltype(&WriteFile) realWrite;
    static inline decltype(&FlushFileBuffers) realFlush;
    static inline decltype(&SetEndOfFile) realCut;
    const ReplacedImport create;
    const ReplacedImport write;
    const ReplacedImport flush;
    const ReplacedImport cut;
    const ReplacedImport driveType;
};

} // namespace

TEST_F(FileCallTest, ADriveIsRemoteWhenTheSystemSaysSoAndAShareAlways) {
    for (const UINT kind : {UINT{DRIVE_FIXED}, UINT{DRIVE_REMOTE}}) {
        kindOfDrive = kind;
        for (const Char* path : {u"C:\\a", u"\\\\?\\C:\\a", u"\\\\.\\C:\\a"})
            EXPECT_EQ(Platform::IsRemote(path), kind == DRIVE_REMOTE) << testing::PrintToString(std::u16string(path));
        EXPECT_TRUE(Platform::IsRemote(u"\\\\server\\share\\a"));
        EXPECT_TRUE(Platform::IsRemote(u"\\\\?\\UNC\\server\\share\\a"));
        EXPECT_FALSE(Platform::IsRemote(u"\\\\?\\Volume{1-2}\\a")) << "the system mounts volumes of this machine";
    }
}

TEST_F(FileCallTest, HiddenAndSystemFilesAreSavedAndStayWhatTheyAre) {
    for (const DWORD attribute : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM}) {
        const std::u16string path = folder.Write("file.txt", "much longer than the new text");
        ASSERT_TRUE(SetFileAttributesW(Wide(path.c_str()), attribute));
        opens.clear();
        EXPECT_TRUE(SaveAs("file.txt", u"new"));
        ExpectWrittenInPlace();
        EXPECT_EQ(folder.Read("file.txt"), "new");
        const DWORD after = GetFileAttributesW(Wide(path.c_str()));
        EXPECT_EQ(after & (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM), attribute);
        EXPECT_TRUE(SetFileAttributesW(Wide(path.c_str()), FILE_ATTRIBUTE_NORMAL));
        EXPECT_TRUE(DeleteFileW(Wide(path.c_str())));
    }
}

TEST_F(FileCallTest, AFileThatExistsIsWrittenInPlace) {
    folder.Write("file.txt", "much longer than the new text");
    EXPECT_TRUE(SaveAs("file.txt", u"new"));
    EXPECT_EQ(folder.Read("file.txt"), "new");
    ExpectWrittenInPlace();
}

TEST_F(FileCallTest, ANewFileGetsTheArchiveAttributeAndIsNotShared) {
    EXPECT_TRUE(SaveAs("file.txt", u"new"));
    ASSERT_FALSE(opens.empty());
    EXPECT_EQ(opens[0].attributes, DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(opens[0].sharing, 0u);
    EXPECT_TRUE(GetFileAttributesW(Wide(folder.Path("file.txt").c_str())) & FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(FileCallTest, AFileInUseForAMomentIsSaved) {
    for (const DWORD error : {ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION}) {
        const uint64_t begun = now;
        openError = error;
        failingOpens = 5;
        EXPECT_TRUE(SaveAs("file.txt", u"opened"));
        EXPECT_EQ(folder.Read("file.txt"), "opened");
        EXPECT_GT(now, begun);
        EXPECT_LT(now, begun + 1000);
    }
}

TEST_F(FileCallTest, AFilePartOfWhichIsLockedForAMomentIsSaved) {
    const uint64_t begun = now;
    writeError = ERROR_LOCK_VIOLATION;
    failingWrites = 5;
    EXPECT_TRUE(SaveAs("file.txt", u"written"));
    EXPECT_EQ(folder.Read("file.txt"), "written");
    EXPECT_GT(now, begun);
    EXPECT_LT(now, begun + 1000);
}

// While a file is mapped into memory it can grow, but not shrink.
TEST_F(FileCallTest, AFileThatIsMappedForAMomentIsSaved) {
    folder.Write("file.txt", "much longer than the new text");
    const uint64_t begun = now;
    failingCuts = 2;
    EXPECT_TRUE(SaveAs("file.txt", u"new"));
    EXPECT_EQ(folder.Read("file.txt"), "new");
    EXPECT_GT(now, begun);
    EXPECT_LT(now, begun + 1000);
}

TEST_F(FileCallTest, AFileThatIsMappedForAMomentIsEmptiedToBeMade) {
    const std::u16string path = folder.Write("file.txt", "old");
    failingCuts = 2;
    File file;
    ASSERT_TRUE(file.Open(path.c_str(), File::Mode::Create));
    EXPECT_TRUE(file.Write("a", 1));
    file.Close();
    EXPECT_EQ(folder.Read("file.txt"), "a");
}

TEST_F(FileCallTest, AFileThatStaysMappedFailsTheSaveAfterAboutASecond) {
    folder.Write("file.txt", "much longer than the new text");
    const uint64_t begun = now;
    failingCuts = 1'000'000;
    EXPECT_FALSE(SaveAs("file.txt", u"new"));
    EXPECT_GE(now, begun + 800);
    EXPECT_LE(now, begun + 1500);
}

TEST_F(FileCallTest, AFileThatStaysInUseFailsTheSaveAfterAboutASecond) {
    folder.Write("file.txt", "old");
    for (const DWORD error : {ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION}) {
        const uint64_t begun = now;
        openError = error;
        failingOpens = 1'000'000;
        EXPECT_FALSE(SaveAs("file.txt", u"new"));
        EXPECT_GE(now, begun + 800);
        EXPECT_LE(now, begun + 1500);
        EXPECT_EQ(folder.Read("file.txt"), "old");
    }
}

TEST_F(FileCallTest, OtherFailuresAreNotTriedAgain) {
    const uint64_t begun = now;
    openError = ERROR_ACCESS_DENIED;
    failingOpens = 2; // to make it, and to open the one that is there
    EXPECT_FALSE(SaveAs("file.txt", u"new"));
    failingOpens = 0;
    writeError = ERROR_DISK_FULL;
    failingWrites = 1;
    EXPECT_FALSE(SaveAs("file.txt", u"new"));
    EXPECT_EQ(now, begun);
}

TEST_F(FileCallTest, OpeningAFileInUseFailsAtOnce) {
    folder.Write("file.txt", "text");
    for (const auto mode : {File::Mode::ReadShared, File::Mode::ReadWrite}) {
        File file;
        openError = ERROR_SHARING_VIOLATION;
        failingOpens = 1;
        const uint64_t begun = now;
        EXPECT_FALSE(file.Open(folder.Path("file.txt").c_str(), mode));
        EXPECT_EQ(now, begun);
    }
}

TEST_F(FileCallTest, AFileSystemThatCannotFlushDoesNotFailTheSave) {
    for (const DWORD error : {ERROR_INVALID_FUNCTION, ERROR_NOT_SUPPORTED}) {
        flushError = error;
        EXPECT_TRUE(SaveAs("file.txt", u"text"));
        EXPECT_EQ(folder.Read("file.txt"), "text");
    }
    for (const DWORD error : {ERROR_IO_DEVICE, ERROR_DISK_FULL, ERROR_ACCESS_DENIED}) {
        flushError = error;
        EXPECT_FALSE(SaveAs("file.txt", u"text")) << error;
    }
}

TEST_F(FileCallTest, ReadingATimeBlocksNoOtherProgram) {
    TextDocument document(u"text");
    const std::u16string path = folder.Path("file.txt");
    ASSERT_TRUE(document->Save(path.c_str(), Encoding::Keep, LineEnding::Keep) && document->SetPath(path.c_str()));
    ASSERT_TRUE(document->SetTitle(u""));
    ASSERT_EQ(opens.size(), 2u);
    EXPECT_FALSE(document->IsChangedOnDisk());
    document->MarkFileTimeNow();
    ASSERT_EQ(opens.size(), 4u);
    for (size_t i = 1; i < opens.size(); ++i) {
        EXPECT_EQ(opens[i].access, DWORD{FILE_READ_ATTRIBUTES});
        EXPECT_EQ(opens[i].sharing, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE});
        EXPECT_EQ(opens[i].creation, DWORD{OPEN_EXISTING});
    }
}

TEST_F(FileCallTest, DevicesAreNoFilesToSaveTo) {
    // Not even opened: that may wait for what a serial port is connected to, or rewind a tape.
    for (const char16_t* device : {u"nul", u"NUL", u"con", u"com1", u"C:\\nul", u"\\\\.\\PhysicalDrive0", u"\\\\.\\C:",
                                   u"\\\\?\\C:", u"\\\\?\\PhysicalDrive0", u"\\\\.\\pipe\\name"}) {
        TextDocument document(u"text");
        opens.clear();
        EXPECT_FALSE(document->Save(device, Encoding::Keep, LineEnding::Keep)) << std::filesystem::path(device);
        EXPECT_TRUE(opens.empty()) << std::filesystem::path(device);
    }
}

TEST_F(FileCallTest, AFileMayBeNamedAsDevicesAre) {
    for (const char16_t* prefix : {u"\\\\?\\", u"\\\\.\\"}) {
        TextDocument document(u"text");
        EXPECT_TRUE(document->Save((prefix + folder.Path("file.txt")).c_str(), Encoding::Keep, LineEnding::Keep));
        EXPECT_EQ(folder.Read("file.txt"), "text");
    }
}

namespace {

class DriveTest : public FileCallTest {
protected:
    DriveTest() {
        for (TextDocument& document : documents) {
            const std::u16string path = folder.Path(&document == documents ? "a.txt" : "b.txt");
            EXPECT_TRUE(document->Save(path.c_str(), Encoding::Keep, LineEnding::Keep));
            EXPECT_TRUE(document->SetPath(path.c_str()));
        }
        opens.clear();
    }
    ~DriveTest() override {
        // An answer at once, so that the drive does not rest for tests with another clock.
        answerTime = 0;
        now += 600'000;
        for (int i = 0; i < 2; ++i) Check();
    }
    // How often the drive was asked while all documents were checked.
    size_t Check() {
        opens.clear();
        for (const TextDocument& document : documents)
            EXPECT_FALSE(document->MayCheckDisk() && document->IsChangedOnDisk());
        return opens.size();
    }

    TextDocument documents[2];
};

} // namespace

TEST_F(DriveTest, ARemoteDriveThatAnsweredSlowlyIsAskedOnceAMinute) {
    kindOfDrive = DRIVE_REMOTE;
    answerTime = 2000;
    EXPECT_EQ(Check(), 1u);
    const uint64_t answered = now;
    EXPECT_EQ(Check(), 0u);
    now = answered + 59'999;
    EXPECT_EQ(Check(), 0u);
    now = answered + 60'000;
    EXPECT_EQ(Check(), 1u);
    EXPECT_EQ(Check(), 0u);
}

TEST_F(DriveTest, ASlowDriveIsNotAskedAgainWhenAChangeIsAccepted) {
    kindOfDrive = DRIVE_REMOTE;
    answerTime = 2000;
    const auto ahead = std::filesystem::file_time_type::clock::now() + std::chrono::seconds(60);
    std::filesystem::last_write_time(folder.File("a.txt"), ahead);
    opens.clear();
    EXPECT_TRUE(documents[0]->IsChangedOnDisk());
    documents[0]->MarkFileTimeNow();
    EXPECT_EQ(opens.size(), 1u);
    now += 60'000;
    EXPECT_FALSE(documents[0]->IsChangedOnDisk()) << "although its clock is ahead";
}

TEST_F(DriveTest, AChangeDuringTheQuestionIsAcceptedWhereTheDriveAnswersAtOnce) {
    kindOfDrive = DRIVE_REMOTE;
    answerTime = 10;
    const auto ahead = std::filesystem::file_time_type::clock::now() + std::chrono::seconds(60);
    std::filesystem::last_write_time(folder.File("a.txt"), ahead);
    EXPECT_TRUE(documents[0]->IsChangedOnDisk());
    std::filesystem::last_write_time(folder.File("a.txt"), ahead + std::chrono::seconds(10));
    documents[0]->MarkFileTimeNow();
    EXPECT_FALSE(documents[0]->IsChangedOnDisk());
}

TEST_F(DriveTest, ADriveThatRestsIsAskedBeforeASaveAndRestsOn) {
    kindOfDrive = DRIVE_REMOTE;
    answerTime = 2000;
    EXPECT_EQ(Check(), 1u);
    now += 30'000;
    opens.clear();
    EXPECT_FALSE(documents[0]->IsChangedOnDisk());
    EXPECT_EQ(opens.size(), 1u);
    now += 59'999;
    EXPECT_EQ(Check(), 0u) << "for a minute after the last slow answer";
    now += 1;
    EXPECT_EQ(Check(), 1u);
}

TEST_F(DriveTest, ARemoteDriveThatAnswersAtOnceIsAskedEveryTime) {
    kindOfDrive = DRIVE_REMOTE;
    answerTime = 10;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Check(), 2u);
}

TEST_F(DriveTest, ADriveOfThisMachineIsAskedEveryTimeHoweverSlow) {
    kindOfDrive = DRIVE_FIXED; // it may have been asleep
    answerTime = 5000;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Check(), 2u);
}
