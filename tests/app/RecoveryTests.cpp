#include "app/FileDialogTest.h"
#include "base/SaveCopy.h"
#include "support/TestRecovery.h"

// What the next start does after an editor that did not come to its end.

namespace {

class RecoveryTest : public FileDialogTest {
protected:
    // The size of the only journal; 0 when there is none.
    static uint64_t JournalSize() {
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        const std::vector<std::wstring> names = files::RecoveryFiles(L"Journals");
        if (names.size() != 1) return 0;
        const std::wstring path = files::RecoveryPath() + L"\\Journals\\" + names[0];
        GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
        return data.nFileSizeLow;
    }
    static bool WaitForNoJournal() {
        return window::WaitFor([] { return files::RecoveryFiles(L"Journals").empty(); });
    }
    // Types into a.txt of an editor that is ended then, with at least "new " in its journal.
    void KillWhileTyping() {
        ASSERT_TRUE(files::Write(Path(L"a.txt"), "old"));
        Editor killed;
        ASSERT_TRUE(killed.Start(L"a.txt", scratch.Folder()));
        ASSERT_TRUE(killed.WaitForTitle(Path(L"a.txt") + L" - Orvane"));
        ASSERT_TRUE(killed.Type(L"new "));
        ASSERT_TRUE(window::WaitFor([] { return JournalSize() > 0; }));
        const uint64_t before = JournalSize();
        // Whatever makes it grow now, what was typed before is in it.
        ASSERT_TRUE(killed.Type(L"and"));
        ASSERT_TRUE(window::WaitFor([=] { return JournalSize() > before; }));
    }
    std::wstring Question() const {
        return L"Changes were not saved when Orvane ended:\n" + Path(L"a.txt") +
               L"\nOpen them now? With No they are offered again at the next start.";
    }
};

} // namespace

TEST_F(RecoveryTest, WhatWasTypedBeforeAKillIsOpenedAsANewDocument) {
    ASSERT_NO_FATAL_FAILURE(KillWhileTyping());
    EXPECT_EQ(files::Read(Path(L"a.txt")), "old");
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.Answer(Question(), L"Yes"));
    ASSERT_TRUE(editor.WaitForTitle(L"a.txt (recovered)* - Orvane"));
    ASSERT_TRUE(editor.Keys(L"Ctrl+S"));
    ASSERT_TRUE(WaitForDialogTitled(L"Save As"));
    ASSERT_TRUE(TypeFileName(Path(L"b.txt")));
    EXPECT_TRUE(WaitForFile(L"b.txt"));
    const std::string saved = files::Read(Path(L"b.txt"));
    EXPECT_EQ(saved.substr(0, 4), "new ");
    EXPECT_EQ(saved.substr(saved.size() - 3), "old");
    EXPECT_EQ(files::Read(Path(L"a.txt")), "old");
    EXPECT_TRUE(WaitForNoJournal());
}

TEST_F(RecoveryTest, WithNoItIsOfferedAgain) {
    ASSERT_NO_FATAL_FAILURE(KillWhileTyping());
    {
        Editor first;
        ASSERT_TRUE(first.Start(L"", scratch.Folder()));
        ASSERT_TRUE(first.Answer(Question(), L"No"));
        DWORD code = 0;
        first.Close();
        ASSERT_TRUE(first.WaitForEnd(code));
    }
    ASSERT_TRUE(Start());
    EXPECT_TRUE(editor.Answer(Question(), L"No"));
}

TEST_F(RecoveryTest, TheJournalOfARunningEditorIsLeftAlone) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(window::WaitFor([] { return JournalSize() > 0; }));
    {
        Editor other;
        ASSERT_TRUE(other.Start(L"", scratch.Folder()));
        ASSERT_TRUE(other.Settle());
        EXPECT_EQ(other.Dialog(), nullptr);
        DWORD code = 0;
        other.Close();
        ASSERT_TRUE(other.WaitForEnd(code));
    }
    EXPECT_GT(JournalSize(), 0u);
    EXPECT_EQ(SaveAndRead(L"a.txt"), "xa.txt");
    EXPECT_TRUE(WaitForNoJournal());
}

