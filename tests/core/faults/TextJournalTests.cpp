#include "JournalTest.h"
#include "core/app/FakeDocument.h"
#include "support/FailureInjection.h"

namespace {

class TextJournalTest : public JournalTest {
protected:
    void Insert(TextDocument& document, uint32_t offset, const std::u16string& text) {
        ASSERT_TRUE(document->InsertText(offset, text.c_str(), static_cast<uint32_t>(text.size())));
    }
    void Load(TextDocument& document, const std::string& bytes) {
        disk.Write(Target, bytes);
        ASSERT_TRUE(document->Load(Target, false));
    }
    static std::string LargeFile() {
        std::string bytes;
        while (bytes.size() < TextJournal::LargeText + 100000) bytes += "a line of a large file, one of many\n";
        return bytes;
    }
    void FailWhileAdding(const std::u16string& added);
    void FailWhileReading(const std::string& bytes, FakeDisk::Fault fault);
};

TEST_F(TextJournalTest, AModifiedTextHasOneAndLosesItWhenItIsSaved) {
    TextDocument document;
    Load(document, "one\ntwo\n");
    EXPECT_TRUE(document->FlushJournal());
    EXPECT_EQ(Journals().size(), 0u);
    Insert(document, 0, u"new ");
    EXPECT_TRUE(document->FlushJournal());
    const Result result = Recover(TheJournal());
    EXPECT_EQ(result.text, u"new one\ntwo\n");
    EXPECT_EQ(result.name, Target);
    EXPECT_EQ(result.encoding, Encoding::Ansi);
    EXPECT_EQ(result.style, LineEnding::Unix);
    ASSERT_TRUE(document->Save(Target, Encoding::Keep, LineEnding::Keep));
    EXPECT_EQ(Journals().size(), 0u);
}

TEST_F(TextJournalTest, TheEncodingAndTheLineEndsComeBack) {
    const struct {
        std::string bytes;
        Encoding encoding;
        LineEnding style;
    } files[] = {{std::string("\xFF\xFE"
                              "a\0\r\0\n\0",
                              8),
                  Encoding::Unicode, LineEnding::Dos},
                 {std::string("\xFE\xFF\0a\0\n", 6), Encoding::UnicodeBigEndian, LineEnding::Unix},
                 {"\xEF\xBB\xBF"
                  "a\n\r\n",
                  Encoding::Utf8, LineEnding::Mixed}};
    for (const auto& file : files) {
        TextDocument document;
        Load(document, file.bytes);
        Insert(document, 0, u"new ");
        ASSERT_TRUE(document->FlushJournal());
        const Result result = Recover(TheJournal());
        EXPECT_EQ(result.encoding, file.encoding);
        EXPECT_EQ(result.style, file.style);
    }
}

TEST_F(TextJournalTest, AFailedSaveKeepsIt) {
    TextDocument document;
    Load(document, "one\n");
    Insert(document, 0, u"new ");
    ASSERT_TRUE(document->FlushJournal());
    disk.FailAt(1, FakeDisk::Fault::Gone);
    EXPECT_FALSE(document->Save(Target, Encoding::Keep, LineEnding::Keep));
    ExpectJournalOf(document);
}

TEST_F(TextJournalTest, ItGoesWithTheDocumentAndWithTheLastUndo) {
    {
        TextDocument document;
        Load(document, "one\n");
        Insert(document, 0, u"new ");
        ASSERT_TRUE(document->FlushJournal());
        EXPECT_EQ(Journals().size(), 1u);
        ASSERT_TRUE(document->Undo());
        EXPECT_TRUE(document->FlushJournal());
        EXPECT_EQ(Journals().size(), 0u);
        ASSERT_TRUE(document->Redo());
        EXPECT_TRUE(document->FlushJournal());
        ExpectJournalOf(document);
    }
    EXPECT_EQ(Journals().size(), 0u);
}

TEST_F(TextJournalTest, ItGoesWithAReload) {
    TextDocument document;
    Load(document, "one\n");
    Insert(document, 0, u"new ");
    ASSERT_TRUE(document->FlushJournal());
    ASSERT_TRUE(document->Reload());
    EXPECT_EQ(Journals().size(), 0u);
}

TEST_F(TextJournalTest, WhatIsLeftStays) {
    {
        TextDocument document(u"text");
        Insert(document, 0, u"new ");
        ASSERT_TRUE(document->FlushJournal());
        LeaveJournals();
    }
    EXPECT_EQ(Recover(TheJournal()).text, u"new text");
}

TEST_F(TextJournalTest, NothingIsWrittenUnlessJournalsAreKept) {
    KeepJournals(false);
    TextDocument document;
    for (uint32_t i = 0; i < 300; ++i) Insert(document, 0, u"x");
    EXPECT_TRUE(document->FlushJournal());
    EXPECT_EQ(disk.FilesBeside({}).size(), 0u);
}

TEST_F(TextJournalTest, ATextWithoutAFileIsKnownByItsTitle) {
    TextDocument document;
    ASSERT_TRUE(document->SetTitle(u"Untitled3"));
    Insert(document, 0, u"text");
    ASSERT_TRUE(document->FlushJournal());
    EXPECT_EQ(Recover(TheJournal()).name, u"Untitled3");
}

TEST_F(TextJournalTest, WithoutATimerItIsAtMostTwoHundredEditsBehind) {
    TextDocument document;
    textServices.makeView = CaretView::Make;
    ASSERT_TRUE(document->CreateView(nullptr));
    static_cast<void>(document->LoadEditLine(0));
    uint32_t behind = 0;
    for (uint32_t i = 1; i <= 1000; ++i) {
        ASSERT_TRUE(document->TypeChar(nullptr, u'x', document->EditLineText().Length() - 1, false, false));
        const std::string bytes = TheJournal();
        const auto held = bytes.empty() ? 0 : static_cast<uint32_t>(Recover(bytes).text.size());
        behind = std::max(behind, i - held);
    }
    EXPECT_EQ(behind, TextJournal::MaxEdits - 1);
    EXPECT_TRUE(document->HasPendingEdit());
}

TEST_F(TextJournalTest, OutputThatNobodyHasEditedHasNone) {
    TextDocument document;
    ASSERT_TRUE(document->MarkAsOutput());
    for (uint32_t i = 0; i < 3 * TextJournal::MaxEdits; ++i) {
        std::u16string line = u"printed\n";
        ASSERT_TRUE(document->AppendOutputText(line.data()));
        ASSERT_EQ(Journals().size(), 0u) << i;
    }
    EXPECT_TRUE(document->FlushJournal());
    EXPECT_EQ(Journals().size(), 0u);
}

TEST_F(TextJournalTest, AtTheEndOfTheSessionAFailureBeforeDoesNotMakeItWait) {
    TextDocument document(u"text");
    Insert(document, 0, u"new ");
    disk.FailAt(1, FakeDisk::Fault::Killed);
    EXPECT_FALSE(document->FlushJournal());
    disk.StopFailing();
    EXPECT_FALSE(document->FlushJournal()) << "half a minute has to pass";
    HurryJournals();
    EXPECT_TRUE(document->FlushJournal());
    ExpectJournalOf(document);
}

TEST_F(TextJournalTest, EditsFarFromEachOtherAreEntriesOfTheirOwn) {
    TextDocument document(std::u16string(1000000, u'x'));
    Insert(document, 500000, u"first");
    ASSERT_TRUE(document->FlushJournal());
    const size_t before = TheJournal().size();
    for (uint32_t i = 0; i < 50; ++i) Insert(document, i % 2 ? 10 : document->Length() - 10, u"far");
    ASSERT_TRUE(document->FlushJournal());
    EXPECT_LT(TheJournal().size(), before + 50 * 100);
    ExpectJournalOf(document);
}

TEST_F(TextJournalTest, ThePowerMayFailAfterAFlush) {
    TextDocument document(u"text");
    Insert(document, 0, u"new ");
    ASSERT_TRUE(document->FlushJournal());
    Insert(document, 0, u"very ");
    ASSERT_TRUE(document->FlushJournal());
    disk.FailAt(1, FakeDisk::Fault::PowerCut);
    EXPECT_FALSE(Platform::RemoveFile(Target));
    disk.Restart(FakeDisk::Unflushed::Lost);
    EXPECT_EQ(Recover(TheJournal()).text, u"very new text");
}

TEST_F(TextJournalTest, ALargeTextIsAChangeOfItsFile) {
    TextDocument document;
    const std::string bytes = LargeFile();
    Load(document, bytes);
    Insert(document, 2000000, u"new");
    ASSERT_TRUE(document->FlushJournal());
    Insert(document, 100, u"more\n");
    ASSERT_TRUE(document->FlushJournal());
    EXPECT_LT(TheJournal().size(), 1000u);
    ExpectJournalOf(document);

    // Of another size, or with another byte, also at the same time; and without a file at all.
    const std::string journal = TheJournal();
    const Platform::FileTime time = disk.TimeOf(Target);
    for (const std::string& other : {bytes + "x", "b" + bytes.substr(1)}) {
        disk.Write(Target, other);
        EXPECT_EQ(Recover(journal).state, RecoveryResult::FileChanged);
        disk.SetTime(Target, time);
        EXPECT_EQ(Recover(journal).state, RecoveryResult::FileChanged);
    }
    // The time alone makes it no other file.
    disk.Write(Target, bytes);
    ASSERT_NE(disk.TimeOf(Target), time);
    EXPECT_EQ(Recover(journal).state, RecoveryResult::Whole);
    EXPECT_TRUE(Platform::RemoveFile(Target));
    EXPECT_EQ(Recover(journal).state, RecoveryResult::FileUnreadable);
}

TEST_F(TextJournalTest, AfterASaveALargeTextIsAChangeOnlyWhereItsBytesLeaveNoDoubt) {
    TextDocument document;
    Load(document, LargeFile());
    Insert(document, 100, u"new");
    ASSERT_TRUE(document->Save(Target, Encoding::Keep, LineEnding::Keep));
    Insert(document, 3000000, u"more");
    ASSERT_TRUE(document->FlushJournal());
    EXPECT_LT(TheJournal().size(), 1000u);
    ExpectJournalOf(document);

    Insert(document, 100, u"\u6F22");
    ASSERT_TRUE(document->Save(Target, Encoding::Keep, LineEnding::Keep));
    Insert(document, 0, u"more");
    ASSERT_TRUE(document->FlushJournal());
    EXPECT_GT(TheJournal().size(), 2 * TextJournal::LargeText);
    ExpectJournalOf(document);
}

TEST_F(TextJournalTest, AFileThatOthersHaveWrittenIsNotBuiltOn) {
    TextDocument document;
    const std::string bytes = LargeFile();
    Load(document, bytes);
    disk.Write(Target, bytes);
    Insert(document, 100, u"new");
    ASSERT_TRUE(document->FlushJournal());
    EXPECT_GT(TheJournal().size(), 2 * TextJournal::LargeText);
    ExpectJournalOf(document);
}

TEST_F(TextJournalTest, AJournalThatHasGrownTooLargeIsMadeAnew) {
    TextDocument document(std::u16string(100000, u'x'));
    for (uint32_t i = 0; i < 120; ++i) {
        ASSERT_TRUE(document->DeleteText({0, 50000}));
        Insert(document, 0, std::u16string(50000 + i, u'y'));
        ASSERT_TRUE(document->DeleteText({document->Length() - 1, document->Length()}));
        ASSERT_TRUE(document->FlushJournal());
        ASSERT_LT(TheJournal().size(), 0x1000000u + 1000000u);
    }
    EXPECT_LT(TheJournal().size(), 0x1000000u);
    ExpectJournalOf(document);
}

// Random edits of every kind, with what the user sees compared after each.
class TextJournalRandomTest : public TextJournalTest {
protected:
    std::u16string RandomText(size_t most) {
        std::u16string text;
        for (size_t count = 1 + random.Below(most); count; --count) text += random.Pick(Letters);
        return text;
    }
    void Edit(TextDocument& document) {
        TextBuffer& buffer = *document;
        const uint32_t at = random.Below(buffer.Length() + 1);
        switch (random.Below(isInGroup ? 9 : 14)) {
        case 0:
            Insert(document, at, RandomText(random.OneIn(50) ? 5000 : 20));
            break;
        case 1:
            static_cast<void>(buffer.DeleteText({at, at + random.Below(random.OneIn(10) ? 3000 : 15)}));
            break;
        case 2:
            static_cast<void>(buffer.LoadEditLine(random.Below(buffer.GetLineCount())));
            break;
        case 3:
            static_cast<void>(buffer.NewLine(nullptr, random.Below(10)));
            break;
        case 4:
            static_cast<void>(buffer.DeleteInEditLine(nullptr, {random.Below(10), 1 + random.Below(12)}));
            break;
        case 5:
            Replace(buffer);
            break;
        case 6:
            static_cast<void>(buffer.CommitEdit());
            break;
        case 9:
            Group(document);
            break;
        case 10:
            static_cast<void>(buffer.Undo());
            break;
        case 11:
            static_cast<void>(buffer.Redo());
            break;
        default:
            static_cast<void>(
                buffer.TypeChar(nullptr, random.Pick(Letters), random.Below(20), random.OneIn(2), random.OneIn(4)));
        }
    }
    void Replace(TextBuffer& buffer) {
        Array<ReplacedRange> ranges;
        const bool grows = random.OneIn(2);
        uint32_t place = random.Below(50);
        for (; place + 4 < buffer.Length() && ranges.Count() < 20; place += 3 + random.Below(buffer.Length() / 10 + 1))
            ASSERT_TRUE(ranges.Append({place, grows ? random.Below(2) : 2}));
        static_cast<void>(buffer.ReplaceRanges(ranges, u"\nr", grows ? 2 : 1));
    }
    void Group(TextDocument& document) {
        if (!document->BeginGroup()) return;
        isInGroup = true;
        for (uint32_t count = random.Below(4); count; --count) Edit(document);
        isInGroup = false;
        if (random.OneIn(2))
            ASSERT_TRUE(document->EndGroup());
        else
            document->AbandonGroup();
    }
    void Run(TextDocument& document, int steps, uint32_t checkOneIn) {
        for (int step = 0; step < steps; ++step) {
            Edit(document);
            if (!random.OneIn(checkOneIn)) continue;
            ASSERT_TRUE(document->FlushJournal()) << step;
            if (document->IsModified())
                ExpectJournalOf(document);
            else
                EXPECT_EQ(Journals().size(), 0u);
            if (HasFailure()) FAIL() << "at step " << step;
        }
    }

