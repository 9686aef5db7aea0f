#include "BinarySupport.h"
#include "support/FailureInjection.h"

namespace {

std::string Part(const std::string& bytes, size_t offset, size_t count) { return bytes.substr(offset, count); }

std::string WindowOf(const BinaryDocument& document) {
    return {reinterpret_cast<const char*>(document.Window()), document.WindowValid()};
}

} // namespace

TEST(BinaryOpen, FilesOfEveryBorderSizeShowTheirBytes) {
    for (const size_t size : BorderSizes) {
        const std::string content = Pattern(size);
        OpenedFile file(content);
        EXPECT_EQ(file->FileSize(), size);
        EXPECT_FALSE(file->IsReadOnly());
        EXPECT_FALSE(file->IsModified());
        EXPECT_EQ(file->WindowStart(), 0u);
        EXPECT_EQ(WindowOf(*file), Part(content, 0, 32768));
        EXPECT_EQ(file.Content(), content);
    }
}

TEST(BinaryOpen, GivesTheDocumentThePath) {
    OpenedFile file("x");
    EXPECT_EQ(std::u16string(file->GetName()), file.path);
}

TEST(BinaryOpen, RefusesWhatIsNoFile) {
    ScratchFolder folder;
    for (const std::u16string& path : {folder.Path("missing.bin"), folder.Path(""), std::u16string(u""),
                                       std::u16string(u"\\dev\\zero"), std::u16string(u"NUL")}) {
        OpenedFile file("before");
        EXPECT_FALSE(file->Open(path.c_str()));
        EXPECT_EQ(file->FileSize(), 0u);
        EXPECT_EQ(file->Window(), nullptr);
        uint8_t byte = 0;
        EXPECT_FALSE(file->ReadBytes(0, &byte, 1));
        EXPECT_FALSE(file->EditBytes(0, &byte, 1, nullptr, {}));
        EXPECT_FALSE(file.Save());
    }
}

TEST(BinaryOpen, FallsBackToReadingOnly) {
    OpenedFile file("content");
    {
        FileCalls calls({1}); // opening for reading and writing
        EXPECT_TRUE(file->Open(file.path.c_str()));
    }
    EXPECT_TRUE(file->IsReadOnly());
    EXPECT_TRUE(file->CanDo(DocumentCommand::Edit));
    EXPECT_TRUE(file->Open(file.path.c_str()));
    EXPECT_FALSE(file->IsReadOnly());
}

TEST(BinaryOpen, ClosesTheFileBefore) {
    OpenedFile file(Pattern(50000));
    ASSERT_TRUE(file.Edit(40000, "changed"));
    ASSERT_TRUE(file.Edit(0, "x"));
    ASSERT_TRUE(file->Undo());
    const std::u16string other = file.folder.Write("other.bin", "other");
    ASSERT_TRUE(file->Open(other.c_str()));
    EXPECT_EQ(file.Content(), "other");
    EXPECT_FALSE(file->IsModified());
    EXPECT_FALSE(file->CanDo(DocumentCommand::Undo));
    EXPECT_FALSE(file->CanDo(DocumentCommand::Redo));
    EXPECT_TRUE(file.Save());
    EXPECT_EQ(file.OnDisk(), Pattern(50000));
}

TEST(BinaryOpen, EveryAllocationAndFileCallFailsInTurn) {
    OpenedFile file("content");
    const auto open = [&] {
        const bool opened = file->Open(file.path.c_str());
        EXPECT_EQ(file->FileSize(), opened ? 7u : 0u);
        EXPECT_EQ(file->Window() != nullptr, opened);
        return opened;
    };
    EXPECT_GE(FailEachAllocation(open), 2u);
    EXPECT_EQ(FailEachFileCall(open), 3u); // opened, sized, read again when it fails
}

TEST(BinaryWindow, StaysWhenItHoldsTheRange) {
    OpenedFile file(Pattern(100000));
    FileCalls calls;
    EXPECT_TRUE(file->EnsureWindow(0, 16384));
    EXPECT_TRUE(file->EnsureWindow(16384, 16384));
    EXPECT_TRUE(file->EnsureWindow(32767, 1));
    EXPECT_EQ(calls.Count(), 0u);
    EXPECT_EQ(file->WindowStart(), 0u);
}

