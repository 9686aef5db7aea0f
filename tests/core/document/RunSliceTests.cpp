// Output that takes longer to read than a poll may hold the thread.

#include "core/document/RunAppendTest.h"

namespace {

// While it lives, every call on a file takes longer than a slice of a poll may.
struct SlowReads {
    SlowReads() {
        Platform::SetFileFailureHook([] {
            const uint64_t until = Platform::Ticks() + 60;
            while (Platform::Ticks() < until) {
            }
            return false;
        });
    }
    ~SlowReads() { Platform::SetFileFailureHook(nullptr); }
};

} // namespace

TEST_F(AppendTest, OutputThatTakesLongComesInSlices) {
    const std::string printed = Repeated("0123456789 abcdefghij\r\n", 2000);
    const std::u16string expected = Appended(printed);
    Print(*document, printed);
    const SlowReads slow;
    for (size_t read = ReadSize; read < printed.size(); read += ReadSize) {
        document->PollOutput();
        EXPECT_LT(timers[&*document], 250u) << "while there is more to read";
        EXPECT_TRUE(document.Store() == Appended(printed.substr(0, read)));
        ExpectSound();
    }
    document->PollOutput();
    EXPECT_EQ(timers[&*document], 250u);
    EXPECT_TRUE(document.Store() == expected);
}

TEST_F(AppendTest, TheRunDoesNotEndBeforeItsLastSlice) {
    const std::string printed = Repeated("0123456789 abcdefghij\r\n", 2000);
    Print(*document, printed);
    speaker.Give("end");
    ASSERT_TRUE(ProcessHasEnded(*document));
    const SlowReads slow;
    document->PollOutput();
    EXPECT_TRUE(IsRunning(*document));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_TRUE(document.Store() == Appended(printed));
}

TEST_F(AppendTest, WhatIsPrintedDuringTheSlicesIsShownToo) {
    Print(*document, std::string(ReadSize * 2, 'a'));
    {
        const SlowReads slow;
        document->PollOutput();
    }
    Print(*document, "b");
    speaker.Give("end");
    ASSERT_TRUE(ProcessHasEnded(*document));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document->Length(), ReadSize * 2 + 1);
}

TEST_F(AppendTest, WhatChildrenGoOnPrintingDoesNotKeepTheRun) {
    const std::string printed(ReadSize * 2, 'a');
    Print(*document, printed);
    speaker.Give("end");
    ASSERT_TRUE(ProcessHasEnded(*document));
    const SlowReads slow;
    for (int slice = 0; slice < 10 && IsRunning(*document); ++slice) {
        document->PollOutput();
        if (IsRunning(*document)) Print(*document, printed);
    }
    EXPECT_FALSE(IsRunning(*document));
    EXPECT_EQ(document->Length(), 2 * printed.size()) << "there is one look after the end was seen";
}

TEST_F(AppendTest, WithoutAnotherTimerTheSlicesComeWithTheOldOne) {
    Print(*document, std::string(ReadSize * 2, 'a'));
    {
        const SlowReads slow;
        timerFails = true;
        document->PollOutput();
        EXPECT_EQ(timers[&*document], 250u);
        timerFails = false;
        document->PollOutput();
    }
    EXPECT_EQ(timers[&*document], 250u);
    EXPECT_EQ(document->Length(), ReadSize * 2);
}