    static constexpr Char Letters[] = {u'a', u'b', u' ', u'\t', u'\n', u'\u00E4', u'\u6F22', u'#', u'('};
    Random random{20261122};
    bool isInGroup = false; // where nothing is undone but the group
};

TEST_F(TextJournalRandomTest, WhatIsReadIsTheTextAfterEachStep) {
    TextDocument document;
    Load(document, "some lines\nof a file\n");
    Run(document, 3000, 2);
}

TEST_F(TextJournalRandomTest, AlsoWhenEditsAreFarApart) {
    TextDocument document(std::u16string(90000, u'x') + u"\n" + std::u16string(90000, u'y'));
    Run(document, 1000, 10);
}

TEST_F(TextJournalRandomTest, AlsoOverALargeFile) {
    TextDocument document;
    Load(document, LargeFile());
    Run(document, 120, 20);
}

TEST_F(TextJournalTest, TruncatedAnywhereItIsAnEarlierTextOrNone) {
    TextDocument document(u"text");
    std::vector<std::u16string> texts;
    for (const Char* word : {u"one ", u"two ", u"three "}) {
        Insert(document, 0, word);
        ASSERT_TRUE(document->FlushJournal());
        texts.push_back(document.Text());
    }
    const std::string whole = TheJournal();
    size_t seen = 0;
    for (size_t length = 0; length < whole.size(); ++length) {
        const Result result = Recover(whole.substr(0, length));
        const Result padded = Recover(whole.substr(0, length) + std::string(whole.size() - length, '\0'));
        EXPECT_EQ(result.HasText(), padded.HasText());
        EXPECT_EQ(result.text, padded.text);
        if (!result.HasText()) continue;
        while (seen < texts.size() && result.text != texts[seen]) ++seen;
        ASSERT_LT(seen, texts.size()) << "neither of the texts, or not in their order, at " << length;
        EXPECT_EQ(padded.state, RecoveryResult::Cut);
    }
    EXPECT_EQ(seen, texts.size() - 2);
}

TEST_F(TextJournalTest, WithAnyBitFlippedItIsAnEarlierTextThatSaysSoOrNone) {
    TextDocument document(u"text");
    Insert(document, 0, u"one ");
    ASSERT_TRUE(document->FlushJournal());
    const std::u16string first = document.Text();
    Insert(document, 0, u"two ");
    ASSERT_TRUE(document->FlushJournal());
    const std::string whole = TheJournal();
    size_t cut = 0;
    for (size_t bit = 0; bit < whole.size() * 8; ++bit) {
        std::string damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ 1 << bit % 8);
        const Result result = Recover(damaged);
        if (!result.HasText()) continue;
        EXPECT_EQ(result.state, RecoveryResult::Cut) << bit;
        EXPECT_EQ(result.text, first) << bit;
        ++cut;
    }
    EXPECT_EQ(cut, 8 * (sizeof(JournalChange) + 4 * sizeof(Char) + sizeof(uint64_t))); // all of the second change
}