TEST(BinaryWindow, MovesForwardsToTheOffset) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    EXPECT_TRUE(file->EnsureWindow(16385, 16384));
    EXPECT_EQ(file->WindowStart(), 16385u);
    EXPECT_EQ(WindowOf(*file), Part(content, 16385, 32768));
    EXPECT_TRUE(file->EnsureWindow(90000, 16384));
    EXPECT_EQ(file->WindowStart(), 90000u);
    EXPECT_EQ(WindowOf(*file), Part(content, 90000, 10000));
}

TEST(BinaryWindow, MovesBackwardsWithThePageBefore) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    ASSERT_TRUE(file->EnsureWindow(90000, 16384));
    EXPECT_TRUE(file->EnsureWindow(60000, 16384));
    EXPECT_EQ(file->WindowStart(), 60000u - 16384u);
    EXPECT_EQ(WindowOf(*file), Part(content, 60000 - 16384, 32768));
    EXPECT_TRUE(file->EnsureWindow(10000, 100));
    EXPECT_EQ(file->WindowStart(), 0u);
}

TEST(BinaryWindow, MovesBackwardsWithLessBeforeALongRange) {
    const std::string content = Pattern(200000);
    OpenedFile file(content);
    for (const uint32_t count : {16385u, 20000u, 32767u, 32768u}) {
        ASSERT_TRUE(file->EnsureWindow(150000, 100));
        EXPECT_TRUE(file->EnsureWindow(60000, count));
        ASSERT_LE(file->WindowStart(), 60000u);
        EXPECT_GE(file->WindowStart() + file->WindowValid(), 60000u + count);
        EXPECT_EQ(WindowOf(*file), Part(content, static_cast<size_t>(file->WindowStart()), 32768));
    }
}

TEST(BinaryWindow, BehindTheEndItHoldsTheLastBytes) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    EXPECT_TRUE(file->EnsureWindow(100000, 16384));
    EXPECT_EQ(file->WindowStart(), 100000u - 32768u);
    EXPECT_EQ(WindowOf(*file), Part(content, 100000 - 32768, 32768));
    {
        FileCalls calls;
        EXPECT_TRUE(file->EnsureWindow(UINT64_MAX, 16384));
        EXPECT_TRUE(file->EnsureWindow(100001, 0));
        EXPECT_EQ(calls.Count(), 0u); // it is there already
    }
    EXPECT_EQ(file->WindowStart(), 100000u - 32768u);
    OpenedFile small("abc");
    EXPECT_TRUE(small->EnsureWindow(1000, 16384));
    EXPECT_EQ(small->WindowStart(), 0u);
}

TEST(BinaryWindow, ARandomReadCostsOneSystemRead) {
    OpenedFile file(Pattern(200000));
    std::mt19937 random(1);
    for (int i = 0; i < 200; ++i) {
        FileCalls calls;
        EXPECT_TRUE(file->EnsureWindow(random() % 200000, 16384));
        EXPECT_LE(calls.Count(), 1u);
    }
}

TEST(BinaryRead, APageIsTheChangedOneUnlessTheFileIsAskedFor) {
    const std::string content = Pattern(50000);
    OpenedFile file(content);
    ASSERT_TRUE(file.Edit(16384, "new"));
    Bytes page(PageSize);
    uint32_t valid = 0;
    ASSERT_TRUE(file->ReadPage(page.data(), 16384, false, valid));
    EXPECT_EQ(valid, PageSize);
    EXPECT_EQ(std::string(page.begin(), page.begin() + 3), "new");
    ASSERT_TRUE(file->ReadPage(page.data(), 16384, true, valid));
    EXPECT_EQ(std::string(page.begin(), page.end()), Part(content, 16384, 16384));
}

TEST(BinaryRead, TheLastPageIsFilledUpWithZeros) {
    const std::string content = Pattern(16384 + 10);
    OpenedFile file(content);
    for (const bool changed : {false, true}) {
        if (changed) {
            ASSERT_TRUE(file.Edit(16384, Part(content, 16384, 1)));
        }
        Bytes page(PageSize, 0xAA);
        uint32_t valid = 0;
        ASSERT_TRUE(file->ReadPage(page.data(), 16384, false, valid));
        EXPECT_EQ(valid, 10u);
        EXPECT_EQ(std::string(page.begin(), page.begin() + 10), Part(content, 16384, 10));
        EXPECT_EQ(Bytes(page.begin() + 10, page.end()), Bytes(PageSize - 10));
    }
    Bytes page(PageSize, 0xAA);
    uint32_t valid = 1;
    EXPECT_TRUE(file->ReadPage(page.data(), 32768, false, valid)); // behind the end
    EXPECT_EQ(valid, 0u);
    EXPECT_EQ(page, Bytes(PageSize));
}

