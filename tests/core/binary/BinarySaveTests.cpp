#include "BinarySupport.h"
#include "support/FailureInjection.h"

TEST(BinarySave, WritesTheLastPageOnlyUpToTheEnd) {
    for (const size_t size : BorderSizes) {
        if (size == 0) continue;
        std::string content = Pattern(size);
        OpenedFile file(content);
        ASSERT_TRUE(file.Edit(size - 1, "Z"));
        EXPECT_TRUE(file.Save());
        content.back() = 'Z';
        EXPECT_EQ(file.OnDisk(), content);
    }
}

TEST(BinarySave, WritesOnlyChangedPages) {
    std::string content = Pattern(100000);
    OpenedFile file(content);
    ASSERT_TRUE(file.Edit(50000, "mine"));
    // Another program changes other pages meanwhile.
    content.replace(0, 5, "other");
    content.replace(90000, 5, "other");
    file.folder.Write("file.bin", content);
    EXPECT_TRUE(file.Save());
    content.replace(50000, 4, "mine");
    EXPECT_EQ(file.OnDisk(), content);
}

TEST(BinarySave, GoesInPlaceWhateverNameIsPassed) {
    OpenedFile file("abc");
    ASSERT_TRUE(file.Edit(0, "x"));
    EXPECT_TRUE(file->Save(file.folder.Path("elsewhere.bin").c_str(), Encoding::Unicode, LineEnding::Dos));
    EXPECT_EQ(file.OnDisk(), "xbc");
    EXPECT_FALSE(std::filesystem::exists(file.folder.File("elsewhere.bin")));
}

TEST(BinarySave, TheDocumentIsThenNotModified) {
    OpenedFile file("abc");
    FakeHexView* view = FakeHexView::Create(*file);
    FakeHexView* other = FakeHexView::Create(*file);
    ASSERT_TRUE(file.Edit(0, "x"));
    view->ForgetCalls();
    other->ForgetCalls();
    EXPECT_TRUE(file.Save());
    EXPECT_FALSE(file->IsModified());
    EXPECT_EQ(view->documentChanges + other->documentChanges, 1); // they have the same frame
    EXPECT_EQ(view->contentChanges, 1);
    EXPECT_EQ(other->contentChanges, 1);
    ASSERT_TRUE(file->Undo());
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(file.Content(), "abc");
    EXPECT_TRUE(file.Save());
    EXPECT_EQ(file.OnDisk(), "abc");
    ASSERT_TRUE(file->Redo());
    EXPECT_TRUE(file->IsModified());
}

TEST(BinarySave, AnEditAfterAnUndoneSaveIsNotTakenForTheSavedOne) {
    OpenedFile file("abc");
    ASSERT_TRUE(file.Edit(0, "x"));
    EXPECT_TRUE(file.Save());
    ASSERT_TRUE(file->Undo());
    ASSERT_TRUE(file.Edit(0, "y")); // its record may lie where the saved one lay
    EXPECT_TRUE(file->IsModified());
}

TEST(BinarySave, AReadOnlyFileIsEditedInMemoryAndNotSaved) {
    OpenedFile file("abc");
    {
        FileCalls calls({1});
        ASSERT_TRUE(file->Open(file.path.c_str()));
    }
    ASSERT_TRUE(file.Edit(0, "x"));
    EXPECT_EQ(file.Content(), "xbc");
    EXPECT_FALSE(file.Save());
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(file.OnDisk(), "abc");
    EXPECT_TRUE(file->Undo());
}

TEST(BinarySave, WithoutChangesSucceedsAndWritesNothing) {
    OpenedFile file("abc");
    for (const uint64_t failing : {0u, 1u}) { // for reading and writing, then for reading only
        {
            FileCalls calls({failing});
            ASSERT_TRUE(file->Open(file.path.c_str()));
        }
        ASSERT_EQ(file->IsReadOnly(), failing != 0);
        FileCalls calls({});
        EXPECT_TRUE(file.Save());
        EXPECT_EQ(calls.Count(), 0u);
    }
}

TEST(BinarySave, ChangesThatWereTakenBackAreNotWritten) {
    OpenedFile file("abc");
    ASSERT_TRUE(file.Edit(0, "x"));
    ASSERT_TRUE(file->Undo());
    file.folder.Write("file.bin", "ABC"); // another program's bytes stay
    EXPECT_TRUE(file.Save());
    EXPECT_EQ(file.OnDisk(), "ABC");
}

TEST(BinarySave, AFailureOnTheThirdOfFivePagesKeepsPagesAndUndo) {
    const std::string content = Pattern(100000);
    std::string changed = content;
    OpenedFile file(content);
    for (const size_t offset : {80000u, 0u, 40000u, 60000u, 20000u}) {
        ASSERT_TRUE(file.Edit(offset, "new"));
        changed.replace(offset, 3, "new");
    }
    {
        FileCalls calls({7}); // sized, then sought and written twice, sought and now written
        EXPECT_FALSE(file.Save());
    }
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(file.Content(), changed);
    // In the order in which the pages were first changed, what was written stays written.
    std::string partly = content;
    partly.replace(80000, 3, "new").replace(0, 3, "new");
    EXPECT_EQ(file.OnDisk(), partly);
    EXPECT_TRUE(file.Save());
    EXPECT_EQ(file.OnDisk(), changed);
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), content);
}

TEST(BinarySave, EveryFileCallFailsInTurn) {
    const std::string content = Pattern(50000);
    OpenedFile file(content);
    ASSERT_TRUE(file.Edit(0, "one"));
    ASSERT_TRUE(file.Edit(49997, "two"));
    const std::string changed = file.Content();
    const uint64_t failures = FailEachFileCall([&] {
        const bool saved = file.Save();
        FailurePause checking;
        EXPECT_EQ(file->IsModified(), !saved);
        EXPECT_EQ(file.Content(), changed);
        EXPECT_TRUE(file->CanDo(DocumentCommand::Undo));
        return saved;
    });
    EXPECT_EQ(failures, 7u); // sized, two pages sought and written, flushed, dated
    EXPECT_EQ(file.OnDisk(), changed);
}

