// Starting, polling and ending a command that runs into a document.

#include "core/document/RunSupport.h"

#include "support/FailureInjection.h"

#include <optional>

namespace {

// Puts something in front of every n-th call on a file.
struct FileCallSpy {
    static inline uint32_t calls;
    static inline uint32_t watched;
    static inline void (*action)();

    FileCallSpy(uint32_t number, void (*during)()) {
        calls = 0;
        watched = number;
        action = during;
        Platform::SetFileFailureHook([] {
            if (++calls == watched) action();
            return false;
        });
    }
    ~FileCallSpy() { Platform::SetFileFailureHook(nullptr); }
};

// What a run that prints "more" leaves, or one that could not be started.
void ExpectRunOfMore(TextDocument& document, bool started) {
    EXPECT_EQ(RunTest::timers.count(&*document), started ? 1u : 0u);
    bool running = false;
    EXPECT_EQ(document->GetOutputState(running) && running, started);
    EXPECT_TRUE(SpeakerScripts::Eventually([&] {
        document->PollOutput();
        return !document->GetOutputState(running) || !running;
    }));
    EXPECT_EQ(document.Text(), started ? u"textmore" : u"text");
}

constexpr uint32_t ReadCall = 2; // of a poll; the first one asks for the size

} // namespace

TEST_F(RunTest, ShowsWhatTheCommandPrints) {
    TextDocument document;
    ASSERT_TRUE(Run(*document, "say one\\r\\ntwo\\r\\n\nsay three\n"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"one\ntwo\nthree");
    EXPECT_EQ(document->GetLineCount(), 3u);
    EXPECT_FALSE(document->IsModified());
}

TEST_F(RunTest, RunsUnderTheInterpreterInTheDirectory) {
    TextDocument document;
    const std::u16string command = speaker.Command("where\n") + u" first && echo second";
    ASSERT_TRUE(document->RunCommand(command.c_str(), Directory().c_str()));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), Directory() + u"\nfirst\nsecond\n");
}

TEST_F(RunTest, NoCommandRunsTheInterpreterAlone) {
    TextDocument document;
    ASSERT_TRUE(document->RunCommand(nullptr, Directory().c_str()));
    EXPECT_TRUE(PollToTheEnd(*document));
}

TEST_F(RunTest, CollectsStandardErrorAsWell) {
    TextDocument document;
    ASSERT_TRUE(document->RunCommand(u"echo told 1>&2", Directory().c_str()));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text().substr(0, 4), u"told");
}