TEST(BinaryRead, LeavesTheBookkeepingOfTheWindow) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    ASSERT_TRUE(file->EnsureWindow(40000, 100));
    Bytes out(20000);
    ASSERT_TRUE(file->ReadBytes(70000, out.data(), out.size()));
    EXPECT_EQ(std::string(out.begin(), out.end()), Part(content, 70000, 20000));
    EXPECT_EQ(file->WindowStart(), 40000u);
    EXPECT_EQ(file->WindowValid(), 32768u);
}

TEST(BinaryRead, OnlyWhatLiesInTheFile) {
    OpenedFile file("0123456789");
    Bytes out(20);
    EXPECT_TRUE(file->ReadBytes(5, out.data(), 5));
    EXPECT_FALSE(file->ReadBytes(5, out.data(), 6));
    EXPECT_FALSE(file->ReadBytes(11, out.data(), 0));
    EXPECT_FALSE(file->ReadBytes(UINT64_MAX, out.data(), 2));
    EXPECT_TRUE(file->ReadBytes(10, out.data(), 0));
}

TEST(BinaryWrite, ChangesPagesInMemoryOnly) {
    std::string content = Pattern(50000);
    OpenedFile file(content);
    const std::string written = Pattern(20000, 2);
    ASSERT_TRUE(file->WriteBytes(16380, reinterpret_cast<const uint8_t*>(written.data()), written.size()));
    EXPECT_EQ(file.OnDisk(), content);
    content.replace(16380, written.size(), written);
    EXPECT_EQ(file.Content(), content);
}

TEST(BinaryWrite, OutsideTheFileChangesNothing) {
    OpenedFile file("0123456789");
    const uint8_t bytes[20] = {};
    EXPECT_FALSE(file->WriteBytes(5, bytes, 6));
    EXPECT_FALSE(file->WriteBytes(11, bytes, 0));
    EXPECT_FALSE(file->WriteBytes(UINT64_MAX - 1, bytes, 4));
    EXPECT_FALSE(file.Edit(10, "x"));
    EXPECT_FALSE(file.Edit(9, "xy"));
    EXPECT_FALSE(file.Edit(3, ""));
    EXPECT_EQ(file.Content(), "0123456789");
    EXPECT_FALSE(file->IsModified());
}

TEST(BinaryWrite, AllPagesOrNone) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    const Bytes zeros(60000);
    {
        const Damage damage(40000, 40001); // in the third of them
        EXPECT_FALSE(file->WriteBytes(10, zeros.data(), zeros.size()));
    }
    EXPECT_EQ(file.Content(), content);
    EXPECT_TRUE(file.Save());
    EXPECT_EQ(file.OnDisk(), content);
}

TEST(BinaryEdit, TheSameByteTwiceIsTwoSteps) {
    const std::string content = Pattern(40000);
    OpenedFile file(content);
    ASSERT_TRUE(file.Edit(20000, "a"));
    ASSERT_TRUE(file.Edit(20000, "b"));
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(file.Content()[20000], 'b');
    ASSERT_TRUE(file->Undo());
    EXPECT_EQ(file.Content()[20000], 'a');
    EXPECT_TRUE(file->IsModified());
    ASSERT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), content);
    EXPECT_FALSE(file->IsModified());
    EXPECT_FALSE(file->Undo());
    ASSERT_TRUE(file->DoCommand(DocumentCommand::Redo));
    ASSERT_TRUE(file->Redo());
    EXPECT_EQ(file.Content()[20000], 'b');
    EXPECT_FALSE(file->Redo());
    EXPECT_TRUE(file->DoCommand(DocumentCommand::Undo));
    EXPECT_EQ(file.Content()[20000], 'a');
    EXPECT_FALSE(file->DoCommand(DocumentCommand::Paste));
}

TEST(BinaryEdit, ANewEditForgetsWhatCouldBeRedone) {
    OpenedFile file("abc");
    ASSERT_TRUE(file.Edit(0, "x"));
    ASSERT_TRUE(file->Undo());
    EXPECT_TRUE(file->CanDo(DocumentCommand::Redo));
    ASSERT_TRUE(file.Edit(1, "y"));
    EXPECT_FALSE(file->CanDo(DocumentCommand::Redo));
    EXPECT_EQ(file.Content(), "ayc");
}