TEST_F(RecoveryTest, ChangedBytesComeBackOverTheirFile) {
    ASSERT_TRUE(files::Write(Path(L"a.txt"), "bytes"));
    {
        Editor killed;
        ASSERT_TRUE(killed.Start(L"-b a.txt", scratch.Folder()));
        ASSERT_TRUE(killed.WaitForTitle(Path(L"a.txt") + L" - Orvane"));
        ASSERT_TRUE(killed.Type(L"41"));
        ASSERT_TRUE(window::WaitFor([] { return JournalSize() > 0; }));
        const uint64_t before = JournalSize();
        ASSERT_TRUE(killed.Type(L"42"));
        ASSERT_TRUE(window::WaitFor([=] { return JournalSize() > before; }));
    }
    ASSERT_TRUE(Start());
    ASSERT_TRUE(editor.Answer(Question(), L"Yes"));
    ASSERT_TRUE(WaitForFile(L"a.txt", true));
    EXPECT_EQ(files::Read(Path(L"a.txt")), "bytes");
    EXPECT_EQ(SaveAndRead(L"a.txt").substr(0, 1), "A");
    EXPECT_TRUE(WaitForNoJournal());
}

TEST_F(RecoveryTest, ASaveThatDidNotComeToItsEndIsTold) {
    const std::wstring target = Path(L"a.txt");
    ASSERT_TRUE(files::Write(target, "half"));
    const std::wstring folder = files::RecoveryPath();
    Heap::Start(); // the copy is made by this process
    Platform::SetRecoveryFolder(reinterpret_cast<const Char*>(folder.c_str()));
    {
        BlockSource source("new bytes", 9);
        SaveCopy left;
        ASSERT_EQ(left.Make(recoveryServices.folder, reinterpret_cast<const Char*>(target.c_str()), source),
                  SaveCopy::Outcome::Made);
    }
    Platform::SetRecoveryFolder(nullptr);
    ASSERT_EQ(files::RecoveryFiles(L"Copies").size(), 1u);
    ASSERT_TRUE(Start());
    const std::wstring bytes = files::RecoveryPath() + L"\\a.txt";
    ASSERT_TRUE(editor.Answer(target + L" was not saved completely.\nIts new contents are in " + bytes + L".", L"OK"));
    EXPECT_EQ(files::Read(bytes), "new bytes");
    EXPECT_EQ(files::Read(target), "half");
    EXPECT_TRUE(files::RecoveryFiles(L"Copies").empty());
}

TEST_F(RecoveryTest, AfterACrashTheUserIsToldWhereTheChangesAre) {
    ASSERT_TRUE(OpenFiles({L"a.txt"}));
    ASSERT_TRUE(Modify(L"a.txt"));
    ASSERT_TRUE(window::WaitFor([] { return JournalSize() > 0; }));
    const HANDLE process = OpenProcess(PROCESS_ALL_ACCESS, FALSE, editor.Process());
    // No code is there.
    auto* const nowhere = reinterpret_cast<LPTHREAD_START_ROUTINE>(uintptr_t{16});
    CloseHandle(CreateRemoteThread(process, nullptr, 0, nowhere, nullptr, 0, nullptr));
    CloseHandle(process);
    const std::wstring folder = files::RecoveryPath() + L"\\Journals";
    ASSERT_TRUE(editor.Answer(L"Orvane has encountered an error and must close.\nWhat was not saved is in " + folder +
                                  L". The next start offers it.\nWhat happened is described in " + folder +
                                  L"\\Orvane.dmp.",
                              L"OK"));
    DWORD code = 0;
    EXPECT_TRUE(editor.WaitForEnd(code));
    EXPECT_EQ(code, EXCEPTION_ACCESS_VIOLATION);
    EXPECT_EQ(files::Read(folder + L"\\Orvane.dmp").substr(0, 4), "MDMP");
    Editor next;
    ASSERT_TRUE(next.Start(L"", scratch.Folder()));
    EXPECT_TRUE(next.Answer(Question(), L"No"));
}