TEST_F(RunTest, ACommandThatReadsItsInputGoesOnAtOnce) {
    TextDocument document;
    ASSERT_TRUE(Run(*document, "say before,\nread\nsay , after\n"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"before,no input, after");
}

TEST_F(RunTest, TheInputOfACommandIsTheFileOfItsOutput) {
    TextDocument document;
    ASSERT_TRUE(Run(*document, "say one\nfeed two\nsay three\n"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"onetwothree");
}

#ifndef _WIN32
// A limit on the size of its file is to a command what a full disk is: its own writing fails.
TEST_F(RunTest, WhatCameBeforeTheDiskWasFullIsShown) {
    TextDocument document;
    const std::u16string command = u"trap '' XFSZ; ulimit -f 16; " + speaker.Command("repeat 100000 x\nsay y\n");
    ASSERT_TRUE(document->RunCommand(command.c_str(), Directory().c_str()));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), std::u16string(16 * 512, u'x'));
    ASSERT_TRUE(Run(*document, "say z\n"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text().substr(16 * 512), u"z");
}
#endif

TEST_F(RunTest, MakesTheDocumentAnOutputDocumentForGood) {
    TextDocument document;
    ASSERT_TRUE(Run(*document, "say text"));
    EXPECT_TRUE(document->IsOutput());
    EXPECT_TRUE(document->IsReadOnly());
    EXPECT_TRUE(IsRunning(*document));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_TRUE(document->IsOutput());
    EXPECT_TRUE(document->IsReadOnly());
    EXPECT_FALSE(IsRunning(*document));
}

TEST_F(RunTest, TypingIntoAnOutputDocumentChangesNothing) {
    TextDocument document;
    FakeView* view = FakeView::Create(*document);
    ASSERT_TRUE(Run(*document, "say ab"));
    ASSERT_TRUE(PollToTheEnd(*document));
    view->Activate();
    EXPECT_TRUE(document->TypeChar(view, u'x', 1, true, false));
    EXPECT_TRUE(document->NewLine(view, 1));
    EXPECT_TRUE(document->InsertText(0, u"y", 1));
    EXPECT_TRUE(document->DeleteText({0, 1}));
    EXPECT_EQ(document.Text(), u"ab");
    EXPECT_FALSE(document->HasPendingEdit());
}

TEST_F(RunTest, WhatWasTypedBeforeIsKept) {
    TextDocument document(u"one\ntwo");
    FakeView* view = FakeView::Create(*document);
    view->Activate();
    ASSERT_TRUE(document->TypeChar(view, u'x', 0, true, false));
    ASSERT_TRUE(Run(*document, "say  three"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Store(), u"xone\ntwo three");
}

TEST_F(RunTest, ASecondCommandWhileOneRunsIsRefusedAndChangesNothing) {
    TextDocument document;
    ASSERT_TRUE(Run(*document, "say first\n" + speaker.WaitFor("go") + "say last"));
    ASSERT_TRUE(PollUntil(*document, [&] { return document.Text() == u"first"; }));
    const void* process = TextBufferProbe::Run(*document).process;
    EXPECT_FALSE(Run(*document, "say second"));
    EXPECT_EQ(TextBufferProbe::Run(*document).process, process);
    EXPECT_EQ(timers[&*document], 250u);
    speaker.Give("go");
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"firstlast");
}

TEST_F(RunTest, AnotherCommandMayRunAfterTheFirstAndAppends) {
    TextDocument document;
    ASSERT_TRUE(Run(*document, "say one"));
    ASSERT_TRUE(PollToTheEnd(*document));
    ASSERT_TRUE(Run(*document, "say two"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"onetwo");
}

TEST_F(RunTest, TellsTheFirstViewWhenItStartsAndEnds) {
    TextDocument document;
    FakeView* first = FakeView::Create(*document);
    FakeView* second = FakeView::Create(*document);
    ASSERT_TRUE(Run(*document, ""));
    EXPECT_EQ(first->runStates, std::vector<bool>({true}));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(first->runStates, std::vector<bool>({true, false}));
    EXPECT_TRUE(second->runStates.empty());
}

TEST_F(RunTest, PollsEvery250MillisecondsUntilTheEnd) {
    TextDocument document;
    ASSERT_TRUE(RunSilently(*document));
    EXPECT_EQ(timers[&*document], 250u);
    document->PollOutput();
    EXPECT_EQ(timers[&*document], 250u);
    speaker.Give("end");
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_TRUE(timers.empty());
}

TEST_F(RunTest, KeepsTheStartDirectory) {
    TextDocument document;
    ASSERT_TRUE(Run(*document, ""));
    EXPECT_EQ(std::u16string(TextBufferProbe::Run(*document).startDir.Text()), Directory());
    ASSERT_TRUE(PollToTheEnd(*document));
}

TEST_F(RunTest, ACommandThatCannotStartLeavesNoTrace) {
    TextDocument document(u"text");
    FakeView* view = FakeView::Create(*document);
    const std::u16string nowhere = speaker.Folder().Path("nowhere");
    EXPECT_FALSE(document->RunCommand(u"echo x", nowhere.c_str()));
    EXPECT_FALSE(IsRunning(*document));
    EXPECT_TRUE(timers.empty());
    EXPECT_EQ(view->runStates, std::vector<bool>({false}));
    const OutputRun& run = TextBufferProbe::Run(*document);
    EXPECT_EQ(run.outputRead, -1);
    EXPECT_EQ(run.outputWrite, -1);
    EXPECT_EQ(run.readBuffer, nullptr);
    document->PollOutput();
    EXPECT_EQ(document.Text(), u"text");
    EXPECT_TRUE(Run(*document, "say more"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"textmore");
}

// The document is one for output before the process is started.
TEST_F(RunTest, ADocumentWhoseCommandCannotStartIsForOutputAllTheSame) {
    TextDocument document(u"text");
    const std::u16string nowhere = speaker.Folder().Path("nowhere");
    EXPECT_FALSE(document->RunCommand(u"echo x", nowhere.c_str()));
    EXPECT_TRUE(document->IsOutput());
    EXPECT_TRUE(document->IsReadOnly());
}

TEST_F(RunTest, WithoutATimerThereIsNoRun) {
    TextDocument document;
    timerFails = true;
    EXPECT_FALSE(RunSilently(*document));
    EXPECT_FALSE(IsRunning(*document));
    EXPECT_EQ(TextBufferProbe::Run(*document).outputRead, -1);
}

TEST_F(RunTest, FailingAllocationsFailTheStart) {
    const std::u16string command = speaker.Command("say more");
    const std::u16string directory = Directory();
    const uint64_t failures = FailEachAllocation([&] {
        std::optional<FailurePause> pause(std::in_place);
        TextDocument document(u"text");
        pause.reset();
        const bool started = document->RunCommand(command.c_str(), directory.c_str());
        pause.emplace();
        ExpectRunOfMore(document, started);
        return started;
    });
    EXPECT_GE(failures, 2u);
}

TEST_F(RunTest, FailingFileCallsFailTheStart) {
    std::u16string reason;
    const uint64_t failures = FailEachFileCall([&] {
        TextDocument document(u"text");
        const bool started = Run(*document, "say more");
        const FailurePause pause;
        if (!started) reason = document->Output().Failure();
        EXPECT_EQ(document->IsOutput(), started);
        ExpectRunOfMore(document, started);
        return started;
    });
    EXPECT_EQ(failures, 3u); // both sides of the file, and the room on its disk
    EXPECT_EQ(reason, u"The disk that its output would go to is full.");
}

TEST_F(RunTest, WhatIsPrintedBetweenTheLastReadAndTheEndIsNotShown) {
    static TextBuffer* polled;
    static SpeakerScripts* told;
    TextDocument document;
    ASSERT_TRUE(RunSilently(*document));
    Print(*document, "shown");
    polled = &*document;
    told = &speaker;
    {
        const FileCallSpy spy(ReadCall, [] {
            Print(*polled, "not shown");
            told->Give("end");
            EXPECT_TRUE(
                SpeakerScripts::Eventually([] { return CommandProcess::HasEnded(TextBufferProbe::Run(*polled)); }));
        });
        document->PollOutput();
    }
    EXPECT_FALSE(IsRunning(*document));
    EXPECT_EQ(document.Text(), u"shown");
}

TEST_F(RunTest, WhatIsPrintedBeforeTheEndOfTheSlicesIsShown) {
    static TextBuffer* polled;
    static SpeakerScripts* told;
    TextDocument document;
    ASSERT_TRUE(RunSilently(*document));
    Print(*document, std::string(50'000, 'a'));
    {
        const FileCallSpy slow(ReadCall, [] {
            const uint64_t until = Platform::Ticks() + 60;
            while (Platform::Ticks() < until) {
            }
        });
        document->PollOutput();
        ASSERT_LT(document->Length(), 50'000u) << "there is a slice to come";
    }
    polled = &*document;
    told = &speaker;
    {
        const FileCallSpy spy(ReadCall, [] {
            Print(*polled, "end");
            told->Give("end");
            EXPECT_TRUE(
                SpeakerScripts::Eventually([] { return CommandProcess::HasEnded(TextBufferProbe::Run(*polled)); }));
        });
        document->PollOutput();
    }
    EXPECT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), std::u16string(50'000, u'a') + u"end");
}

TEST_F(RunTest, WhatIsPrintedWhileAPollReadsComesWithTheNext) {
    static TextBuffer* polled;
    TextDocument document;
    ASSERT_TRUE(RunSilently(*document));
    Print(*document, "one");
    polled = &*document;
    {
        const FileCallSpy spy(ReadCall, [] { Print(*polled, "two"); });
        document->PollOutput();
    }
    EXPECT_EQ(document.Text(), u"one");
    document->PollOutput();
    EXPECT_EQ(document.Text(), u"onetwo");
}

TEST_F(RunTest, WhatWasPrintedBeforeTheEndIsShownByThePollThatSeesIt) {
    TextDocument document;
    ASSERT_TRUE(Run(*document, "repeat 1000 0123456789\\n\n"));
    ASSERT_TRUE(ProcessHasEnded(*document));
    document->PollOutput();
    EXPECT_FALSE(IsRunning(*document));
    EXPECT_EQ(document->Length(), 11000u);
    EXPECT_EQ(document->GetLineCount(), 1001u);
}

TEST_F(RunTest, ReleasingTheDocumentStopsTheRun) {
    {
        TextDocument document;
        FakeView::Create(*document);
        ASSERT_TRUE(RunSilently(*document));
        EXPECT_EQ(timers.size(), 1u);
    }
    EXPECT_TRUE(timers.empty());
    EXPECT_EQ(FakeView::alive, 0);
}

TEST_F(RunTest, ClearingTheDocumentStopsTheRun) {
    TextDocument document;
    FakeView* view = FakeView::Create(*document);
    ASSERT_TRUE(RunSilently(*document));
    ASSERT_TRUE(document->MakeNew(u"new.txt"));
    EXPECT_FALSE(IsRunning(*document));
    EXPECT_TRUE(timers.empty());
    EXPECT_EQ(view->runStates, std::vector<bool>({true, false}));
    document->PollOutput();
    EXPECT_EQ(document.Text(), u"");
}

TEST_F(RunTest, EmptyingTheDocumentDoesNotStopTheRun) {
    TextDocument document;
    FakeView* view = FakeView::Create(*document);
    ASSERT_TRUE(RunSilently(*document));
    Print(*document, "old\nold\nold");
    document->PollOutput();
    document->EmptyAndResetUndo();
    EXPECT_TRUE(IsRunning(*document));
    for (const char* line : {"new\nnew", "er", "\n"}) {
        Print(*document, line);
        document->PollOutput();
        EXPECT_EQ(view->CaretOffset(), document->Length()) << "it follows again";
    }
    EXPECT_EQ(document.Text(), u"new\nnewer\n");
    EXPECT_EQ(document->GetLineCount(), 3u);
}

TEST_F(RunTest, ACommandThatClosesItsOutputAndLivesOnIsWaitedFor) {
    TextDocument document;
    ASSERT_TRUE(Run(*document, "say text\nclose\n" + speaker.Tell("closed") + speaker.WaitFor("end")));
    ASSERT_TRUE(speaker.Got("closed"));
    document->PollOutput();
    EXPECT_EQ(document.Text(), u"text");
    EXPECT_TRUE(IsRunning(*document));
    speaker.Give("end");
    EXPECT_TRUE(PollToTheEnd(*document));
}

TEST_F(RunTest, AChildThatOutlivesTheCommandIsNotWaitedFor) {
    TextDocument document;
    speaker.Folder().Write("child", "say child\n" + speaker.Tell("born") + speaker.WaitFor("end"));
    ASSERT_TRUE(Run(*document, "child " + speaker.File("child") + "\n" + speaker.WaitFor("born") + "say parent"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"childparent");
    // Its file goes on being written without harm.
    ASSERT_TRUE(Run(*document, "say .again"));
    ASSERT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"childparent.again");
}

TEST_F(RunTest, StoppingWithoutACommandDoesNothing) {
    TextDocument document(u"text");
    document->StopProcess();
    ASSERT_TRUE(RunSilently(*document));
    document->StopProcess();
    EXPECT_TRUE(IsRunning(*document));
    speaker.Give("end");
    EXPECT_TRUE(PollToTheEnd(*document));
    EXPECT_EQ(document.Text(), u"text");
}