TEST(BinaryEdit, MovesTheCaretOfItsViewAndTellsAllViews) {
    OpenedFile file("abcdef");
    FakeHexView* first = FakeHexView::Create(*file);
    FakeHexView* second = FakeHexView::Create(*file);
    const HexViewState state = {2, 0, 3, 1};
    ASSERT_TRUE(file.Edit(2, "xy", second, state));
    EXPECT_EQ(second->caret, 3u);
    EXPECT_EQ(second->subPosition, 1u);
    EXPECT_EQ(second->madeVisible, 1);
    EXPECT_EQ(first->madeVisible, 0);
    EXPECT_EQ(first->contentChanges, 1);
    EXPECT_EQ(second->contentChanges, 1);
    EXPECT_EQ(first->documentChanges, 1); // the frame hears it through the first view

    first->ForgetCalls();
    ASSERT_TRUE(file->Undo());
    EXPECT_EQ(second->caret, 2u);
    EXPECT_EQ(second->subPosition, 0u);
    EXPECT_EQ(first->documentChanges, 1);
    EXPECT_EQ(first->contentChanges, 1);
    ASSERT_TRUE(file->Redo());
    EXPECT_EQ(second->caret, 3u);
    EXPECT_EQ(second->subPosition, 1u);
}

TEST(BinaryEdit, AViewThatIsGoneIsLeftAlone) {
    OpenedFile file("abc");
    FakeHexView* view = FakeHexView::Create(*file);
    ASSERT_TRUE(file.Edit(0, "x", view));
    view->Destroy();
    EXPECT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), "abc");
}

TEST(BinaryEdit, EveryAllocationFailsInTurn) {
    for (const size_t size : {1u, 40000u}) {
        const std::string content = Pattern(100000);
        const std::string written(size, 'x');
        const uint64_t failures = FailEachAllocation([&] {
            auto pause = std::make_unique<FailurePause>();
            OpenedFile file(content);
            EXPECT_TRUE(file.Edit(0, "y"));
            EXPECT_TRUE(file->Undo());
            pause.reset();
            const bool done = file.Edit(30000, written);
            FailurePause checking;
            EXPECT_EQ(file->IsModified(), done);
            EXPECT_EQ(file->CanDo(DocumentCommand::Redo), !done); // as it was before
            std::string expected = content;
            if (done) expected.replace(30000, size, written);
            EXPECT_EQ(file.Content(), expected);
            return done;
        });
        EXPECT_GE(failures, 2u);
    }
}

TEST(BinaryEdit, AReadThatFailsOnceIsRepeated) {
    std::string changed = Pattern(100000);
    changed.replace(30000, 20000, std::string(20000, 'x'));
    const uint64_t failures = FailEachFileCall([&] {
        auto pause = std::make_unique<FailurePause>();
        OpenedFile file(Pattern(100000));
        pause.reset();
        EXPECT_TRUE(file.Edit(30000, std::string(20000, 'x'))); // reads again what failed once
        const FailurePause checking;
        EXPECT_EQ(file.Content(), changed);
        return true;
    });
    EXPECT_EQ(failures, 6u); // three pages read twice: the old bytes, then the pages
}

TEST(BinaryUndo, WhosePageCannotBeReadStaysAStep) {
    const std::string content = Pattern(50000);
    OpenedFile file(content);
    ASSERT_TRUE(file.Edit(20000, "x"));
    ASSERT_TRUE(file.Save()); // the page is no longer in memory
    {
        const Damage damage(16384, 16385);
        EXPECT_FALSE(file->Undo());
    }
    EXPECT_FALSE(file->IsModified());
    EXPECT_TRUE(file->CanDo(DocumentCommand::Undo));
    EXPECT_TRUE(file->Undo());
    EXPECT_EQ(file.Content(), content);
    EXPECT_TRUE(file->IsModified());
}

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
    EXPECT_TRUE(file->Save(file.folder.Path("elsewhere.bin").c_str(), 1, 2));
    EXPECT_EQ(file.OnDisk(), "xbc");
    EXPECT_FALSE(std::filesystem::exists(file.folder.File("elsewhere.bin")));
}

