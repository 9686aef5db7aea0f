#include "app/LeaveRequests.h"
#include "core/app/FakeFrame.h"

#include <gtest/gtest.h>

namespace {

class FakeLeavingFrame final : public LeavingFrame {
public:
    bool HasOpenDialog() const override { return dialog; }
    void Leave() override { ++leaves; }
    void PostLeaveNow() override { ++postedLeaves; }
    void PostCheckFiles() override { ++postedChecks; }

    bool dialog = false;
    int leaves = 0;
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

TEST_F(LeaveRequestsTest, ClosingBeneathADialogIsIgnored) {
    AddModified();
    window.dialog = true;
    requests.Close();
    requests.EndSession();
    EXPECT_TRUE(frame.questions.empty());
    requests.DialogClosed();
    EXPECT_EQ(window.leaves + window.postedLeaves, 0);
}

TEST_F(LeaveRequestsTest, ASecondRequestDoesNotAskWhileTheFirstOnesQuestionsAreOpen) {
    AddModified();
    frame.whileAsking = [&] { EXPECT_FALSE(requests.MayLeave()); };
    frame.answers = {Answer::No};
    EXPECT_TRUE(requests.MayLeave());
    EXPECT_EQ(frame.questions.size(), 1u);
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