// Adds a text while each call fails in turn, in every way.
void TextJournalTest::FailWhileAdding(const std::u16string& added) {
    for (const Case& tried : Cases) {
        bool isReached = true;
        for (uint64_t number = 1; isReached && number < 100; ++number) {
            SCOPED_TRACE(std::string(tried.name) + " at call " + std::to_string(number));
            Reset();
            TextDocument document(u"text");
            Insert(document, 0, u"one ");
            ASSERT_TRUE(document->FlushJournal());
            const std::u16string before = document.Text();
            disk.FailAt(number, tried.fault);
            Insert(document, 0, added);
            const bool isFlushed = document->FlushJournal();
            clock += 30001; // it is not tried again before
            const bool isFlushedLater = document->FlushJournal();
            isReached = disk.Calls() >= number;
            EXPECT_TRUE(isFlushed || disk.HasFailed());
            disk.StopFailing();
            const std::u16string after = document.Text();
            EXPECT_EQ(after, added + u"one text");
            LeaveJournals();
            disk.Restart(tried.unflushed);
            bool isThere = false;
            for (const std::u16string& name : Journals()) {
                const Result result = Recover(disk.Read(Folder + name));
                EXPECT_TRUE(!result.HasText() || result.text == before || result.text == after);
                isThere = isThere || (result.HasText() && (result.text == after || !(isFlushed || isFlushedLater)));
            }
            EXPECT_TRUE(isThere);
            KeepJournals(true);
        }
    }
}

