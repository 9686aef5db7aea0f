// Every word of the command table while each allocation fails in turn.

#include "app/CommandLanguage.h"
#include "app/CommandTable.h"
#include "core/app/FakeFrame.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/FailureInjection.h"
#include "support/NoRecoveryFolder.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <iterator>
#include <memory>

namespace {

class CommandFailureTest : public ::testing::Test {
protected:
    CommandFailureTest() {
        folder.Write("a.c", "");
        folder.Write("script", "line 3\r\n");
    }
    ~CommandFailureTest() override { ReleaseSettings(); }

    // All that a command can change.
    struct State {
        Calls calls;
        std::u16string commandText, sessionFile;
        std::filesystem::path directory;
        std::string session;
        uint32_t fontSize = 0;
        bool console = false;
        bool operator==(const State&) const = default;
    };
    State Now() {
        const CommandState& state = frame->commands;
        return {frame->calls,           frame->commandText, Str(state.sessionFile), std::filesystem::current_path(),
                folder.Read("session"), settings.FontSize,  state.console};
    }
    void Prepare() {
        LoadSettings(IniFile());
        folder.Write("session", "old");
        std::filesystem::current_path(folder.File(""));
        frame = std::make_unique<FakeFrame>();
        frame->defaultAnswer = Answer::Yes;
        FakeDocument& document = frame->Add(FakeDocument::WithFile(folder.Path("a.c")));
        document.sessionText = u"e a.c\r\n";
        frame->activeName = folder.Path("a.c");
        EXPECT_TRUE(frame->commands.runningScript.Assign(folder.Path("script").c_str()));
    }
    // What it does, it does as a whole or not at all.
    uint64_t FailInTurn(const std::u16string& line) {
        Prepare();
        const State before = Now();
        ExecuteCommandLine(*frame, line.c_str());
        const State after = Now();
        return FailEachAllocation([&] {
            {
                const FailurePause pause;
                Prepare();
            }
            ExecuteCommandLine(*frame, line.c_str());
            const FailurePause pause;
            const State now = Now();
            EXPECT_TRUE(now == before || now == after);
            EXPECT_EQ(frame->documents.Count(), 1u);
            EXPECT_EQ(frame->batchDepth, 0);
            EXPECT_EQ(frame->commands.scriptDepth, 0u);
            EXPECT_FALSE(frame->commands.scriptsCancelled);
            return now == after;
        });
    }

    ScratchFolder folder;
    InDirectory back{folder.File("")};
    std::unique_ptr<FakeFrame> frame;
};

TEST_F(CommandFailureTest, EveryWordOfTheTable) {
    const NoRecoveryFolder withoutCopies;
    const std::u16string file = folder.Path("a.c");
    // In the order of the table.
    const std::u16string arguments[] = {file,
                                        folder.Path(""),
                                        u"",
                                        u"FontSize 31",
                                        u"c",
                                        u"",
                                        u"",
                                        file,
                                        u"",
                                        u"7",
                                        u"8",
                                        u"1",
                                        u"",
                                        u"",
                                        u"",
                                        u"",
                                        folder.Path("script"),
                                        folder.Path("session"),
                                        u"",
                                        u"words"};
    ASSERT_EQ(std::size(arguments), CommandCount);
    uint64_t failures = 0;
    for (uint32_t i = 0; i < CommandCount; ++i) {
        const std::u16string word = commandTable[i].longName;
        SCOPED_TRACE(i);
        const uint64_t ofWord = FailInTurn(word + u" " + arguments[i]);
        EXPECT_GT(ofWord, 0u);
        failures += ofWord;
    }
    for (const CommandRow& row : additionalCommands) failures += FailInTurn(row.longName + std::u16string(u" 3"));
    failures += FailInTurn(u"an external command");
    failures += FailInTurn(u"setopt QuickOpenPath .;include");
    EXPECT_GT(failures, 60u);
}

} // namespace
