#include "JournalTest.h"
#include "app/DocumentOpener.h"
#include "app/LeftJournals.h"
#include "app/OpenFailures.h"
#include "app/RecoveryOffer.h"
#include "binary/BinaryDocument.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "support/FailureInjection.h"
#include "support/TestServices.h"

namespace {

// The bytes of a file of a few pages, the last of which is not whole.
class ByteJournalTest : public JournalTest {
protected:
    ByteJournalTest() {
        for (size_t i = 0; i < 3 * PageSize + 1000; ++i) old.push_back(static_cast<char>(i * 7 + i / 251));
        disk.Write(Target, old);
    }
    ~ByteJournalTest() override { Close(); }

    void Open() {
        Close();
        document = new BinaryDocument(hexServices);
        document->AddRef();
        ASSERT_TRUE(document->Open(Target));
    }
    void Close() {
        if (document) document->Release();
        document = nullptr;
    }
    // As a kill does.
    void Kill() {
        LeaveJournals();
        Close();
        disk.Restart();
        KeepJournals(true);
    }
    bool Edit(uint64_t offset, const std::string& bytes) {
        return document->EditBytes(offset, reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), nullptr, {});
    }
    std::string Content() {
        std::string bytes(static_cast<size_t>(document->FileSize()), '\0');
        EXPECT_TRUE(document->ReadBytes(0, reinterpret_cast<uint8_t*>(bytes.data()), bytes.size()));
        return bytes;
    }
    // Opens the file with the changes of these bytes of a journal.
    RecoveryResult RecoverBytes(const std::string& bytes) {
        constexpr const Char* Path = u"C:\\read";
        {
            const FailurePause pause;
            Close();
            document = new BinaryDocument(hexServices);
            document->AddRef();
        }
        disk.Write(Path, bytes);
        Platform::File file;
        JournalReader journal(file);
        EXPECT_TRUE(file.Open(Path, Platform::File::Mode::Alone));
        if (journal.ReadHeader() != JournalReader::State::Readable) return RecoveryResult::Failed;
        EXPECT_EQ(journal.Subject().kind, JournalSubject::Kind::Bytes);
        EXPECT_EQ(journal.Subject().hasFile, 1u);
        EXPECT_EQ(journal.Subject().isOverFile, 1u);
        EXPECT_EQ(Str(journal.Name()), Target);
        return document->Open(Target) ? document->Recover(journal) : RecoveryResult::FileChanged;
    }

    void FailWhileEditing(bool hasJournal);
    // The first page of the file becomes this one.
    JournalChange PageChange(const std::string& page) const {
        Checksum sum;
        sum.Add(old.data(), PageSize);
        return {0, sum.Value(), page.size()};
    }
    // The journal that has these changes, of this page or of its beginning.
    std::string Written(const std::vector<JournalChange>& changes, const std::string& page) {
        WString name;
        JournalFile journal;
        JournalSubject subject;
        subject.kind = JournalSubject::Kind::Bytes;
        subject.hasFile = subject.isOverFile = 1;
        subject.fileSize = old.size();
        EXPECT_TRUE(name.Assign(Target) && journal.Make(recoveryServices.folder, subject, name));
        for (const JournalChange& change : changes) {
            journal.Begin(change);
            EXPECT_TRUE(journal.Put(page.data(), static_cast<size_t>(change.length)) && journal.End());
        }
        const std::string bytes = TheJournal();
        journal.Discard();
        return bytes;
    }

    std::string old;
    BinaryDocument* document = nullptr;
};

