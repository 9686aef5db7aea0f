#include "app/OutputDocuments.h"
#include "app/ToolRunner.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "document/TextBuffer.h"
#include "settings/ToolList.h"
#include "support/IdlePollTimer.h"
#include "support/Speaker.h"

namespace {

class FakeStarter final : public ToolStarter {
public:
    bool AskArguments(ToolRecord& tool) override {
        ++asked;
        return confirms && tool.lastArgs.Assign(u"typed");
    }
    void StartDetached(WString& commandLine, const WString& directory) override {
        started.push_back(Str(commandLine) + u" in " + Str(directory));
    }

    bool confirms = true;
    int asked = 0;
    std::vector<std::u16string> started;
};

class ToolRunnerTest : public PaneDocumentsTest {
protected:
    void SetUp() override {
        frame.activeName = u"C:\\work\\a.c";
        ASSERT_TRUE(tool.command.Assign(u"cc %FILE%") && tool.startDir.Assign(u"%DIR%"));
        // Nothing is polled but by the test.
        static IdlePollTimer idle;
        services.text.timer = &idle;
    }
    TextBuffer& Output() const { return static_cast<TextBuffer&>(*documents.At(documents.Count() - 1)); }
    std::u16string Text() const { return {Output().Content(), Output().Length()}; }