TEST_F(TextJournalTest, WhateverFailsTheTextBeforeOrAfterIsThere) {
    FailWhileAdding(u"two ");
    FailWhileAdding(std::u16string(5000, u'2')); // written in more than one call
}

TEST_F(TextJournalTest, WithoutMemoryNothingChangesForTheDocument) {
    const uint64_t failures = FailEachAllocation([&] {
        std::unique_ptr<TextDocument> document;
        {
            const FailurePause pause;
            Reset();
            document = std::make_unique<TextDocument>(u"text");
            Insert(*document, 0, u"one ");
        }
        const bool isFlushed = (*document)->FlushJournal();
        const FailurePause pause;
        EXPECT_EQ(document->Text(), u"one text");
        EXPECT_TRUE((*document)->IsModified());
        if (!isFlushed) {
            EXPECT_EQ(Journals().size(), 0u);
            clock += 30001;
            EXPECT_TRUE((*document)->FlushJournal());
        }
        ExpectJournalOf(*document);
        document = nullptr;
        return isFlushed;
    });
    EXPECT_GT(failures, 3u);
}

TEST_F(TextJournalTest, WithoutMemoryNothingIsReadButTheJournalIsGoodStill) {
    TextDocument document;
    Load(document, LargeFile());
    Insert(document, 0, u"one ");
    ASSERT_TRUE(document->FlushJournal());
    const std::string bytes = TheJournal();
    const uint64_t failures = FailEachAllocation([&] {
        const Result result = Recover(bytes);
        const FailurePause pause;
        EXPECT_TRUE(!result.HasText() || result.text == document.Text());
        return result.HasText();
    });
    EXPECT_GT(failures, 3u);
}

