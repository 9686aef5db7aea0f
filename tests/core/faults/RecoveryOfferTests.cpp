#include "JournalTest.h"
#include "app/DocumentOpener.h"
#include "app/OpenFailures.h"
#include "app/RecoveryOffer.h"
#include "base/SaveCopy.h"
#include "binary/BinaryDocument.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "support/FailureInjection.h"
#include "support/TestServices.h"

namespace {

// A start of the editor, after another one has left something.
class RecoveryOfferTest : public JournalTest {
protected:
    ~RecoveryOfferTest() override { EndEditor(); }

    // Leaves a journal as a kill does.
    void LeaveJournal(const std::u16string& text, const Char* title = nullptr) {
        TextDocument document;
        if (title) {
            ASSERT_TRUE(document->SetTitle(title));
        } else {
            disk.Write(Target, "old");
            ASSERT_TRUE(document->Load(Target, false));
            ASSERT_TRUE(document->DeleteText({0, 3}));
        }
        ASSERT_TRUE(document->InsertText(0, text.c_str(), static_cast<uint32_t>(text.size())));
        ASSERT_TRUE(document->FlushJournal());
        LeaveJournals();
    }
    // Of a text that is kept as what differs from its file. Returns what the file holds.
    std::string LeaveJournalOverFile() {
        std::string bytes;
        while (bytes.size() <= TextJournal::LargeText) bytes += "a line of a large file\n";
        KeepJournals(true);
        disk.Write(Target, bytes);
        TextDocument document;
        EXPECT_TRUE(document->Load(Target, false) && document->InsertText(0, u"new", 3) && document->FlushJournal());
        LeaveJournals();
        return bytes;
    }
    void LeaveJournalOfBytes() {
        constexpr uint8_t Changed[] = {'T'};
        KeepJournals(true);
        disk.Write(Target, "the bytes of a file");
        auto* const document = new BinaryDocument(hexServices);
        document->AddRef();
        EXPECT_TRUE(document->Open(Target) && document->EditBytes(0, Changed, 1, nullptr, {}) &&
                    document->FlushJournal());
        LeaveJournals();
        document->Release();
    }
    void LeaveCopy(const std::u16string& target = Target) {
        BlockSource source("new bytes", 9);
        SaveCopy left;
        ASSERT_EQ(left.Make(recoveryServices.folder, target.c_str(), source), SaveCopy::Outcome::Made);
    }
    void StartEditor(Answer answer = Answer::Yes) {
        KeepJournals(true);
        user.questions.clear();
        user.answers.assign(1, answer);
        OfferRecovery(recoveryServices.folder, user, opener);
    }
    void EndEditor() {
        panes.CloseAll();
        while (Document* const document = documents.At(0)) documents.Remove(document);
    }
    std::u16string TextOf(uint32_t index) {
        const auto& text = static_cast<const TextBuffer&>(*documents.At(index));
        return {text.Content(), text.Length()};
    }

    DocumentServices services{{recoveryServices, CaretView::Make, nullptr, {}}, {recoveryServices}};
    FakePanes panes;
    DocumentList documents;
    FakeFrameDisplay screen;
    ScreenBatch batch{screen};
    DocumentDisplay display{documents, panes, batch};
    FakeFrame user;
    OpenFailures failures{batch, user};
    DocumentOpener opener{services, documents, display, panes, failures};
};

TEST_F(RecoveryOfferTest, NothingIsTheUsualThing) {
    StartEditor();
    EXPECT_EQ(user.questions.size(), 0u);
}

TEST_F(RecoveryOfferTest, TheUserIsToldOfAnIncompleteSaveOnce) {
    LeaveCopy();
    // Until the answer the copy is there: the machine may stop before the user has read it.
    user.whileAsking = [this] { EXPECT_EQ(disk.FilesBeside({}).size(), 2u); };
    StartEditor();
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, u"S:\\work\\file.txt was not saved completely.\n"
                                      u"Its new contents are in C:\\Recovery\\file.txt.");
    EXPECT_EQ(user.questions[0].kind, MessageKind::Warning);
    user.whileAsking = nullptr;
    StartEditor();
    EXPECT_EQ(user.questions.size(), 0u);
}

