// Journals as files, whatever document they are of, and texts of journals that no document has written.

#include "JournalTest.h"
#include "support/FailureInjection.h"

#include <algorithm>

namespace {

class JournalFileTest : public JournalTest {
protected:
    static WString Name(size_t length) {
        WString name;
        EXPECT_TRUE(name.Assign(std::u16string(length, u'n').c_str()));
        return name;
    }
    // Whether a change of such pieces could be written.
    static bool Put(JournalFile& journal, const std::vector<std::string>& pieces) {
        JournalChange change = {1, 2, 0};
        for (const std::string& piece : pieces) change.length += piece.size();
        journal.Begin(change);
        for (const std::string& piece : pieces)
            if (!journal.Put(piece.data(), piece.size())) return false;
        return journal.End();
    }
    // The journal of a text with one change.
    std::string Written(const JournalSubject& subject, const Char* name, const std::u16string& inserted) {
        WString nameOfText;
        JournalFile journal;
        EXPECT_TRUE(nameOfText.Assign(name) && journal.Make(recoveryServices.folder, subject, nameOfText));
        journal.Begin({0, 0, inserted.size() * sizeof(Char)});
        EXPECT_TRUE(journal.Put(inserted.data(), inserted.size() * sizeof(Char)) && journal.End());
        const std::string bytes = TheJournal();
        journal.Discard();
        return bytes;
    }
    // Pieces around what is gathered before it is written.
    static std::vector<std::vector<std::string>> Changes() {
        const std::string a(3000, 'a');
        const std::string b(3000, 'b');
        std::vector<std::vector<std::string>> changes = {{}, {""}, {a, b}, {a, "x", b}, {a, "", b}, {a, "xy", b}};
        for (size_t size = 2000; size < 2056; ++size) changes.push_back({"x", std::string(size, 'y'), "z"});
        return changes;
    }
};

// The clock of the system may stand still for some milliseconds, in which many are made.
TEST_F(JournalFileTest, NamesDifferAlsoWithoutTheTime) {
    constexpr size_t TimeDigits = 16;
    JournalFile journals[20];
    for (JournalFile& journal : journals) ASSERT_TRUE(journal.Make(recoveryServices.folder, {}, Name(1)));
    std::set<std::u16string> withoutTime;
    for (const std::u16string& name : Journals()) withoutTime.insert(name.substr(TimeDigits));
    EXPECT_EQ(withoutTime.size(), std::size(journals));
}

TEST_F(JournalFileTest, PiecesOfEverySizeComeBack) {
    JournalFile journal;
    ASSERT_TRUE(journal.Make(recoveryServices.folder, {}, Name(1500)));
    for (const auto& pieces : Changes()) ASSERT_TRUE(Put(journal, pieces));
    const std::string bytes = TheJournal();
    EXPECT_EQ(journal.Size(), bytes.size());
    disk.Write(u"C:\\read", bytes);
    Platform::File file;
    ASSERT_TRUE(file.Open(u"C:\\read", Platform::File::Mode::Alone));
    JournalReader reader(file);
    ASSERT_EQ(reader.ReadHeader(), JournalReader::State::Readable);
    EXPECT_EQ(reader.Name().Length(), 1500u);
    for (const auto& pieces : Changes()) {
        std::string wanted;
        for (const std::string& piece : pieces) wanted += piece;
        JournalChange change;
        ASSERT_TRUE(reader.Next(change));
        ASSERT_EQ(change.length, wanted.size());
        std::string read(wanted.size(), '?');
        ASSERT_TRUE(reader.Read(read.data()));
        EXPECT_TRUE(read == wanted) << wanted.size();
    }
    EXPECT_TRUE(reader.IsAtEnd());
}

// What it says then may be wrong: it is neither damaged nor at its end.
TEST_F(JournalFileTest, AHeaderThatCannotBeReadIsAFailureOfTheDisk) {
    disk.Write(u"C:\\read", Written({}, u"title", u"text"));
    bool hasFailed = true;
    for (uint64_t number = 1; hasFailed && number < 20; ++number) {
        disk.FailAt(100, FakeDisk::Fault::Denied);
        Platform::File file;
        ASSERT_TRUE(file.Open(u"C:\\read", Platform::File::Mode::Alone));
        JournalReader reader(file);
        disk.FailAt(number, FakeDisk::Fault::Denied);
        const JournalReader::State state = reader.ReadHeader();
        hasFailed = disk.HasFailed();
        EXPECT_EQ(state, hasFailed ? JournalReader::State::Unknown : JournalReader::State::Readable) << number;
        EXPECT_EQ(reader.HasFailed(), hasFailed) << number;
        disk.StopFailing();
    }
    EXPECT_FALSE(hasFailed);
}

TEST_F(JournalFileTest, EveryWriteThatFailsIsTold) {
    for (const auto& pieces : Changes()) {
        bool hasFailed = true;
        for (uint64_t number = 1; hasFailed && number < 20; ++number) {
            Reset();
            disk.FailAt(number, FakeDisk::Fault::Full);
            JournalFile journal;
            const bool isWritten = journal.Make(recoveryServices.folder, {}, Name(1500)) && Put(journal, pieces);
            hasFailed = disk.HasFailed();
            EXPECT_EQ(isWritten, !hasFailed) << number;
            disk.StopFailing();
            journal.Discard();
            EXPECT_EQ(Journals().size(), 0u);
        }
        EXPECT_FALSE(hasFailed);
    }
}

TEST_F(JournalFileTest, ANameThatNoPathCanHaveGetsNoJournal) {
    JournalFile longest;
    EXPECT_TRUE(longest.Make(recoveryServices.folder, {}, Name(0x7FFF)));
    EXPECT_EQ(Journals().size(), 1u);
    longest.Discard();
    JournalFile tooLong;
    EXPECT_FALSE(tooLong.Make(recoveryServices.folder, {}, Name(0x8000)));
    EXPECT_EQ(disk.FilesBeside({}).size(), 0u);
}

TEST_F(JournalFileTest, AnEncodingOrLineEndThatThereIsNotIsRefused) {
    JournalSubject subject;
    subject.encoding = EncodingCount - 1;
    subject.lineEnding = static_cast<uint32_t>(LineEnding::Mixed);
    EXPECT_EQ(Recover(Written(subject, u"title", u"text")).state, RecoveryResult::Whole);
    ++subject.encoding;
    EXPECT_EQ(Recover(Written(subject, u"title", u"text")).state, RecoveryResult::Failed);
    --subject.encoding;
    ++subject.lineEnding;
    EXPECT_EQ(Recover(Written(subject, u"title", u"text")).state, RecoveryResult::Failed);
}

TEST_F(JournalFileTest, AFileOfAnotherSizeIsAnotherOneThoughItsTextIsTheSame) {
    const std::string bytes("\xFF\xFE"
                            "a\0b\0",
                            6);
    disk.Write(Target, bytes);
    Checksum sum;
    sum.Add(u"xab", 3 * sizeof(Char));
    JournalSubject subject;
    subject.hasFile = subject.isOverFile = 1;
    subject.fileSize = bytes.size();
    subject.fileTime = disk.TimeOf(Target);
    subject.value = sum.Value();
    const std::string journal = Written(subject, Target, u"x");
    const Result result = Recover(journal);
    EXPECT_EQ(result.state, RecoveryResult::Whole);
    EXPECT_EQ(result.text, u"xab");
    disk.Write(Target, bytes + "!"); // half of a character, which is dropped
    disk.SetTime(Target, subject.fileTime);
    EXPECT_EQ(Recover(journal).state, RecoveryResult::FileChanged);
}

// Modified texts of files so large that their journals can be over the file.
class LargeTextJournalTest : public JournalTest {
protected:
    static std::string LargeFile() {
        std::string bytes;
        while (bytes.size() < TextJournal::LargeText + 100000) bytes += "a line of a large file, one of many\n";
        return bytes;
    }
    static void Insert(TextDocument& document, const std::u16string& text) {
        ASSERT_TRUE(document->InsertText(100, text.c_str(), static_cast<uint32_t>(text.size())));
    }
    void ExpectWholeText(TextDocument& document) {
        EXPECT_TRUE(document->FlushJournal());
        EXPECT_GT(TheJournal().size(), 2 * TextJournal::LargeText);
        ExpectJournalOf(document);
    }
};

TEST_F(LargeTextJournalTest, AModifiedTextWithoutAChangeIsWrittenAsItIs) {
    TextDocument document;
    disk.Write(Target, LargeFile());
    ASSERT_TRUE(document->Load(Target, false));
    ASSERT_TRUE(document->BeginGroup());
    ASSERT_TRUE(document->EndGroup());
    ASSERT_TRUE(document->IsModified());
    ExpectWholeText(document);
}

TEST_F(LargeTextJournalTest, AFileThatIsFarAwayIsNotBuiltOn) {
    constexpr const Char* Remote = u"\\\\server\\share\\file.txt";
    TextDocument document;
    disk.Write(Remote, LargeFile());
    ASSERT_TRUE(document->Load(Remote, false));
    Insert(document, u"new");
    ExpectWholeText(document);
}

TEST_F(LargeTextJournalTest, AFileThatIsGoneOrDoesNotAnswerIsNotBuiltOn) {
    for (uint64_t call = 0; call <= 3; ++call) { // those that open it and ask for its time and size
        Reset();
        TextDocument document;
        disk.Write(Target, LargeFile());
        ASSERT_TRUE(document->Load(Target, false));
        Insert(document, u"new");
        if (call == 0) {
            ASSERT_TRUE(Platform::RemoveFile(Target));
        } else {
            disk.FailAt(call, FakeDisk::Fault::Denied);
        }
        ExpectWholeText(document);
        EXPECT_EQ(disk.HasFailed(), call > 0);
    }
}

TEST_F(LargeTextJournalTest, ATextThatStillHasATitleIsNotBuiltOnTheFileItWasSavedTo) {
    TextDocument document;
    const std::string bytes = LargeFile();
    const std::u16string text(bytes.begin(), bytes.end());
    ASSERT_TRUE(document->SetTitle(u"Untitled1"));
    ASSERT_TRUE(document->InsertText(0, text.c_str(), static_cast<uint32_t>(text.size())));
    ASSERT_TRUE(document->Save(Target, Encoding::Keep, LineEnding::Keep));
    Insert(document, u"new");
    ExpectWholeText(document);
    EXPECT_EQ(Recover(TheJournal()).name, u"Untitled1");
}

TEST_F(LargeTextJournalTest, AfterAnEditWithoutJournalsATextIsNotBuiltOnItsFile) {
    TextDocument document;
    disk.Write(Target, LargeFile());
    ASSERT_TRUE(document->Load(Target, false));
    KeepJournals(false);
    Insert(document, u"before");
    KeepJournals(true);
    Insert(document, u"new");
    ExpectWholeText(document);
}

TEST_F(LargeTextJournalTest, ATextThatWasEmptiedIsNotBuiltOnItsFile) {
    TextDocument document;
    const std::string bytes = LargeFile();
    const std::u16string text(bytes.begin(), bytes.end());
    disk.Write(Target, bytes);
    ASSERT_TRUE(document->Load(Target, false));
    document->EmptyAndResetUndo();
    ASSERT_TRUE(document->InsertText(0, text.c_str(), static_cast<uint32_t>(text.size())));
    ExpectWholeText(document);
}

TEST_F(LargeTextJournalTest, AReturnInTheTextWouldNotComeBackFromTheFile) {
    TextDocument document;
    disk.Write(Target, LargeFile());
    ASSERT_TRUE(document->Load(Target, false));
    Insert(document, u"a\rb");
    ASSERT_TRUE(document->Save(Target, Encoding::Keep, LineEnding::Keep));
    Insert(document, u"new");
    ExpectWholeText(document);
}

TEST_F(LargeTextJournalTest, WithoutMemoryForItsNameNothingIsWritten) {
    const uint64_t failures = FailEachAllocation([&] {
        std::unique_ptr<TextDocument> document;
        {
            const FailurePause pause;
            Reset();
            document = std::make_unique<TextDocument>();
            disk.Write(Target, "text");
            EXPECT_TRUE((*document)->Load(Target, false));
            EXPECT_TRUE((*document)->InsertText(0, u"new ", 4));
        }
        const bool isFlushed = (*document)->FlushJournal();
        const FailurePause pause;
        EXPECT_EQ(Journals().size(), isFlushed ? 1u : 0u);
        if (isFlushed) ExpectJournalOf(*document);
        document = nullptr;
        return isFlushed;
    });
    EXPECT_GT(failures, 4u);
}

TEST_F(LargeTextJournalTest, AfterAFailureItIsTriedAgainHalfAMinuteLater) {
    TextDocument document(u"text");
    Insert(document, u"new ");
    disk.FailAt(1, FakeDisk::Fault::Full);
    EXPECT_FALSE(document->FlushJournal());
    disk.StopFailing();
    const uint64_t calls = disk.Calls();
    clock += 29999;
    EXPECT_FALSE(document->FlushJournal());
    EXPECT_EQ(disk.Calls(), calls);
    clock += 1;
    EXPECT_TRUE(document->FlushJournal());
    ExpectJournalOf(document);
}

} // namespace