    FakeFrame frame;
    FakeStarter starter;
    OutputDocuments outputs{services.text, documents, display, panes};
    ToolRunner runner{frame, outputs, starter};
    ToolRecord tool;
    SpeakerScripts speaker;
};

TEST_F(ToolRunnerTest, ADetachedToolIsStartedWithItsVariablesReplaced) {
    runner.Run(tool);
    EXPECT_EQ(starter.started, (Calls{u"cc a.c  in C:\\work"})); // and the space before no arguments
    EXPECT_EQ(starter.asked, 0);
    EXPECT_TRUE(documents.IsEmpty());
}

TEST_F(ToolRunnerTest, ArgumentsAreAskedForAndACancelledDialogStartsNothing) {
    tool.promptArgs = 1;
    starter.confirms = false;
    runner.Run(tool);
    EXPECT_TRUE(starter.started.empty());
    starter.confirms = true;
    runner.Run(tool);
    EXPECT_EQ(starter.started, (Calls{u"cc a.c typed in C:\\work"}));
}

TEST_F(ToolRunnerTest, ARedirectedToolIsNotDetached) {
    tool.redirectOutput = 1;
    panes.makesPanes = false; // nothing to show the output in, and so nothing is run
    runner.Run(tool);
    EXPECT_TRUE(starter.started.empty());
    EXPECT_FALSE(runner.RunCaptured(u"cc", u""));
}

TEST_F(ToolRunnerTest, WhereTheInterpreterCannotRunNothingIsStartedAndThatIsReported) {
    tool.redirectOutput = 1;
    for (const bool console : {false, true})
        for (const Char* directory : {u"\\\\server\\share", u"\\\\?\\C:\\work"}) {
            frame.commands.console = console;
            frame.questions.clear();
            ASSERT_TRUE(tool.startDir.Assign(directory));
            runner.Run(tool);
            ASSERT_EQ(frame.questions.size(), 1u);
            EXPECT_EQ(frame.questions[0].text,
                      u"The command interpreter cannot run in this directory: " + Str(directory));
            EXPECT_EQ(frame.questions[0].kind, MessageKind::Warning);
            EXPECT_TRUE(documents.IsEmpty());
        }
}

TEST_F(ToolRunnerTest, ABlankCommandIsNotRun) {
    for (const Char* command : {u"", u" \t"}) EXPECT_FALSE(runner.RunCaptured(command, u""));
    EXPECT_TRUE(documents.IsEmpty());
}

TEST_F(ToolRunnerTest, ACommandThatStillRunsSaysSoAndItsOutputIsLeftAlone) {
    const std::u16string command = speaker.Command(speaker.WaitFor("end"));
    for (const bool console : {false, true}) {
        frame.commands.console = console;
        frame.questions.clear();
        ASSERT_TRUE(runner.RunCaptured(command.c_str(), u"/"));
        std::u16string soFar = u"so far";
        ASSERT_TRUE(Output().AppendOutputText(soFar.data()));
        EXPECT_FALSE(runner.RunCaptured(command.c_str(), u"/"));
        ASSERT_EQ(frame.questions.size(), 1u);
        EXPECT_EQ(frame.questions[0].text, console ? u"A command is still running in the document Output."
                                                   : u"This command is still running: " + command);
        EXPECT_EQ(Text(), u"so far");
        EXPECT_TRUE(Output().Output().IsRunning());
    }
    EXPECT_EQ(documents.Count(), 2u);
    speaker.Give("end");
    for (const uint32_t i : {0u, 1u}) {
        auto& ended = static_cast<TextBuffer&>(*documents.At(i));
        EXPECT_TRUE(SpeakerScripts::Eventually([&] { return (ended.PollOutput(), !ended.Output().IsRunning()); }));
    }
    EXPECT_TRUE(runner.RunCaptured(command.c_str(), u"/"));
    EXPECT_TRUE(SpeakerScripts::Eventually([&] { return (Output().PollOutput(), !Output().Output().IsRunning()); }));
}

TEST_F(ToolRunnerTest, ARunThatCannotStartSaysWhyInItsDocument) {
    const std::u16string nowhere = speaker.Folder().Path("nowhere");
    const std::u16string failed = u"Failed starting command: make all\nThe command interpreter cannot be started";
    EXPECT_FALSE(runner.RunCaptured(u"make all", nowhere.c_str()));
    EXPECT_TRUE(Text().starts_with(failed)) << testing::PrintToString(Text());
    EXPECT_TRUE(Text().ends_with(u".\n"));
    frame.commands.console = true;
    EXPECT_FALSE(runner.RunCaptured(u"make all", nowhere.c_str()));
    EXPECT_TRUE(Text().starts_with(failed));
    // After what the document shows, in a line of its own.
    std::u16string before = u"before";
    Output().EmptyAndResetUndo();
    ASSERT_TRUE(Output().AppendOutputText(before.data()));
    EXPECT_FALSE(runner.RunCaptured(u"make all", nowhere.c_str()));
    EXPECT_TRUE(Text().starts_with(u"before\n" + failed));
    EXPECT_TRUE(frame.questions.empty());
    EXPECT_EQ(documents.Count(), 2u);
}

// A command that goes on until it is ended.
class StopToolTest : public ToolRunnerTest {
protected:
    void Run() {
        ASSERT_TRUE(runner.RunCaptured((speaker.Command(speaker.WaitFor("end"))).c_str(), u""));
        ASSERT_TRUE(IsRunning());
    }
    bool IsRunning() const { return Output().Output().IsRunning(); }
    bool PollToTheEnd() {
        return SpeakerScripts::Eventually([this] { return (Output().PollOutput(), !IsRunning()); });
    }
};

TEST_F(StopToolTest, TheFirstStopAsksNobodyAndEndsNothing) {
    Run();
    runner.Stop(Output());
    EXPECT_TRUE(frame.questions.empty());
    EXPECT_TRUE(IsRunning());
    speaker.Give("end");
    EXPECT_TRUE(PollToTheEnd());
}

TEST_F(StopToolTest, TheSecondStopAsksWhetherToEndIt) {
    Run();
    runner.Stop(Output());
    frame.answers = {Answer::No};
    runner.Stop(Output());
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text,
              Str(Output().GetName()) + u" is still running.\nEnd it with everything it has started?");
    EXPECT_EQ(frame.questions[0].kind, MessageKind::YesNo);
    EXPECT_TRUE(IsRunning());
    frame.answers = {Answer::Yes};
    runner.Stop(Output());
    EXPECT_TRUE(PollToTheEnd());
}

TEST_F(StopToolTest, ANewRunIsNotEndedByAnOldQuestion) {
    Run();
    runner.Stop(Output());
    frame.answers = {Answer::Yes};
    frame.whileAsking = [this] {
        speaker.Give("end");
        EXPECT_TRUE(PollToTheEnd());
        std::filesystem::remove(speaker.File("end"));
        EXPECT_TRUE(Output().RunCommand(speaker.Command(speaker.WaitFor("end")).c_str(), u""));
    };
    runner.Stop(Output());
    frame.whileAsking = nullptr;
    EXPECT_EQ(frame.questions.size(), 1u);
    EXPECT_TRUE(IsRunning());
    speaker.Give("end");
    EXPECT_TRUE(PollToTheEnd());
}

} // namespace
