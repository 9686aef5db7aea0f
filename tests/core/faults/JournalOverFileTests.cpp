#include "JournalTest.h"
#include "settings/AdditionalSettings.h"

namespace {

// Journals of texts that are so large that they are made over their file.
class JournalOverFileTest : public JournalTest {
protected:
    ~JournalOverFileTest() override { additionalSettings.Utf8 = 0; }

    static std::string LargeFile(const std::string& line) {
        std::string bytes;
        while (bytes.size() < TextJournal::LargeText + TextJournal::LargeText / 2) bytes += line;
        return bytes;
    }
    // Loads the bytes and makes a journal over them.
    void Prepare(TextDocument& document, const std::string& bytes) {
        disk.Write(Target, bytes);
        ASSERT_TRUE(document->Load(Target, false));
        ASSERT_TRUE(document->InsertText(2000000, u"new", 3));
        ASSERT_TRUE(document->FlushJournal());
        ASSERT_LT(TheJournal().size(), 1000u);
        ExpectJournalOf(document);
    }
    // The same on an empty disk, over a file that is another text when it is read as UTF-8.
    void PrepareUtf8(TextDocument& document, uint32_t isUtf8) {
        Reset();
        additionalSettings.Utf8 = isUtf8;
        Prepare(document, LargeFile("gr\xC3\xBC\xC3\x9F\x65 of a large file\n"));
    }
    // The same journal as a program has written it that said nothing about the reading of its file.
    std::string WithoutReading(const std::string& bytes) {
        constexpr const Char* Path = u"C:\\copied";
        disk.Write(Path, bytes);
        Platform::File file;
        EXPECT_TRUE(file.Open(Path, Platform::File::Mode::Alone));
        JournalReader journal(file);
        EXPECT_EQ(journal.ReadHeader(), JournalReader::State::Readable);
        JournalSubject subject = journal.Subject();
        subject.reading = JournalSubject::Reading::NotSaid;
        JournalFile copy;
        EXPECT_TRUE(copy.Make(recoveryServices.folder, subject, journal.Name()));
        JournalChange change;
        while (journal.Next(change)) {
            std::string part(static_cast<size_t>(change.length), '\0');
            EXPECT_TRUE(journal.Read(part.data()));
            copy.Begin(change);
            EXPECT_TRUE(copy.Put(part.data(), part.size()) && copy.End());
        }
        const auto names = Journals();
        EXPECT_EQ(names.size(), 2u);
        const std::string made = disk.Read(Folder + names.back());
        copy.Discard();
        return made;
    }

    const std::string original = LargeFile("a line of a large file, one of many\n");
};

TEST_F(JournalOverFileTest, AFileThatItsOwnSaveHasCutIsNotBuiltOnAnyMore) {
    TextDocument document;
    Prepare(document, original);
    disk.FailAt(300, FakeDisk::Fault::Gone);
    EXPECT_FALSE(document->Save(Target, Encoding::Keep, LineEnding::Keep));
    disk.StopFailing();
    ASSERT_NE(disk.Read(Target), original);
    EXPECT_TRUE(document->FlushJournal());
    ExpectJournalOf(document);
    ASSERT_TRUE(document->InsertText(0, u"more", 4));
    EXPECT_TRUE(document->FlushJournal());
    ExpectJournalOf(document);
}

TEST_F(JournalOverFileTest, AFileThatOthersWriteLaterIsNotBuiltOnAnyMore) {
    for (const std::string& theirs : {"b" + original.substr(1), original + "b"}) {
        for (const bool isLater : {true, false}) {
            Reset();
            TextDocument document;
            Prepare(document, original);
            const Platform::FileTime time = disk.TimeOf(Target);
            disk.Write(Target, theirs);
            if (!isLater && theirs.size() == original.size()) continue; // nobody sees that
            if (!isLater) disk.SetTime(Target, time);
            document->MarkFileTimeNow(); // the user does not want it
            EXPECT_TRUE(document->FlushJournal());
            ExpectJournalOf(document);
            ASSERT_TRUE(document->InsertText(0, u"more", 4));
            EXPECT_TRUE(document->FlushJournal());
            ExpectJournalOf(document);
        }
    }
}

TEST_F(JournalOverFileTest, AFileIsReadAgainAsItWasWhateverIsSetByThen) {
    for (const uint32_t isUtf8 : {0u, 1u}) {
        TextDocument document;
        PrepareUtf8(document, isUtf8);
        additionalSettings.Utf8 = !isUtf8;
        ExpectJournalOf(document);
    }
}

TEST_F(JournalOverFileTest, AnOlderJournalThatDoesNotSayHowIsReadAsIsSet) {
    for (const uint32_t isUtf8 : {0u, 1u}) {
        TextDocument document;
        PrepareUtf8(document, isUtf8);
        const Result result = Recover(WithoutReading(TheJournal()));
        EXPECT_EQ(result.state, RecoveryResult::Whole);
        EXPECT_TRUE(result.text == document.Text());
    }
}

} // namespace