TEST_F(ByteJournalTest, ChangedPagesComeBack) {
    Open();
    EXPECT_TRUE(document->FlushJournal());
    EXPECT_EQ(Journals().size(), 0u);
    ASSERT_TRUE(Edit(10, "first"));
    ASSERT_TRUE(document->FlushJournal());
    ASSERT_TRUE(Edit(old.size() - 3, "end"));
    ASSERT_TRUE(Edit(PageSize - 2, "both"));
    ASSERT_TRUE(document->FlushJournal());
    const std::string changed = Content();
    const std::string journal = TheJournal();
    Kill();
    EXPECT_EQ(RecoverBytes(journal), RecoveryResult::Whole);
    EXPECT_TRUE(Content() == changed);
    EXPECT_TRUE(document->IsModified());
    EXPECT_FALSE(document->CanDo(DocumentCommand::Undo));
    EXPECT_TRUE(disk.Read(Target) == old);
    EXPECT_TRUE(document->Save(u"", Encoding::Keep, LineEnding::Keep));
    EXPECT_TRUE(disk.Read(Target) == changed);
}

TEST_F(ByteJournalTest, ASaveDoesNotWaitAfterAFailureToWriteIt) {
    Open();
    ASSERT_TRUE(Edit(10, "first"));
    disk.FailAt(1, FakeDisk::Fault::Killed);
    EXPECT_FALSE(document->FlushJournal());
    disk.StopFailing();
    const std::string changed = Content();
    // Until the first write into the file was made.
    for (uint64_t number = 1; disk.Read(Target) == old; ++number) {
        ASSERT_LT(number, 100u);
        disk.FailAt(number, FakeDisk::Fault::Gone);
        EXPECT_FALSE(document->Save(u"", Encoding::Keep, LineEnding::Keep));
        disk.StopFailing();
    }
    const std::string journal = TheJournal();
    Kill();
    EXPECT_EQ(RecoverBytes(journal), RecoveryResult::Whole);
    EXPECT_TRUE(Content() == changed);
}

TEST_F(ByteJournalTest, ItGoesWithASaveAndWithTheDocument) {
    Open();
    ASSERT_TRUE(Edit(10, "first"));
    ASSERT_TRUE(document->FlushJournal());
    EXPECT_EQ(Journals().size(), 1u);
    ASSERT_TRUE(document->Save(u"", Encoding::Keep, LineEnding::Keep));
    EXPECT_EQ(Journals().size(), 0u);
    ASSERT_TRUE(Edit(10, "again"));
    ASSERT_TRUE(document->FlushJournal());
    EXPECT_EQ(Journals().size(), 1u);
    Close();
    EXPECT_EQ(Journals().size(), 0u);
}

TEST_F(ByteJournalTest, WithoutATimerItIsAtMostTwoHundredEditsBehind) {
    Open();
    for (uint32_t i = 0; i < DocumentJournal::MaxEdits - 1; ++i) ASSERT_TRUE(Edit(i, "x"));
    EXPECT_EQ(Journals().size(), 0u);
    ASSERT_TRUE(Edit(0, "y"));
    EXPECT_EQ(Journals().size(), 1u);
}

TEST_F(ByteJournalTest, OnlyPagesThatChangedAreWrittenAgain) {
    Open();
    for (uint64_t page = 0; page < 3; ++page) ASSERT_TRUE(Edit(page * PageSize, "x"));
    ASSERT_TRUE(document->FlushJournal());
    const size_t before = TheJournal().size();
    ASSERT_TRUE(Edit(5, "y"));
    ASSERT_TRUE(document->FlushJournal());
    EXPECT_EQ(TheJournal().size(), before + sizeof(JournalChange) + PageSize + sizeof(uint64_t));
}

TEST_F(ByteJournalTest, AFileThatIsAnotherOneNowIsNotChanged) {
    Open();
    ASSERT_TRUE(Edit(10, "first"));
    ASSERT_TRUE(document->FlushJournal());
    const std::string journal = TheJournal();
    Kill();
    std::string other = old;
    other[PageSize - 1] = static_cast<char>(other[PageSize - 1] + 1);
    for (const std::string& file : {other, old + "x", old.substr(1)}) {
        disk.Write(Target, file);
        EXPECT_EQ(RecoverBytes(journal), RecoveryResult::FileChanged);
        EXPECT_FALSE(document->IsModified());
        EXPECT_TRUE(disk.Read(Target) == file);
    }
    // A page that has no changes may be another one: the document is over it.
    other = old;
    other[PageSize] = static_cast<char>(other[PageSize] + 1);
    disk.Write(Target, other);
    EXPECT_EQ(RecoverBytes(journal), RecoveryResult::Whole);
    EXPECT_TRUE(Content() == other.replace(10, 5, "first"));
}