TEST_F(RecoveryOfferTest, WhatCouldNotBeShownIsToldAgain) {
    LeaveCopy();
    StartEditor(Answer::Cancel); // which neither box offers
    StartEditor();
    EXPECT_EQ(user.questions.size(), 1u);
    StartEditor();
    EXPECT_EQ(user.questions.size(), 0u);
}

TEST_F(RecoveryOfferTest, ChangesOpenAsUntitledModifiedDocuments) {
    LeaveJournal(u"of a file");
    LeaveJournal(u"of none\n", u"Untitled3");
    StartEditor();
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, u"Changes were not saved when Orvane ended:\n"
                                      u"S:\\work\\file.txt\n"
                                      u"Untitled3\n"
                                      u"Open them now? With No they are offered again at the next start.");
    EXPECT_EQ(user.questions[0].kind, MessageKind::YesNo);
    ASSERT_EQ(documents.Count(), 2u);
    EXPECT_EQ(TextOf(0), u"of a file");
    EXPECT_EQ(Str(documents.At(0)->GetTitle()), u"file.txt (recovered)");
    EXPECT_FALSE(HasFile(*documents.At(0)));
    EXPECT_TRUE(documents.At(0)->IsModified());
    EXPECT_FALSE(documents.At(0)->CanDo(DocumentCommand::Undo));
    EXPECT_EQ(TextOf(1), u"of none\n");
    EXPECT_EQ(Str(documents.At(1)->GetTitle()), u"Untitled3 (recovered)");
    EXPECT_EQ(disk.Read(Target), "old");
    EXPECT_EQ(display.Active(), documents.At(1));
}

TEST_F(RecoveryOfferTest, WithNoTheyAreOfferedAgain) {
    LeaveJournal(u"text");
    StartEditor(Answer::No);
    EXPECT_EQ(documents.Count(), 0u);
    StartEditor(Answer::Yes);
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(documents.Count(), 1u);
}

TEST_F(RecoveryOfferTest, WhatWasOpenedAndClosedIsNotOfferedAgain) {
    LeaveJournal(u"text");
    StartEditor();
    EXPECT_EQ(Journals().size(), 1u); // that of the new document
    EndEditor();
    EXPECT_EQ(Journals().size(), 0u);
    StartEditor();
    EXPECT_EQ(user.questions.size(), 0u);
}

TEST_F(RecoveryOfferTest, AfterAnotherKillItIsOfferedAgainUnderTheSameTitle) {
    LeaveJournal(u"text");
    StartEditor();
    LeaveJournals();
    EndEditor();
    StartEditor();
    ASSERT_EQ(documents.Count(), 1u);
    EXPECT_EQ(TextOf(0), u"text");
    EXPECT_EQ(Str(documents.At(0)->GetTitle()), u"file.txt (recovered)");
}

TEST_F(RecoveryOfferTest, ATitleThatSaysItWasRecoveredDoesNotSaySoTwice) {
    LeaveJournal(u"a", u"A title of its own");
    LeaveJournal(u"b", u" (recovered)");
    LeaveJournal(u"c", u"(recovered)");
    StartEditor();
    ASSERT_EQ(documents.Count(), 3u);
    EXPECT_EQ(Str(documents.At(0)->GetTitle()), u"A title of its own (recovered)");
    EXPECT_EQ(Str(documents.At(1)->GetTitle()), u" (recovered)");
    EXPECT_EQ(Str(documents.At(2)->GetTitle()), u"(recovered) (recovered)");
}

