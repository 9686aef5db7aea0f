// Output that cannot be read, or that there is no room for.

#include "core/document/RunAppendTest.h"
#include "support/FailureInjection.h"

namespace {

class RunFailureTest : public AppendTest {
protected:
    // The clock is stopped: however busy the machine is, a poll has the time to read everything.
    RunFailureTest() { Platform::SetTestClock(&now); }
    ~RunFailureTest() override { Platform::SetTestClock(nullptr); }

    // A command has ended, and polling fails in each way in turn before everything is read.
    template <class FailEach> void ExpectAllDespite(FailEach failEach) {
        const std::string printed = Repeated("0123456789 abcdefghij\r\n", 2000);
        Print(*document, printed);
        speaker.Give("end");
        ASSERT_TRUE(ProcessHasEnded(*document));
        const uint64_t failures = failEach([&] {
            document->PollOutput();
            return !IsRunning(*document);
        });
        EXPECT_GE(failures, 2u);
        EXPECT_TRUE(document.Text() == Appended(printed));
    }

private:
    uint64_t now = 0;
};

} // namespace

TEST_F(RunFailureTest, AFailedReadIsMadeUpForByTheNextPoll) {
    const std::string printed = Repeated("0123456789 abcdefghij\r\n", 2000);
    const std::u16string expected = Appended(printed);
    const uint64_t failures = FailEachFileCall([&] {
        {
            const FailurePause pause;
            document->EmptyAndResetUndo();
            Print(*document, printed);
        }
        document->PollOutput();
        const bool complete = document.Text() == expected;
        const FailurePause pause;
        EXPECT_TRUE(IsRunning(*document));
        document->PollOutput();
        EXPECT_TRUE(document.Text() == expected);
        ExpectSound();
        return complete;
    });
    EXPECT_GE(failures, 2u);
}

TEST_F(RunFailureTest, AFailedReadAtTheEndIsMadeUpForToo) {
    ExpectAllDespite([](const auto& poll) { return FailEachFileCall(poll); });
}

TEST_F(RunFailureTest, WithoutMemoryTheNextPollTriesAgain) {
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    const std::string printed = Repeated("0123456789 abcdefghij\r\n", 2000);
    const std::u16string expected = Appended(printed);
    const uint64_t failures = FailEachAllocation([&] {
        {
            const FailurePause pause;
            document->EmptyAndResetUndo();
            Print(*document, printed);
        }
        document->PollOutput();
        const bool complete = document.Text() == expected;
        const FailurePause pause;
        EXPECT_TRUE(IsRunning(*document));
        EXPECT_TRUE(document.Text() == expected.substr(0, document->Length()));
        document->PollOutput();
        EXPECT_TRUE(document.Text() == expected);
        EXPECT_EQ(view->CaretOffset(), expected.size());
        ExpectSound();
        return complete;
    });
    EXPECT_GE(failures, 2u);
}

TEST_F(RunFailureTest, WithoutMemoryAtTheEndTheNextPollTriesAgain) {
    ExpectAllDespite([](const auto& poll) { return FailEachAllocation(poll); });
}

TEST_F(RunFailureTest, WhatCannotBeReadAtAllDoesNotKeepTheRun) {
    PrintAndPoll("shown");
    Print(*document, "not shown");
    Platform::SetFileFailureHook([] { return true; });
    for (int poll = 0; poll < 100; ++poll) document->PollOutput();
    EXPECT_TRUE(IsRunning(*document)) << "its process does";
    speaker.Give("end");
    EXPECT_TRUE(ProcessHasEnded(*document));
    for (int poll = 0; poll < 100; ++poll) document->PollOutput();
    Platform::SetFileFailureHook(nullptr);
    EXPECT_FALSE(IsRunning(*document));
    EXPECT_EQ(document.Text(), u"shown");
}

TEST_F(RunFailureTest, WithoutMemoryForGoodWhatWasShownStays) {
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    PrintAndPoll("shown");
    Print(*document, std::string(2 * ReadSize, 'x'));
    Heap::SetFailureHook([] { return true; });
    for (int poll = 0; poll < 100; ++poll) document->PollOutput();
    view->PutCaret(0, 2);
    Heap::SetFailureHook(nullptr);
    EXPECT_TRUE(IsRunning(*document)) << "its process does";
    EXPECT_EQ(view->CaretColumn(), 2u);
    speaker.Give("end");
    EXPECT_TRUE(ProcessHasEnded(*document));
    Heap::SetFailureHook([] { return true; });
    for (int poll = 0; poll < 100; ++poll) document->PollOutput();
    Heap::SetFailureHook(nullptr);
    EXPECT_FALSE(IsRunning(*document));
    EXPECT_EQ(document.Text(), u"shown");
    ExpectSound();
    ASSERT_TRUE(Run(*document, "say , and more\n"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"shown, and more");
}