TEST_F(ByteJournalTest, WhereverASaveStopsTheNewBytesAreThere) {
    for (const Case& tried : Cases) {
        bool isReached = true;
        for (uint64_t number = 1; isReached && number < 100; ++number) {
            SCOPED_TRACE(std::string(tried.name) + " at call " + std::to_string(number));
            Close();
            Reset();
            KeepJournals(true);
            disk.Write(Target, old);
            Open();
            ASSERT_TRUE(Edit(10, "first"));
            ASSERT_TRUE(Edit(2 * PageSize - 2, "both"));
            ASSERT_TRUE(document->FlushJournal());
            const std::string changed = Content();
            disk.FailAt(number, tried.fault);
            const bool isSaved = document->Save(u"", Encoding::Keep, LineEnding::Keep);
            isReached = disk.Calls() >= number;
            disk.StopFailing();
            EXPECT_EQ(document->IsModified(), !isSaved);
            LeaveJournals();
            Close();
            disk.Restart(tried.unflushed);
            KeepJournals(true);
            if (isSaved) {
                EXPECT_TRUE(disk.Read(Target) == changed);
                continue;
            }
            ASSERT_EQ(Journals().size(), 1u);
            // The mark at its end may be what was torn.
            const RecoveryResult result = RecoverBytes(TheJournal());
            EXPECT_TRUE(result == RecoveryResult::Whole || result == RecoveryResult::Cut);
            EXPECT_TRUE(Content() == changed);
        }
    }
}

// Changes bytes, over an earlier journal or without one, while each call fails in turn, in every way.
void ByteJournalTest::FailWhileEditing(bool hasJournal) {
    for (const Case& tried : Cases) {
        bool isReached = true;
        for (uint64_t number = 1; isReached && number < 100; ++number) {
            SCOPED_TRACE(std::string(tried.name) + " at call " + std::to_string(number));
            Close();
            Reset();
            KeepJournals(true);
            disk.Write(Target, old);
            Open();
            ASSERT_TRUE(Edit(10, "first"));
            ASSERT_TRUE(!hasJournal || document->FlushJournal());
            const std::string before = Content();
            ASSERT_TRUE(Edit(2 * PageSize - 3, "second")); // over two pages
            const std::string after = Content();
            disk.FailAt(number, tried.fault);
            bool isFlushed = document->FlushJournal();
            EXPECT_TRUE(isFlushed || disk.HasFailed());
            clock += 30001; // it is not tried again before
            isFlushed = document->FlushJournal() || isFlushed;
            isReached = disk.Calls() >= number;
            disk.StopFailing();
            LeaveJournals();
            Close();
            disk.Restart(tried.unflushed);
            bool isThere = !hasJournal && !isFlushed;
            for (const std::u16string& name : Journals()) {
                const RecoveryResult result = RecoverBytes(disk.Read(Folder + name));
                ASSERT_NE(result, RecoveryResult::FileChanged);
                if (result == RecoveryResult::Failed) continue;
                const bool isAfter = Content() == after;
                EXPECT_TRUE(isAfter || Content() == before || Content() == old);
                isThere = isThere || isAfter || (Content() == before && !isFlushed);
            }
            EXPECT_TRUE(isThere);
        }
    }
}

TEST_F(ByteJournalTest, WhateverFailsTheBytesBeforeOrAfterAreThere) {
    FailWhileEditing(true);
    FailWhileEditing(false);
}