TEST(BinarySave, TheDocumentIsThenNotModified) {
    OpenedFile file("abc");
    FakeHexView* view = FakeHexView::Create(*file);
    ASSERT_TRUE(file.Edit(0, "x"));
    view->ForgetCalls();
    EXPECT_TRUE(file.Save());
    EXPECT_FALSE(file->IsModified());
    EXPECT_EQ(view->documentChanges, 1);
    EXPECT_EQ(view->contentChanges, 1);
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
    EXPECT_EQ(failures, 6u); // sized, two pages sought and written, flushed
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
    EXPECT_EQ(std::string(page.begin(), page.begin() + valid), Part(content, 16384, valid));
    // No page is made of what could not be read.
    EXPECT_FALSE(file.Edit(18000, "x"));
    EXPECT_FALSE(file.Edit(49500, "x"));
    EXPECT_FALSE(file.Save());
    EXPECT_TRUE(file->IsModified());
    EXPECT_EQ(file.OnDisk(), Part(content, 0, 20000));
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

TEST(BinaryShortened, WhatAnotherProgramAppendedIsLeftAlone) {
    OpenedFile file("abc");
    ASSERT_TRUE(file.Edit(2, "x"));
    file.folder.Write("file.bin", "abcdef");
    EXPECT_EQ(file->FileSize(), 3u);
    EXPECT_TRUE(file.Save());
    EXPECT_EQ(file.OnDisk(), "abxdef");
}

TEST(BinaryLarge, OneTerabyteIsReadChangedAndSearchedLikeAnyOther) {
    OpenedFile file("x");
    constexpr uint64_t Size = uint64_t{1} << 40;
    std::error_code error;
    std::filesystem::resize_file(file.folder.File("file.bin"), Size, error);
    if (error) GTEST_SKIP() << "no room for a sparse file: " << error.message();
    {
        FileCalls calls;
        ASSERT_TRUE(file->Open(file.path.c_str()));
        EXPECT_EQ(calls.Count(), 3u); // no more than for a small file
    }
    EXPECT_EQ(file->FileSize(), Size);
    const uint64_t far = Size - 100;
    ASSERT_TRUE(file.Edit(far, "needle"));
    ASSERT_TRUE(file.Edit(uint64_t{5} << 32, "y"));
    ASSERT_TRUE(file.Save());
    uint8_t bytes[6] = {};
    ASSERT_TRUE(file->ReadBytes(far, bytes, 6));
    EXPECT_EQ(std::string(bytes, bytes + 6), "needle");
    WString pattern;
    ASSERT_TRUE(pattern.Assign(u"needle"));
    uint64_t found = 0;
    bool wrapped = false;
    uint32_t length = 0;
    ASSERT_TRUE(file->FindBytes(pattern, Size, Size, true, true, false, found, wrapped, length));
    EXPECT_EQ(found, far);
    ASSERT_TRUE(file->FindBytes(pattern, Size - 70000, Size, true, false, false, found, wrapped, length));
    EXPECT_EQ(found, far);
    EXPECT_EQ(file->Undo(), true);
}

TEST(BinaryInterface, AnswersWhatTextDocumentsHave) {
    OpenedFile file("abc");
    bool running = true;
    EXPECT_FALSE(file->GetOutputState(running));
    EXPECT_FALSE(file->IsChangedOnDisk());
    EXPECT_FALSE(file->Reload());
    EXPECT_TRUE(file->IsBinary());
    EXPECT_EQ(file->GetLineEnding(), 0u);
    uint32_t current = 1;
    const Char* const* names = nullptr;
    EXPECT_FALSE(file->GetEncoding(current, names));
    EXPECT_EQ(names, nullptr);
    EXPECT_TRUE(file->CanDo(DocumentCommand::Edit));
    EXPECT_FALSE(file->CanDo(DocumentCommand::Undo));
    EXPECT_FALSE(file->CanDo(DocumentCommand::Redo));
    EXPECT_FALSE(file->CanDo(DocumentCommand::Paste));
    WString text;
    ASSERT_TRUE(file->GetSessionText(text));
    EXPECT_EQ(std::u16string(text.Text()), u"eb " + file.path + u"\r\n");
    ASSERT_TRUE(file->SetTitle(u"title"));
    EXPECT_EQ(std::u16string(file->GetTitle()), u"title");
}

TEST(BinaryViews, AreListedInOrderAndDestroyedWithTheDocument) {
    const int before = FakeHexView::alive;
    {
        OpenedFile file("abc");
        ViewNode* next = nullptr;
        EXPECT_EQ(file->EnumViews(nullptr, next), nullptr);
        FakeHexView* first = FakeHexView::Create(*file);
        FakeHexView* second = FakeHexView::Create(*file);
        FakeHexView::failNext = true;
        EXPECT_EQ(FakeHexView::Create(*file), nullptr);
        EXPECT_EQ(file->EnumViews(nullptr, next), first);
        EXPECT_EQ(file->EnumViews(next, next), second);
        EXPECT_EQ(next, nullptr);
        EXPECT_EQ(file->AddRef(), 2u);
        EXPECT_EQ(file->Release(), 1u);
        EXPECT_EQ(FakeHexView::alive, before + 2);
    }
    EXPECT_EQ(FakeHexView::alive, before);
}

TEST(BinaryRandom, OperationsMatchAVectorOfBytes) {
    struct Step {
        size_t offset;
        std::string before;
        std::string after;
    };
    std::mt19937 random(11);
    for (int round = 0; round < 20; ++round) {
        std::string model = Pattern(BorderSizes[3 + random() % 10], static_cast<unsigned>(random()));
        std::string saved = model;
        OpenedFile file(model);
        std::vector<Step> done;
        std::vector<Step> undone;
        for (int step = 0; step < 1000; ++step) {
            const auto choice = random() % 20;
            if (choice < 12) {
                const size_t offset = random() % model.size();
                const size_t most = std::min<size_t>(model.size() - offset, random() % 8 ? 1 : 20000);
                const std::string bytes = Pattern(1 + random() % most, static_cast<unsigned>(random()));
                ASSERT_TRUE(file.Edit(offset, bytes));
                done.push_back({offset, model.substr(offset, bytes.size()), bytes});
                undone.clear();
                model.replace(offset, bytes.size(), bytes);
            } else if (choice < 15) {
                ASSERT_EQ(file->Undo(), !done.empty());
                if (done.empty()) continue;
                model.replace(done.back().offset, done.back().before.size(), done.back().before);
                undone.push_back(done.back());
                done.pop_back();
            } else if (choice < 17) {
                ASSERT_EQ(file->Redo(), !undone.empty());
                if (undone.empty()) continue;
                model.replace(undone.back().offset, undone.back().after.size(), undone.back().after);
                done.push_back(undone.back());
                undone.pop_back();
            } else if (choice < 18) {
                ASSERT_TRUE(file.Save());
                saved = model;
                ASSERT_EQ(file.OnDisk(), model);
                ASSERT_FALSE(file->IsModified());
            } else if (choice < 19) {
                ASSERT_TRUE(file->Open(file.path.c_str()));
                model = saved;
                done.clear();
                undone.clear();
            } else {
                ASSERT_TRUE(file->EnsureWindow(random() % (model.size() + 10), 16384));
            }
            if (model != saved) {
                ASSERT_TRUE(file->IsModified());
            }
            if (step % 10 == 0) {
                ASSERT_EQ(file.Content(), model);
            }
        }
        ASSERT_EQ(file.Content(), model);
        ASSERT_EQ(file.OnDisk(), saved);
    }
}

TEST(BinaryPages, AreFoundAmongManyAndKeepTheirOrder) {
    ChangedPages pages;
    std::mt19937_64 random(3);
    std::vector<uint64_t> indexes;
    for (uint64_t i = 0; i < 500; ++i) indexes.push_back(i % 2 ? i << 40 : random());
    const auto append = [&](size_t first, size_t end) {
        for (size_t i = first; i < end; ++i) {
            EXPECT_EQ(pages.Find(indexes[i]), nullptr);
            auto* page = new ChangedPage;
            page->index = indexes[i];
            pages.Append(page);
        }
    };
    const auto check = [&](size_t count) {
        ASSERT_EQ(pages.Count(), count);
        const ChangedPage* page = pages.Head();
        for (size_t i = 0; i < indexes.size(); ++i) {
            const ChangedPage* found = pages.Find(indexes[i]);
            ASSERT_EQ(found, i < count ? page : nullptr);
            if (i < count) page = page->next;
        }
    };
    append(0, 300);
    const ChangedPage* last = pages.Tail();
    append(300, 500);
    check(500);
    pages.RemoveBehind(last);
    check(300);
    append(300, 400);
    check(400);
    pages.Clear();
    check(0);
    append(0, 10);
    pages.RemoveBehind(nullptr);
    check(0);
}
