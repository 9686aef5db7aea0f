#include "app/DocumentPrompts.h"
#include "core/app/FakeFrame.h"
#include "support/FailureInjection.h"

#include <gtest/gtest.h>

namespace {

class DocumentPromptTest : public ::testing::Test {
protected:
    FakeDocument& AddModified(const Char* path) {
        FakeDocument& document = frame.Add(FakeDocument::WithFile(path));
        document.modified = true;
        return document;
    }
    FakeDocument& AddChanged(const Char* path) {
        FakeDocument& document = frame.Add(FakeDocument::WithFile(path));
        document.changedOnDisk = true;
        return document;
    }

    FakeFrame frame;
};

TEST_F(DocumentPromptTest, AnUnmodifiedDocumentClosesAtOnce) {
    EXPECT_TRUE(MayClose(frame, frame.Add(FakeDocument::WithFile(u"C:\\a"))));
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(DocumentPromptTest, AModifiedDocumentIsAskedAbout) {
    FakeDocument& document = AddModified(u"C:\\100%s & more.c");
    frame.answers = {Answer::No};
    EXPECT_TRUE(MayClose(frame, document));
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, u"Save changes to C:\\100%s & more.c?");
    EXPECT_EQ(frame.questions[0].kind, MessageKind::YesNoCancel);
    EXPECT_EQ(frame.calls, Calls{});
}

TEST_F(DocumentPromptTest, CancelKeepsItOpen) {
    FakeDocument& document = AddModified(u"C:\\a");
    frame.answers = {Answer::Cancel};
    EXPECT_FALSE(MayClose(frame, document));
    EXPECT_EQ(frame.calls, Calls{});
}

TEST_F(DocumentPromptTest, YesSavesAndClosesOnlyWhenSavingWorked) {
    FakeDocument& document = AddModified(u"C:\\a");
    frame.defaultAnswer = Answer::Yes;
    EXPECT_TRUE(MayClose(frame, document));
    frame.savingWorks = false;
    EXPECT_FALSE(MayClose(frame, document));
    EXPECT_EQ(frame.calls, Calls(2, u"save C:\\a"));
}

TEST_F(DocumentPromptTest, ADocumentClosedDuringTheQuestionIsLeftAlone) {
    FakeDocument& document = AddModified(u"C:\\a");
    frame.defaultAnswer = Answer::Yes;
    frame.whileAsking = [&] { frame.documents.Remove(&document); };
    EXPECT_FALSE(MayClose(frame, document));
    EXPECT_EQ(frame.calls, Calls{});
}

TEST_F(DocumentPromptTest, ExitAsksForEachModifiedDocumentInOrder) {
    AddModified(u"C:\\a");
    frame.Add(FakeDocument::WithFile(u"C:\\b"));
    AddModified(u"C:\\c");
    AddModified(u"C:\\d");
    frame.answers = {Answer::Yes, Answer::No, Answer::Yes};
    EXPECT_TRUE(MayExit(frame));
    ASSERT_EQ(frame.questions.size(), 3u);
    EXPECT_EQ(frame.questions[0].text, u"Save changes to C:\\a?");
    EXPECT_EQ(frame.questions[1].text, u"Save changes to C:\\c?");
    EXPECT_EQ(frame.questions[2].text, u"Save changes to C:\\d?");
    EXPECT_EQ(frame.calls, (Calls{u"save C:\\a", u"save C:\\d"}));
}

TEST_F(DocumentPromptTest, CancelAnywhereEndsTheExit) {
    AddModified(u"C:\\a");
    AddModified(u"C:\\b");
    AddModified(u"C:\\c");
    frame.answers = {Answer::No, Answer::Cancel};
    EXPECT_FALSE(MayExit(frame));
    EXPECT_EQ(frame.questions.size(), 2u);
    EXPECT_EQ(frame.documents.Count(), 3u);
}

TEST_F(DocumentPromptTest, AFailedSaveEndsTheExit) {
    AddModified(u"C:\\a");
    AddModified(u"C:\\b");
    frame.defaultAnswer = Answer::Yes;
    frame.savingWorks = false;
    EXPECT_FALSE(MayExit(frame));
    EXPECT_EQ(frame.questions.size(), 1u);
}

TEST_F(DocumentPromptTest, ExitWithNothingModifiedAsksNothing) {
    EXPECT_TRUE(MayExit(frame));
    frame.Add(FakeDocument::WithFile(u"C:\\a"));
    EXPECT_TRUE(MayExit(frame));
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(DocumentPromptTest, TwoChangedFilesGiveTwoQuestionsInOrder) {
    FakeDocument& a = AddChanged(u"C:\\a");
    frame.Add(FakeDocument::WithFile(u"C:\\b"));
    FakeDocument& c = AddChanged(u"C:\\c");
    frame.answers = {Answer::Yes, Answer::No};
    ExternalChangePrompt().Run(frame);
    ASSERT_EQ(frame.questions.size(), 2u);
    EXPECT_EQ(frame.questions[0].text,
              u"File C:\\a has been modified by another program.\nWould you like to reopen it?");
    EXPECT_EQ(frame.questions[1].text,
              u"File C:\\c has been modified by another program.\nWould you like to reopen it?");
    EXPECT_EQ(frame.questions[0].kind, MessageKind::YesNoCancel);
    EXPECT_EQ(a.reloads, 1);
    EXPECT_EQ(a.acceptedChanges, 0);
    EXPECT_EQ(c.reloads, 0);
    EXPECT_EQ(c.acceptedChanges, 1);
    EXPECT_EQ(frame.titles, 1);
    EXPECT_EQ(frame.statuses, 0) << "a message stays";
}

TEST_F(DocumentPromptTest, AFileThatCannotBeReadAgainIsReportedOnce) {
    FakeDocument& a = AddChanged(u"C:\\a");
    a.reloadingWorks = false;
    frame.answers = {Answer::Yes, Answer::Ok};
    ExternalChangePrompt prompt;
    prompt.Run(frame);
    ASSERT_EQ(frame.questions.size(), 2u);
    EXPECT_EQ(frame.questions[1].text, u"Failed opening file: C:\\a");
    EXPECT_EQ(frame.questions[1].kind, MessageKind::Warning);
    EXPECT_EQ(a.acceptedChanges, 1);
    prompt.Run(frame);
    EXPECT_EQ(frame.questions.size(), 2u);
}

TEST_F(DocumentPromptTest, CancelAcceptsTheChangeToo) {
    FakeDocument& a = AddChanged(u"C:\\a");
    frame.answers = {Answer::Cancel};
    ExternalChangePrompt prompt;
    prompt.Run(frame);
    EXPECT_EQ(a.acceptedChanges, 1);
    prompt.Run(frame);
    EXPECT_EQ(frame.questions.size(), 1u);
}

TEST_F(DocumentPromptTest, ADriveThatRestsIsNotAsked) {
    FakeDocument& a = AddChanged(u"C:\\a");
    FakeDocument& b = AddChanged(u"D:\\b");
    a.mayCheckDisk = false;
    ExternalChangePrompt().Run(frame);
    EXPECT_EQ(a.changeChecks, 0);
    EXPECT_EQ(b.changeChecks, 1);
    EXPECT_EQ(frame.questions.size(), 1u);
}

TEST_F(DocumentPromptTest, TheCheckDoesNotRunInsideItself) {
    FakeDocument& a = AddChanged(u"C:\\a");
    ExternalChangePrompt prompt;
    frame.whileAsking = [&] {
        for (int i = 0; i < 10; ++i) {
            a.changedOnDisk = true; // again and again while the question is open
            prompt.Run(frame);
        }
    };
    prompt.Run(frame);
    EXPECT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(a.acceptedChanges, 1);
    // Afterwards it runs again.
    frame.whileAsking = nullptr;
    a.changedOnDisk = true;
    prompt.Run(frame);
    EXPECT_EQ(frame.questions.size(), 2u);
}

TEST_F(DocumentPromptTest, ADocumentClosedDuringTheChangeQuestionIsNotReloaded) {
    FakeDocument& a = AddChanged(u"C:\\a");
    a.AddRef();
    frame.defaultAnswer = Answer::Yes;
    frame.whileAsking = [&] { frame.documents.Remove(&a); };
    ExternalChangePrompt().Run(frame);
    EXPECT_EQ(a.reloads, 0);
    EXPECT_EQ(a.acceptedChanges, 0);
    a.Release();
}

TEST_F(DocumentPromptTest, WithoutMemoryNothingIsClosedAndNothingReloaded) {
    FakeDocument& a = AddModified(u"C:\\a");
    a.changedOnDisk = true;
    frame.defaultAnswer = Answer::No;
    const uint64_t closeFailures = FailEachAllocation([&] { return MayClose(frame, a); });
    EXPECT_GT(closeFailures, 0u);
    ExternalChangePrompt prompt;
    const uint64_t checkFailures = FailEachAllocation([&] {
        prompt.Run(frame);
        return a.acceptedChanges == 1;
    });
    EXPECT_GT(checkFailures, 0u);
}

} // namespace