TEST_F(ByteJournalTest, WithoutMemoryNothingIsWritten) {
    const uint64_t failures = FailEachAllocation([&] {
        {
            const FailurePause pause;
            Close();
            Reset();
            disk.Write(Target, old);
            Open();
            EXPECT_TRUE(Edit(10, "first"));
        }
        const bool isFlushed = document->FlushJournal();
        const FailurePause pause;
        EXPECT_EQ(Journals().size(), isFlushed ? 1u : 0u);
        EXPECT_TRUE(document->IsModified());
        return isFlushed;
    });
    EXPECT_GT(failures, 3u);
}

TEST_F(ByteJournalTest, AfterAFailedSaveTheNextJournalIsOfTheFileAsItIsNow) {
    Open();
    ASSERT_TRUE(Edit(10, "first"));
    ASSERT_TRUE(Edit(2 * PageSize - 2, "both"));
    ASSERT_TRUE(document->FlushJournal());
    disk.FailAt(10, FakeDisk::Fault::ShortWrite);
    ASSERT_FALSE(document->Save(u"", Encoding::Keep, LineEnding::Keep));
    ASSERT_TRUE(disk.Read(Target) != old);
    disk.StopFailing();
    ASSERT_TRUE(document->Undo());
    ASSERT_TRUE(document->FlushJournal());
    const std::string changed = Content();
    const std::string journal = TheJournal();
    Kill();
    EXPECT_EQ(RecoverBytes(journal), RecoveryResult::Whole);
    EXPECT_TRUE(Content() == changed);
}

TEST_F(ByteJournalTest, DamagedItIsAnEarlierStateThatSaysSoOrNone) {
    Open();
    ASSERT_TRUE(Edit(10, "first"));
    ASSERT_TRUE(document->FlushJournal());
    const std::string first = Content();
    ASSERT_TRUE(Edit(20, "second"));
    ASSERT_TRUE(document->FlushJournal());
    const std::string whole = TheJournal();
    Kill();
    Random random(5);
    for (int i = 0; i < 400; ++i) {
        std::string damaged = whole;
        const size_t bit = random.Below(whole.size() * 8);
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        if (random.OneIn(2)) damaged = whole.substr(0, random.Below(whole.size()));
        const RecoveryResult result = RecoverBytes(damaged);
        ASSERT_NE(result, RecoveryResult::FileChanged);
        if (!document->IsModified()) continue;
        EXPECT_TRUE(result == RecoveryResult::Cut || damaged.size() < whole.size());
        EXPECT_TRUE(Content() == first || (Content() == old && result == RecoveryResult::Cut));
    }
    EXPECT_TRUE(disk.Read(Target) == old);
}

TEST_F(ByteJournalTest, AChangeThatIsNoPageOfTheFileEndsTheChanges) {
    const std::string page(PageSize, 'n');
    const uint64_t no = ByteJournal::SaveMark.start;
    const JournalChange bad[] = {
        {1, 0, PageSize}, {4 * PageSize, 0, PageSize}, {PageSize, 0, PageSize - 1}, {no, 0, 8}};
    for (const JournalChange& change : bad) {
        const std::string result = page + old.substr(PageSize);
        EXPECT_EQ(RecoverBytes(Written({PageChange(page), change}, page)), RecoveryResult::Cut) << change.start;
        EXPECT_TRUE(Content() == result);
        EXPECT_TRUE(document->IsModified());
    }
}

// Several edits, of which the later ones are in pages of the earlier ones: some of the pages alone never were together.
TEST_F(ByteJournalTest, CutAnywhereItIsAStateThatWasWritten) {
    Open();
    ASSERT_TRUE(Edit(10, "first"));
    ASSERT_TRUE(document->FlushJournal());
    const std::string first = Content();
    for (uint64_t page = 0; page < 3; ++page) ASSERT_TRUE(Edit(page * PageSize + 100, "second"));
    ASSERT_TRUE(Edit(PageSize - 2, "both"));
    ASSERT_TRUE(document->FlushJournal());
    const std::string whole = TheJournal();
    Kill();
    for (size_t cut = 1; cut < whole.size(); cut += 997) {
        const RecoveryResult result = RecoverBytes(whole.substr(0, whole.size() - cut));
        if (!document->IsModified()) continue;
        EXPECT_TRUE(Content() == first || (Content() == old && result == RecoveryResult::Cut));
    }
}