// Reads a good journal while each call fails in turn.
void TextJournalTest::FailWhileReading(const std::string& bytes, FakeDisk::Fault fault) {
    bool isReached = true;
    for (uint64_t number = 2; isReached && number < 100; ++number) { // the first call opens it
        disk.Write(u"C:\\read", bytes);
        Platform::File file;
        disk.FailAt(number, fault);
        EXPECT_TRUE(file.Open(u"C:\\read", Platform::File::Mode::Alone));
        JournalReader journal(file);
        const JournalReader::State state = journal.ReadHeader();
        EXPECT_NE(state, JournalReader::State::Damaged);
        DecodedText text;
        const RecoveryResult result =
            state == JournalReader::State::Readable ? RecoverText(journal, text) : RecoveryResult::Failed;
        isReached = disk.Calls() >= number;
        EXPECT_EQ(result, disk.HasFailed() ? RecoveryResult::Failed : RecoveryResult::Whole) << number;
        EXPECT_TRUE(disk.HasFailed() || fault == FakeDisk::Fault::Shortened || !isReached);
        disk.StopFailing();
    }
}

TEST_F(TextJournalTest, ADiskThatDoesNotDeliverIsNoDamage) {
    TextDocument document(u"text");
    for (int i = 0; i < 3; ++i) {
        Insert(document, 0, u"one ");
        ASSERT_TRUE(document->FlushJournal());
    }
    const std::string bytes = TheJournal();
    FailWhileReading(bytes, FakeDisk::Fault::Denied);
    FailWhileReading(bytes, FakeDisk::Fault::Shortened);
}

} // namespace
