#include "app/OutputDocuments.h"
#include "app/ToolRunner.h"
#include "core/app/FakeFrame.h"
#include "core/app/FakePanes.h"
#include "settings/ToolList.h"

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
        PaneDocumentsTest::SetUp();
        frame.activeName = u"C:\\work\\a.c";
        ASSERT_TRUE(tool.command.Assign(u"cc %FILE%") && tool.startDir.Assign(u"%DIR%"));
    }

    FakeFrame frame;
    FakeStarter starter;
    OutputDocuments outputs{documents, display, panes};
    ToolRunner runner{frame, outputs, starter};
    ToolRecord tool;
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

} // namespace