TEST_F(RecoveryOfferTest, WithoutMemoryNoQuestionIsAskedInPart) {
    const std::u16string changes = u"Changes were not saved when Orvane ended:\n"
                                   u"S:\\work\\file.txt\n"
                                   u"Open them now? With No they are offered again at the next start.";
    for (size_t length = 1; length < 40; ++length) { // so that each part is the one that has no room
        const std::u16string name = std::u16string(length, u'n') + u".txt";
        const std::u16string start = u"S:\\work\\" + name + u" was not saved completely.\nIts new contents are in ";
        const std::u16string copied = start + u"C:\\Recovery\\" + name + u".";
        const uint64_t failed = FailEachAllocation([&] {
            {
                const FailurePause pause;
                Reset();
                KeepJournals(true);
                LeaveCopy(u"S:\\work\\" + name);
                LeaveJournal(u"text");
            }
            StartEditor(Answer::Cancel);
            for (const FakeFrame::Question& asked : user.questions) {
                if (asked.kind != MessageKind::YesNo) {
                    EXPECT_EQ(asked.text, copied);
                } else if (asked.text != changes) {
                    EXPECT_TRUE(asked.text.starts_with(start));
                    EXPECT_TRUE(asked.text.ends_with(u".\n\n" + changes));
                }
            }
            return user.questions.size() == 1 && user.questions[0].text == copied + u"\n\n" + changes;
        });
        EXPECT_GT(failed, 5u);
    }
}

TEST_F(RecoveryOfferTest, BothAreToldInOneQuestion) {
    LeaveCopy();
    LeaveJournal(u"text");
    StartEditor();
    ASSERT_EQ(user.questions.size(), 1u);
    EXPECT_EQ(user.questions[0].text, u"S:\\work\\file.txt was not saved completely.\n"
                                      u"Its new contents are in C:\\Recovery\\file.txt.\n\n"
                                      u"Changes were not saved when Orvane ended:\n"
                                      u"S:\\work\\file.txt\n"
                                      u"Open them now? With No they are offered again at the next start.");
    EXPECT_EQ(documents.Count(), 1u);
}

TEST_F(RecoveryOfferTest, JournalsOfARunningEditorAreLeftAlone) {
    TextDocument running;
    ASSERT_TRUE(running->InsertText(0, u"text", 4));
    ASSERT_TRUE(running->FlushJournal());
    StartEditor();
    EXPECT_EQ(user.questions.size(), 0u);
    ExpectJournalOf(running);
}

TEST_F(RecoveryOfferTest, TwoStartsDoNotOfferTheSame) {
    LeaveJournal(u"text");
    bool isSecond = false;
    user.whileAsking = [&] {
        FakeFrame other;
        OfferRecovery(recoveryServices.folder, other, opener);
        EXPECT_EQ(other.questions.size(), 0u);
        isSecond = true;
    };
    StartEditor();
    EXPECT_TRUE(isSecond);
}

TEST_F(RecoveryOfferTest, ADamagedEndIsTold) {
    LeaveJournal(u"text");
    const std::u16string path = Folder + Journals()[0];
    disk.Write(path, disk.Read(path) + "torn");
    StartEditor();
    ASSERT_EQ(user.questions.size(), 2u);
    EXPECT_EQ(user.questions[1].text,
              u"The journal of S:\\work\\file.txt is damaged: the last changes in it are missing.");
    EXPECT_EQ(user.questions[1].kind, MessageKind::Warning);
    EXPECT_EQ(TextOf(0), u"text");
}

TEST_F(RecoveryOfferTest, WhatHoldsNoChangeGoesAndOneOfANewerProgramStays) {
    LeaveJournal(u"text");
    const std::u16string path = Folder + Journals()[0];
    const std::string whole = disk.Read(path);
    for (const std::string& bytes : {std::string(), std::string("not one"), whole.substr(0, whole.size() - 1)}) {
        disk.Write(path, bytes);
        StartEditor();
        EXPECT_EQ(user.questions.size(), 0u);
        EXPECT_FALSE(disk.Has(path));
    }
    std::string newer = whole;
    newer[8] = 2;
    disk.Write(path, newer);
    StartEditor();
    EXPECT_EQ(user.questions.size(), 0u);
    EXPECT_TRUE(disk.Has(path));
}

