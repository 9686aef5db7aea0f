#include "BinarySupport.h"
#include "support/FailureInjection.h"
#include "support/SparseFile.h"

namespace {

std::string WindowOf(const BinaryDocument& document) {
    return {reinterpret_cast<const char*>(document.Window().Bytes()), document.Window().Valid()};
}

} // namespace

TEST(BinaryOpen, FilesOfEveryBorderSizeShowTheirBytes) {
    for (const size_t size : BorderSizes) {
        const std::string content = Pattern(size);
        OpenedFile file(content);
        EXPECT_EQ(file->FileSize(), size);
        EXPECT_FALSE(file->IsReadOnly());
        EXPECT_FALSE(file->IsModified());
        EXPECT_EQ(file->Window().Start(), 0u);
        EXPECT_EQ(WindowOf(*file), Slice(content, 0, 32768));
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
        EXPECT_EQ(file->Window().Bytes(), nullptr);
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
        EXPECT_EQ(file->Window().Bytes() != nullptr, opened);
        return opened;
    };
    EXPECT_GE(FailEachAllocation(open), 2u);
    EXPECT_EQ(FailEachFileCall(open), 4u); // opened, sized, dated, read again when it fails
}

TEST(BinaryWindow, StaysWhenItHoldsTheRange) {
    OpenedFile file(Pattern(100000));
    FileCalls calls;
    EXPECT_TRUE(file->EnsureWindow(0, 16384));
    EXPECT_TRUE(file->EnsureWindow(16384, 16384));
    EXPECT_TRUE(file->EnsureWindow(32767, 1));
    EXPECT_EQ(calls.Count(), 0u);
    EXPECT_EQ(file->Window().Start(), 0u);
}

TEST(BinaryWindow, MovesForwardsToTheOffset) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    EXPECT_TRUE(file->EnsureWindow(16385, 16384));
    EXPECT_EQ(file->Window().Start(), 16385u);
    EXPECT_EQ(WindowOf(*file), Slice(content, 16385, 32768));
    EXPECT_TRUE(file->EnsureWindow(90000, 16384));
    EXPECT_EQ(file->Window().Start(), 90000u);
    EXPECT_EQ(WindowOf(*file), Slice(content, 90000, 10000));
}

TEST(BinaryWindow, MovesBackwardsWithThePageBefore) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    ASSERT_TRUE(file->EnsureWindow(90000, 16384));
    EXPECT_TRUE(file->EnsureWindow(60000, 16384));
    EXPECT_EQ(file->Window().Start(), 60000u - 16384u);
    EXPECT_EQ(WindowOf(*file), Slice(content, 60000 - 16384, 32768));
    EXPECT_TRUE(file->EnsureWindow(10000, 100));
    EXPECT_EQ(file->Window().Start(), 0u);
}

TEST(BinaryWindow, MovesBackwardsWithLessBeforeALongRange) {
    const std::string content = Pattern(200000);
    OpenedFile file(content);
    for (const uint32_t count : {16385u, 20000u, 32767u, 32768u}) {
        ASSERT_TRUE(file->EnsureWindow(150000, 100));
        EXPECT_TRUE(file->EnsureWindow(60000, count));
        ASSERT_LE(file->Window().Start(), 60000u);
        EXPECT_GE(file->Window().Start() + file->Window().Valid(), 60000u + count);
        EXPECT_EQ(WindowOf(*file), Slice(content, static_cast<size_t>(file->Window().Start()), 32768));
    }
}

TEST(BinaryWindow, PastTheEndItHoldsTheLastBytes) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    EXPECT_TRUE(file->EnsureWindow(100000, 16384));
    EXPECT_EQ(file->Window().Start(), 100000u - 32768u);
    EXPECT_EQ(WindowOf(*file), Slice(content, 100000 - 32768, 32768));
    {
        FileCalls calls;
        EXPECT_TRUE(file->EnsureWindow(UINT64_MAX, 16384));
        EXPECT_TRUE(file->EnsureWindow(100001, 0));
        EXPECT_EQ(calls.Count(), 0u); // it is there already
    }
    EXPECT_EQ(file->Window().Start(), 100000u - 32768u);
    OpenedFile small("abc");
    EXPECT_TRUE(small->EnsureWindow(1000, 16384));
    EXPECT_EQ(small->Window().Start(), 0u);
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
    EXPECT_EQ(std::string(page.begin(), page.end()), Slice(content, 16384, 16384));
}

