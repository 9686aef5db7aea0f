#include "LoadSaveSupport.h"
#include "support/NoRecoveryFolder.h"

#include <chrono>

namespace {

using namespace std::chrono_literals;

// As another program that writes the file would, some time after (or before) now.
void Touch(const ScratchFolder& folder, std::chrono::seconds fromNow) {
    std::filesystem::last_write_time(folder.File("file.txt"), std::filesystem::file_time_type::clock::now() + fromNow);
}

} // namespace

TEST(ChangeOnDisk, AFileThatAnotherProgramTouchedHasChangedUntilTheTimeIsMarked) {
    LoadedDocument document("text");
    EXPECT_FALSE(document->IsChangedOnDisk());
    std::filesystem::last_write_time(document.folder.File("file.txt"),
                                     std::filesystem::last_write_time(document.folder.File("file.txt")) + 1s);
    EXPECT_TRUE(document->IsChangedOnDisk());
    EXPECT_TRUE(document->IsChangedOnDisk()) << "asking changes nothing";
    Touch(document.folder, -10s);
    EXPECT_FALSE(document->IsChangedOnDisk()) << "earlier than the load";

    Touch(document.folder, -1s);
    document->MarkFileTimeNow();
    EXPECT_FALSE(document->IsChangedOnDisk());
    Touch(document.folder, 60s);
    EXPECT_TRUE(document->IsChangedOnDisk());
}

TEST(ChangeOnDisk, AWriteBeforeTheTimeWasMarkedIsNotAskedAbout) {
    LoadedDocument document("text");
    Touch(document.folder, -10s);
    document->MarkFileTimeNow();
    Touch(document.folder, -5s);
    EXPECT_FALSE(document->IsChangedOnDisk());
}

// A save over it then asks nothing: the user has seen that change.
TEST(ChangeOnDisk, AFileThatWasAcceptedIsNoOtherOne) {
    LoadedDocument document("text");
    EXPECT_FALSE(document->HasOtherFile());
    Touch(document.folder, -10s);
    EXPECT_TRUE(document->HasOtherFile()) << "earlier counts as well";
    document->MarkFileTimeNow();
    EXPECT_FALSE(document->HasOtherFile());
    Touch(document.folder, -5s);
    EXPECT_TRUE(document->HasOtherFile());
}

TEST(ChangeOnDisk, AFailedSaveTakesTheNewTimeToo) {
    LoadedDocument document("text");
    Touch(document.folder, -60s);
    ASSERT_TRUE(document->Reload());
    static uint64_t calls;
    calls = 0;
    const NoRecoveryFolder withoutCopy;
    // The write, after the attempt to make the file, its opening and the room for it.
    Platform::SetFileFailureHook([] { return ++calls == 4; });
    EXPECT_FALSE(document->Save(document->GetName(), Encoding::Keep, LineEnding::Keep));
    Platform::SetFileFailureHook(nullptr);
    EXPECT_FALSE(document->IsChangedOnDisk()) << "what the save did to the file is no outside change";
}

TEST(ChangeOnDisk, ASaveThatDoesNotTouchTheFileLeavesAnOutsideChangeToBeAskedAbout) {
    LoadedDocument document("text");
    Touch(document.folder, 60s);
    static uint64_t calls;
    calls = 0;
    const NoRecoveryFolder withoutCopy;
    Platform::SetFileFailureHook([] { return ++calls <= 2; }); // it can be neither made nor opened
    EXPECT_FALSE(document->Save(document->GetName(), Encoding::Keep, LineEnding::Keep));
    Platform::SetFileFailureHook(nullptr);
    EXPECT_TRUE(document->IsChangedOnDisk());
}

TEST(ChangeOnDisk, AFailedSaveUnderAnotherNameTakesNoTime) {
    LoadedDocument document("text");
    Touch(document.folder, -60s);
    ASSERT_TRUE(document->Reload());
    const std::u16string other = document.folder.Write("other.txt", "other");
    static uint64_t calls;
    calls = 0;
    const NoRecoveryFolder withoutCopy;
    Platform::SetFileFailureHook([] { return ++calls == 4; }); // the write
    EXPECT_FALSE(document->Save(other.c_str(), Encoding::Keep, LineEnding::Keep));
    Platform::SetFileFailureHook(nullptr);
    Touch(document.folder, -30s);
    EXPECT_TRUE(document->IsChangedOnDisk());
}

TEST(ChangeOnDisk, ATimeThatCannotBeReadAfterASaveStaysWhatItWas) {
    LoadedDocument document("text");
    Touch(document.folder, -60s);
    ASSERT_TRUE(document->Reload());
    static uint64_t calls;
    calls = 0;
    const NoRecoveryFolder withoutCopy;
    Platform::SetFileFailureHook([] { return ++calls == 7; }); // after the write: cut, flush, open again
    EXPECT_TRUE(document->Save(document->GetName(), Encoding::Keep, LineEnding::Keep));
    Platform::SetFileFailureHook(nullptr);
    EXPECT_TRUE(document->IsChangedOnDisk());
}

TEST(ChangeOnDisk, AMarkedTimeAheadOfTheClockIsNotAskedAboutAgain) {
    LoadedDocument document("text");
    Touch(document.folder, 60s);
    ASSERT_TRUE(document->IsChangedOnDisk());
    document->MarkFileTimeNow();
    EXPECT_FALSE(document->IsChangedOnDisk());
    Touch(document.folder, 120s);
    EXPECT_TRUE(document->IsChangedOnDisk());
}

TEST(ChangeOnDisk, SavingTakesTheNewTime) {
    LoadedDocument document("text");
    Touch(document.folder, 60s);
    ASSERT_TRUE(document->IsChangedOnDisk());
    ASSERT_TRUE(document->Save(document->GetName(), Encoding::Keep, LineEnding::Keep));
    EXPECT_FALSE(document->IsChangedOnDisk());
}

TEST(ChangeOnDisk, ReloadingTakesTheNewTime) {
    LoadedDocument document("text");
    Touch(document.folder, 60s);
    ASSERT_TRUE(document->Reload());
    EXPECT_FALSE(document->IsChangedOnDisk());
}

TEST(ChangeOnDisk, AMissingFileHasNotChanged) {
    LoadedDocument document("text");
    std::filesystem::remove(document.folder.File("file.txt"));
    EXPECT_FALSE(document->IsChangedOnDisk());
}

TEST(ChangeOnDisk, OutputAndTitledDocumentsNeverChange) {
    LoadedDocument output("text");
    Touch(output.folder, 60s);
    ASSERT_TRUE(output->IsChangedOnDisk());
    EXPECT_TRUE(output->MarkAsOutput());
    EXPECT_FALSE(output->IsChangedOnDisk());

    LoadedDocument titled("text");
    Touch(titled.folder, 60s);
    ASSERT_TRUE(titled->SetTitle(u"Untitled"));
    EXPECT_FALSE(titled->IsChangedOnDisk());
    ASSERT_TRUE(titled->SetTitle(u""));
    EXPECT_TRUE(titled->IsChangedOnDisk());
}

TEST(ChangeOnDisk, AFileWhoseTimeCannotBeReadHasNotChanged) {
    LoadedDocument document("text");
    Touch(document.folder, 60s);
    Platform::SetFileFailureHook([] { return true; });
    EXPECT_FALSE(document->IsChangedOnDisk());
    Platform::SetFileFailureHook(nullptr);
    EXPECT_TRUE(document->IsChangedOnDisk());
}