TEST_F(ByteJournalTest, PagesOfWhichTheLastIsMissingAreNoneToOffer) {
    Open();
    ASSERT_TRUE(Edit(PageSize - 2, "both"));
    ASSERT_TRUE(document->FlushJournal());
    const std::string whole = TheJournal();
    Kill();
    for (const bool isWhole : {true, false}) {
        const std::string bytes = isWhole ? whole : whole.substr(0, whole.size() - 1);
        disk.Write(std::u16string(Folder) + u"7.journal", bytes);
        LeftJournals journals;
        journals.Look(recoveryServices.folder);
        EXPECT_EQ(journals.First() != nullptr, isWhole);
        if (isWhole) LeftJournals::Remove(*journals.First());
    }
}

TEST_F(ByteJournalTest, ADiskThatDoesNotDeliverIsNoDamage) {
    using Fault = FakeDisk::Fault;
    const std::string page(PageSize, 'n');
    const std::string journal = Written({PageChange(page), ByteJournal::SaveMark, PageChange(page)}, page);
    for (const Fault fault : {Fault::Denied, Fault::Gone}) {
        bool isReached = true;
        for (uint64_t number = 2; isReached && number < 100; ++number) { // the first call opens the journal
            SCOPED_TRACE(number);
            disk.Write(Target, old);
            disk.FailAt(number, fault);
            const RecoveryResult result = RecoverBytes(journal);
            isReached = disk.Calls() >= number;
            EXPECT_TRUE(result == RecoveryResult::Whole || disk.HasFailed());
            EXPECT_NE(result, RecoveryResult::Cut);
            disk.StopFailing();
            EXPECT_EQ(document->IsModified(), result == RecoveryResult::Whole);
            EXPECT_TRUE(result != RecoveryResult::Whole || Content() == page + old.substr(PageSize));
        }
    }
}

TEST_F(ByteJournalTest, WithoutMemoryNothingChanges) {
    Open();
    ASSERT_TRUE(Edit(10, "first"));
    ASSERT_TRUE(document->FlushJournal());
    const std::string changed = Content();
    const std::string journal = TheJournal();
    Kill();
    const uint64_t failures = FailEachAllocation([&] {
        const RecoveryResult result = RecoverBytes(journal);
        const FailurePause pause;
        EXPECT_TRUE(result != RecoveryResult::Whole || Content() == changed);
        EXPECT_EQ(document->IsModified(), result == RecoveryResult::Whole);
        EXPECT_TRUE(disk.Read(Target) == old);
        return result == RecoveryResult::Whole;
    });
    EXPECT_GT(failures, 3u);
}

TEST_F(ByteJournalTest, OfAFileThatIsOpenAlreadyTheChangesStay) {
    Open();
    ASSERT_TRUE(Edit(10, "first"));
    ASSERT_TRUE(document->FlushJournal());
    Kill();
    DocumentServices services{{recoveryServices, CaretView::Make, nullptr, {}}, {recoveryServices}};
    FakePanes panes;
    DocumentList documents;
    FakeFrameDisplay screen;
    ScreenBatch batch{screen};
    DocumentDisplay display{documents, panes, batch};
    FakeFrame user;
    OpenFailures failures{batch, user};
    DocumentOpener opener{services, documents, display, panes, failures};
    ASSERT_TRUE(documents.Add(FakeDocument::WithFile(Target)));
    user.answers = {Answer::Yes};
    OfferRecovery(recoveryServices.folder, user, opener);
    EXPECT_EQ(documents.Count(), 1u);
    ASSERT_EQ(Journals().size(), 1u);
    ASSERT_EQ(user.questions.size(), 2u);
    EXPECT_EQ(user.questions[1].text, u"The changes of S:\\work\\file.txt cannot be read. They stay in " +
                                          (Folder + Journals()[0]) + u"; delete it if you do not need them.");
}

} // namespace