TEST_F(RecoveryOfferTest, ChangesOfAFileThatIsAnotherOneStay) {
    const std::string bytes = LeaveJournalOverFile();
    const std::u16string path = Folder + Journals()[0];
    disk.Write(Target, "b" + bytes.substr(1));
    StartEditor();
    ASSERT_EQ(user.questions.size(), 2u);
    EXPECT_EQ(user.questions[1].text, u"S:\\work\\file.txt has changed since it was edited. The changes stay in " +
                                          path + u"; delete it if you do not need them.");
    EXPECT_EQ(documents.Count(), 0u);
    EXPECT_TRUE(disk.Has(path));
}

// The drive may be one of a machine that does not answer: the start waits for it only when that was wanted.
TEST_F(RecoveryOfferTest, FilesAreNotAskedForBeforeTheAnswer) {
    LeaveJournalOverFile();
    LeaveJournalOfBytes();
    disk.FailAt(1, FakeDisk::Fault::Gone);
    StartEditor(Answer::No);
    EXPECT_EQ(user.questions.size(), 1u);
    EXPECT_FALSE(disk.HasFailed()) << "something was asked of the drive";
    StartEditor(Answer::Yes);
    EXPECT_TRUE(disk.HasFailed());
}

TEST_F(RecoveryOfferTest, ChangesOfAFileThatCannotBeReadNowAreOfferedAgain) {
    for (const bool isOfBytes : {false, true}) {
        Reset();
        isOfBytes ? LeaveJournalOfBytes() : static_cast<void>(LeaveJournalOverFile());
        const std::u16string path = Folder + Journals()[0];
        disk.FailAt(1, FakeDisk::Fault::Gone);
        StartEditor();
        disk.StopFailing();
        ASSERT_EQ(user.questions.size(), 2u);
        EXPECT_EQ(user.questions[1].text, u"S:\\work\\file.txt cannot be read. Its changes stay in " + path +
                                              u" and are offered again at the next start.");
        EXPECT_EQ(documents.Count(), 0u);
        EXPECT_TRUE(disk.Has(path));
        StartEditor(Answer::No);
        EXPECT_EQ(user.questions.size(), 1u);
    }
}

TEST_F(RecoveryOfferTest, WhateverFailsTheChangesAreOpenOrOfferedAgain) {
    for (const Case& tried : Cases) {
        bool isReached = true;
        for (uint64_t number = 1; isReached && number < 100; ++number) {
            SCOPED_TRACE(std::string(tried.name) + " at call " + std::to_string(number));
            Reset();
            KeepJournals(true);
            LeaveJournal(u"text");
            disk.FailAt(number, tried.fault);
            StartEditor();
            isReached = disk.Calls() >= number;
            disk.StopFailing();
            LeaveJournals();
            EndEditor();
            disk.Restart(tried.unflushed);
            StartEditor();
            ASSERT_GE(documents.Count(), 1u);
            for (uint32_t i = 0; i < documents.Count(); ++i) EXPECT_EQ(TextOf(i), u"text");
            EXPECT_EQ(disk.Read(Target), "old");
            EndEditor();
        }
    }
}

TEST_F(RecoveryOfferTest, TheJournalsOfAllDocumentsAreFlushedAsLongAsOneIsModified) {
    EXPECT_FALSE(FlushJournals(documents));
    opener.OpenNew();
    opener.OpenNew();
    EXPECT_FALSE(FlushJournals(documents));
    auto& second = static_cast<TextBuffer&>(*documents.At(1));
    ASSERT_TRUE(second.InsertText(0, u"text", 4));
    EXPECT_TRUE(FlushJournals(documents));
    EXPECT_EQ(Journals().size(), 1u);
    ASSERT_TRUE(second.Undo());
    EXPECT_FALSE(FlushJournals(documents));
    EXPECT_EQ(Journals().size(), 0u);
}

} // namespace
