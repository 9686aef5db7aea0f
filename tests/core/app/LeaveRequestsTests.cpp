#include "app/LeaveRequests.h"
#include "core/app/FakeFrame.h"

#include <gtest/gtest.h>

namespace {

class FakeLeavingFrame final : public LeavingFrame {
public:
    bool HasOpenDialog() const override { return dialog; }
    void Leave() override { ++leaves; }
    void KeepUnsaved() override {
        EXPECT_EQ(leaves, 0);
        ++keeps;
    }
    void PostLeaveNow() override { ++postedLeaves; }
    void PostCheckFiles() override { ++postedChecks; }
    bool IsInLongOperation() const override { return searching; }
    void PostAskUnsaved() override { ++postedQuestions; }
    void SetShutdownReason(const Char* text) override { reason = Str(text); }

    bool dialog = false;
    bool searching = false;
    int postedQuestions = 0;
    std::u16string reason = Str(nullptr);
    int leaves = 0;
    int keeps = 0;
    int postedLeaves = 0;
    int postedChecks = 0;
};

class LeaveRequestsTest : public ::testing::Test {
protected:
    FakeDocument& AddModified() {
        FakeDocument& document = frame.Add(FakeDocument::WithFile(u"a"));
        document.modified = true;
        return document;
    }

    FakeFrame frame;
    FakeLeavingFrame window;
    LeaveRequests requests{frame, window};
};

TEST_F(LeaveRequestsTest, ClosingAsksAboutUnsavedDocumentsAndLeaves) {
    AddModified();
    requests.Close(); // Cancel
    EXPECT_EQ(window.leaves, 0);
    frame.answers = {Answer::No};
    requests.Close();
    EXPECT_EQ(window.leaves, 1);
    EXPECT_EQ(frame.questions.size(), 2u);
}

TEST_F(LeaveRequestsTest, ClosingIsIgnoredWhileADialogIsOpen) {
    AddModified();
    window.dialog = true;
    requests.Close();
    requests.EndSession(true);
    EXPECT_TRUE(frame.questions.empty());
    requests.DialogClosed();
    EXPECT_EQ(window.leaves + window.postedLeaves, 0);
}

TEST_F(LeaveRequestsTest, ASecondRequestDoesNotAskWhileTheFirstOnesQuestionsAreOpen) {
    AddModified();
    frame.whileAsking = [&] {
        requests.Close();
        EXPECT_EQ(window.leaves, 0);
    };
    frame.answers = {Answer::No};
    requests.Close();
    EXPECT_EQ(window.leaves, 1);
    EXPECT_EQ(frame.questions.size(), 1u);
}

TEST_F(LeaveRequestsTest, TheEndOfTheSessionIsAnsweredWithoutAQuestion) {
    FakeDocument& document = AddModified();
    EXPECT_FALSE(requests.QueryEndSession());
    EXPECT_EQ(window.reason, u"There are documents with unsaved changes.");
    EXPECT_TRUE(frame.questions.empty());
    requests.EndSession(true); // the user would not wait
    EXPECT_EQ(window.leaves, 1);
    EXPECT_EQ(window.keeps, 1);
    document.modified = false;
    EXPECT_TRUE(requests.QueryEndSession());
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(LeaveRequestsTest, AReasonThatHoldsNoLongerIsTakenBack) {
    FakeDocument& document = AddModified();
    EXPECT_FALSE(requests.QueryEndSession());
    document.modified = false; // saved while the system waited
    EXPECT_TRUE(requests.QueryEndSession());
    EXPECT_EQ(window.reason, Str(nullptr));
    requests.UserIsBack();
    EXPECT_EQ(window.postedQuestions, 0);
}

TEST_F(LeaveRequestsTest, TheQuestionsComeWhenTheUserIsBack) {
    AddModified();
    requests.EndSession(false); // of a session that nothing obstructed
    EXPECT_EQ(window.keeps, 0);
    EXPECT_EQ(window.postedQuestions, 0);
    for (const auto& comeBack :
         {+[](LeaveRequests& all) { all.EndSession(false); }, +[](LeaveRequests& all) { all.UserIsBack(); }}) {
        EXPECT_FALSE(requests.QueryEndSession());
        window.postedQuestions = 0;
        comeBack(requests);
        EXPECT_EQ(window.reason, Str(nullptr));
        EXPECT_EQ(window.postedQuestions, 1);
        requests.UserIsBack();
        EXPECT_EQ(window.postedQuestions, 1);
    }
    requests.AskUnsaved(); // Cancel
    EXPECT_EQ(window.leaves, 0);
    frame.answers = {Answer::No};
    requests.AskUnsaved();
    EXPECT_EQ(window.leaves, 1);
    EXPECT_EQ(frame.questions.size(), 2u);
}

TEST_F(LeaveRequestsTest, WithoutUnsavedDocumentsTheUserWhoIsBackIsAskedNothing) {
    frame.Add(FakeDocument::WithFile(u"a"));
    window.searching = true;
    EXPECT_FALSE(requests.QueryEndSession());
    EXPECT_EQ(window.reason, u"A search or a replacement is running.");
    window.searching = false;
    requests.EndSession(false);
    requests.AskUnsaved();
    EXPECT_TRUE(frame.questions.empty());
    EXPECT_EQ(window.leaves, 0);
}

TEST_F(LeaveRequestsTest, TheQuestionsOfTheUserWhoIsBackWaitForADialog) {
    AddModified();
    window.dialog = true;
    requests.AskUnsaved();
    EXPECT_TRUE(frame.questions.empty());
    window.dialog = false;
    requests.DialogClosed();
    EXPECT_EQ(window.postedQuestions, 1);
    requests.DialogClosed();
    EXPECT_EQ(window.postedQuestions, 1);
}

TEST_F(LeaveRequestsTest, TheQuestionsThatAreOpenAreNotAskedAgain) {
    AddModified();
    frame.whileAsking = [&] {
        window.dialog = true;
        requests.AskUnsaved();
        window.dialog = false;
        requests.DialogClosed();
    };
    requests.Close(); // Cancel
    EXPECT_EQ(window.postedQuestions, 0);
}

TEST_F(LeaveRequestsTest, NothingClosesDuringALongOperation) {
    FakeDocument& document = AddModified();
    document.changedOnDisk = true;
    window.searching = true;
    requests.EndSession(true);
    requests.Close();
    requests.LeaveNow();
    requests.CheckFiles();
    requests.AskUnsaved();
    EXPECT_EQ(window.leaves, 0);
    EXPECT_TRUE(frame.questions.empty());
    EXPECT_EQ(frame.TakeCalls(), Calls{u"close"});
    EXPECT_EQ(window.postedLeaves, 1);
    EXPECT_EQ(window.postedChecks, 1);
    EXPECT_EQ(window.postedQuestions, 1);
}

TEST_F(LeaveRequestsTest, LeavingNowAsksNothingAndWaitsForADialog) {
    AddModified();
    window.dialog = true;
    requests.LeaveNow();
    EXPECT_EQ(window.leaves, 0);
    window.dialog = false;
    requests.DialogClosed();
    EXPECT_EQ(window.postedLeaves, 1);
    requests.DialogClosed();
    EXPECT_EQ(window.postedLeaves, 1);
    requests.LeaveNow();
    EXPECT_EQ(window.leaves, 1);
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(LeaveRequestsTest, TheCheckForExternalChangesWaitsForADialog) {
    FakeDocument& document = frame.Add(FakeDocument::WithFile(u"a"));
    document.changedOnDisk = true;
    window.dialog = true;
    requests.CheckFiles();
    EXPECT_TRUE(frame.questions.empty());
    window.dialog = false;
    requests.DialogClosed();
    EXPECT_EQ(window.postedChecks, 1);
    requests.CheckFiles();
    EXPECT_EQ(frame.questions.size(), 1u);
    requests.DialogClosed();
    EXPECT_EQ(window.postedChecks, 1);
}

} // namespace