TEST(BinaryRead, TheLastPageIsFilledUpWithZeros) {
    const std::string content = Pattern(16384 + 10);
    OpenedFile file(content);
    for (const bool changed : {false, true}) {
        if (changed) {
            ASSERT_TRUE(file.Edit(16384, Slice(content, 16384, 1)));
        }
        Bytes page(PageSize, 0xAA);
        uint32_t valid = 0;
        ASSERT_TRUE(file->ReadPage(page.data(), 16384, false, valid));
        EXPECT_EQ(valid, 10u);
        EXPECT_EQ(std::string(page.begin(), page.begin() + 10), Slice(content, 16384, 10));
        EXPECT_EQ(Bytes(page.begin() + 10, page.end()), Bytes(PageSize - 10));
    }
    Bytes page(PageSize, 0xAA);
    uint32_t valid = 1;
    EXPECT_TRUE(file->ReadPage(page.data(), 32768, false, valid)); // past the end
    EXPECT_EQ(valid, 0u);
    EXPECT_EQ(page, Bytes(PageSize));
}

TEST(BinaryRead, LeavesTheBookkeepingOfTheWindow) {
    const std::string content = Pattern(100000);
    OpenedFile file(content);
    ASSERT_TRUE(file->EnsureWindow(40000, 100));
    Bytes out(20000);
    ASSERT_TRUE(file->ReadBytes(70000, out.data(), out.size()));
    EXPECT_EQ(std::string(out.begin(), out.end()), Slice(content, 70000, 20000));
    EXPECT_EQ(file->Window().Start(), 40000u);
    EXPECT_EQ(file->Window().Valid(), 32768u);
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

TEST(BinaryLarge, OneTerabyteIsReadChangedAndSearchedLikeAnyOther) {
    OpenedFile file("x");
    constexpr uint64_t Size = uint64_t{1} << 40;
    if (!ResizeSparsely(file.folder.File("file.bin"), Size)) GTEST_SKIP() << "no room for a sparse file";
    {
        FileCalls calls;
        ASSERT_TRUE(file->Open(file.path.c_str()));
        EXPECT_EQ(calls.Count(), 4u); // no more than for a small file
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
    ByteHit hit;
    ASSERT_TRUE(file->FindBytes(pattern, {.from = Size, .end = Size, .matchCase = true, .backward = true}, hit));
    EXPECT_EQ(hit.offset, far);
    ASSERT_TRUE(file->FindBytes(pattern, {.from = Size - 70000, .end = Size, .matchCase = true}, hit));
    EXPECT_EQ(hit.offset, far);
    EXPECT_EQ(file->Undo(), true);
}

TEST(BinaryInterface, AnswersWhatTextDocumentsHave) {
    OpenedFile file("abc");
    bool running = true;
    EXPECT_FALSE(file->GetOutputState(running));
    EXPECT_FALSE(file->IsChangedOnDisk());
    EXPECT_FALSE(file->Reload());
    EXPECT_TRUE(file->IsBinary());
    EXPECT_EQ(file->GetLineEnding(), LineEnding::None);
    auto current = Encoding::Unicode;
    const Char* const* names = nullptr;
    EXPECT_FALSE(file->GetEncoding(current, names));
    EXPECT_EQ(names, nullptr);
    EXPECT_TRUE(file->CanDo(DocumentCommand::Edit));
    EXPECT_FALSE(file->CanDo(DocumentCommand::Undo));
    EXPECT_FALSE(file->CanDo(DocumentCommand::Redo));
    EXPECT_FALSE(file->CanDo(DocumentCommand::Paste));
    EXPECT_TRUE(file->DoCommand(DocumentCommand::Undo)); // known, though there is nothing to undo
    EXPECT_TRUE(file->DoCommand(DocumentCommand::Redo));
    for (const DocumentCommand kind :
         {DocumentCommand::Edit, DocumentCommand::Paste, static_cast<DocumentCommand>(4)}) {
        EXPECT_FALSE(file->DoCommand(kind));
        EXPECT_EQ(file->CanDo(kind), kind == DocumentCommand::Edit);
    }
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