TEST(BinarySave, AHalfWrittenFileIsNotTakenForUnmodified) {
    const std::string content = Pattern(100000);
    for (const uint64_t failing : {3u, 5u, 11u, 12u}) { // either of the first two writes, the last one, flushing
        OpenedFile file(content);
        FakeHexView* view = FakeHexView::Create(*file);
        for (const size_t offset : {0u, 20000u, 40000u, 60000u, 80000u}) ASSERT_TRUE(file.Edit(offset, "new"));
        view->ForgetCalls();
        {
            FileCalls calls({failing});
            EXPECT_FALSE(file.Save());
        }
        EXPECT_EQ(view->documentChanges, 1);
        EXPECT_EQ(view->contentChanges, 1);
        for (int i = 0; i < 5; ++i) EXPECT_TRUE(file->Undo());
        EXPECT_EQ(file.Content(), content);
        EXPECT_TRUE(file->IsModified()) << failing;
        EXPECT_TRUE(file.Save());
        EXPECT_FALSE(file->IsModified());
        EXPECT_EQ(file.OnDisk(), content);
    }
}

TEST(BinarySave, AFailureBeforeAnythingIsWrittenLeavesTheSavedStateWhereItWas) {
    for (const uint64_t failing : {1u, 2u}) { // sized, sought
        OpenedFile file("abc");
        ASSERT_TRUE(file.Edit(0, "x"));
        FileCalls calls({failing});
        EXPECT_FALSE(file.Save());
        EXPECT_TRUE(file->IsModified());
        EXPECT_TRUE(file->Undo());
        EXPECT_FALSE(file->IsModified());
        EXPECT_EQ(file.OnDisk(), "abc");
    }
}

TEST(BinarySave, AFileThatWasMovedOrReplacedIsNotWritten) {
    const std::string content = Pattern(50000);
    OpenedFile file(content);
    ASSERT_TRUE(file.Edit(0, "x"));
    std::error_code error;
    std::filesystem::rename(file.folder.File("file.bin"), file.folder.File("file.bak"), error);
    ASSERT_FALSE(error);
    EXPECT_FALSE(file.Save());
    file.folder.Write("file.bin", content); // as a program saves that keeps the old file
    EXPECT_FALSE(file.Save());
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(file.Content()[0], 'x');
    EXPECT_EQ(file.folder.Read("file.bak"), content);
    EXPECT_EQ(file.OnDisk(), content);
    std::filesystem::rename(file.folder.File("file.bak"), file.folder.File("file.bin"), error);
    ASSERT_FALSE(error);
    EXPECT_TRUE(file.Save()); // it is back
    EXPECT_EQ(file.OnDisk()[0], 'x');
}

TEST(BinaryShortened, ShowsWhatIsThereAndNeverGrows) {
    const std::string content = Pattern(50000);
    OpenedFile file(content);
    ASSERT_TRUE(file.Edit(45000, "late"));
    ASSERT_TRUE(file.Edit(100, "early"));
    std::filesystem::resize_file(file.folder.File("file.bin"), 20000);
    Bytes page(PageSize);
    uint32_t valid = 0;
    EXPECT_TRUE(file->ReadPage(page.data(), 16384, false, valid));
    EXPECT_EQ(valid, 20000u - 16384u);
    EXPECT_EQ(std::string(page.begin(), page.begin() + valid), Slice(content, 16384, valid));
    // No page is made of what could not be read.
    EXPECT_FALSE(file.Edit(18000, "x"));
    EXPECT_FALSE(file.Edit(49500, "x"));
    EXPECT_FALSE(file.Save());
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(file.OnDisk(), Slice(content, 0, 20000));
}

TEST(BinaryShortened, ADeletedFileFailsWithoutHarm) {
    OpenedFile file(Pattern(50000));
    ASSERT_TRUE(file.Edit(0, "x"));
    std::filesystem::resize_file(file.folder.File("file.bin"), 0);
    std::error_code ignored;
    std::filesystem::remove(file.folder.File("file.bin"), ignored);
    Bytes page(PageSize);
    uint32_t valid = 1;
    EXPECT_TRUE(file->ReadPage(page.data(), 16384, false, valid));
    EXPECT_EQ(valid, 0u);
    EXPECT_FALSE(file.Save());
    EXPECT_TRUE(file->Undo()); // its page is in memory
}

TEST(BinaryShortened, WhatIsWrittenIntoADeletedFileIsNotTakenForSaved) {
    OpenedFile file(Pattern(50000));
    ASSERT_TRUE(file.Edit(0, "x"));
    std::error_code error;
    std::filesystem::remove(file.folder.File("file.bin"), error);
    ASSERT_FALSE(error);
    if (std::filesystem::exists(file.folder.File("file.bin"))) GTEST_SKIP() << "deleted here only once it is closed";
    EXPECT_FALSE(file.Save());
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(file.Content()[0], 'x');
    EXPECT_FALSE(std::filesystem::exists(file.folder.File("file.bin")));
}

TEST(BinaryShortened, WhatAnotherProgramAppendedIsLeftAlone) {
    OpenedFile file("abc");
    ASSERT_TRUE(file.Edit(2, "x"));
    file.folder.Write("file.bin", "abcdef");
    EXPECT_EQ(file->FileSize(), 3u);
    EXPECT_TRUE(file.Save());
    EXPECT_EQ(file.OnDisk(), "abxdef");
}
