#include "app/CommandLanguage.h"
#include "app/CommandTable.h"
#include "base/Platform.h"
#include "core/app/FakeFrame.h"
#include "settings/IniFile.h"
#include "settings/Settings.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace {

class CommandTableTest : public ::testing::Test {
protected:
    void SetUp() override { LoadSettings(IniFile()); }
    void TearDown() override { ReleaseSettings(); }

    void Execute(const std::u16string& line) { ExecuteCommandLine(frame, line.c_str()); }
    Calls CallsOf(const std::u16string& line) {
        Execute(line);
        return frame.TakeCalls();
    }
    // The current directory as the program writes it.
    std::u16string Here() {
        WString directory;
        EXPECT_TRUE(Platform::CurrentDirectory(directory));
        return Str(directory);
    }

    FakeFrame frame;
    ScratchFolder folder;
};

TEST_F(CommandTableTest, HasTheTwentyRowsInOrder) {
    struct Expected {
        const Char* longName;
        const Char* shortName;
        uint32_t completion;
        uint32_t flags;
    };
    constexpr Expected expected[] = {
        {u"edit", u"e", 3, 0},           {u"cd", nullptr, 2, 3},        {u"pwd", nullptr, 0, 1},
        {u"setopt", nullptr, 1, 0},      {u"setengine", nullptr, 0, 0}, {u"file", u"f", 0, 1},
        {u"mkoutput", nullptr, 0, 0},    {u"editbin", u"eb", 3, 0},     {u"reloadoptions", nullptr, 0, 0},
        {u"line", u"l", 0, 0},           {u"bookmark", u"bm", 0, 1},    {u"console", nullptr, 0, 1},
        {u"cls", nullptr, 0, 1},         {u"opened", u"o", 0, 0},       {u"quit", u"q", 0, 0},
        {u"quit!", u"q!", 0, 0},         {u"run", nullptr, 3, 0},       {u"savesession", u"ss", 3, 0},
        {u"sessionfile", nullptr, 0, 0}, {u"#", nullptr, 0, 0},
    };
    ASSERT_EQ(std::size(expected), CommandCount);
    for (uint32_t i = 0; i < CommandCount; ++i) {
        SCOPED_TRACE(i + 1);
        EXPECT_EQ(Str(commandTable[i].longName), Str(expected[i].longName));
        EXPECT_EQ(Str(commandTable[i].shortName), Str(expected[i].shortName));
        EXPECT_EQ(static_cast<uint32_t>(commandTable[i].completion), expected[i].completion);
        EXPECT_EQ(commandTable[i].flags, expected[i].flags);
        EXPECT_NE(commandTable[i].handler, nullptr);
        EXPECT_EQ(FindCommand(expected[i].longName), &commandTable[i]);
        if (expected[i].shortName) {
            EXPECT_EQ(FindCommand(expected[i].shortName), &commandTable[i]);
        }
    }
}

TEST_F(CommandTableTest, HasRepeatInATableOfItsOwn) {
    ASSERT_EQ(AdditionalCommandCount, 1u);
    const CommandRow& repeat = additionalCommands[0];
    EXPECT_EQ(Str(repeat.longName), u"repeat");
    EXPECT_EQ(repeat.shortName, nullptr);
    EXPECT_EQ(repeat.completion, CompletionKind::Nothing);
    EXPECT_EQ(repeat.flags, 0u);
    EXPECT_EQ(FindCommand(u"repeat"), &repeat);
    EXPECT_EQ(CallsOf(u"!repeat 3"), Calls{u"external [repeat 3]"}) << "a program of that name";
}

TEST_F(CommandTableTest, FindsWordsByCaseAndAsAWhole) {
    for (const Char* word : {u"", u"Edit", u"EDIT", u"edi", u"edits", u"E", u"quit!!", u"##", u"\"edit\""})
        EXPECT_EQ(FindCommand(word), nullptr) << Str(word).size();
}

TEST_F(CommandTableTest, EditOpensItsArgumentAsText) {
    folder.Write("a.c", "");
    EXPECT_EQ(CallsOf(u"edit " + folder.Path("a.c")), Calls{u"text " + folder.Path("a.c")});
    EXPECT_EQ(CallsOf(u"e " + folder.Path("a.c")), Calls{u"text " + folder.Path("a.c")});
    EXPECT_EQ(CallsOf(u"edit"), Calls{});
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(CommandTableTest, EditAsksBeforeItCreates) {
    frame.answers = {Answer::Yes};
    EXPECT_EQ(CallsOf(u"edit " + folder.Path("none.c")), Calls{u"text " + folder.Path("none.c") + u" new"});
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, u"Create file " + folder.Path("none.c") + u"?");
}

// The flags column gives edit no StripQuotes: its opener removes the quotes and turns the slashes round.
TEST_F(CommandTableTest, QuotedForwardSlashArgumentOfEdit) {
    std::filesystem::create_directory(folder.File("dir"));
    folder.Write("dir/a b.txt", "");
    std::u16string typed = folder.Path("dir/a b.txt");
    for (Char& c : typed)
        if (c == u'\\') c = u'/';
    EXPECT_EQ(CallsOf(u"edit \"" + typed + u"\""), Calls{u"text " + folder.Path("dir") + u"\\a b.txt"});
}

TEST_F(CommandTableTest, CdWithoutArgumentAndPwdShowTheDirectoryAndKeepTheWindow) {
    for (const Char* line : {u"cd", u"cd  ", u"pwd", u"pwd ignored"}) {
        frame.commandText.clear();
        Execute(line);
        EXPECT_EQ(frame.commandText, Here()) << Str(line).size();
    }
    EXPECT_EQ(frame.hides, 0);
}

TEST_F(CommandTableTest, CdChangesTheDirectory) {
    const InDirectory scope(folder.File("."));
    std::filesystem::create_directory(folder.File("a b"));
    const std::u16string top = Here();
    Execute(u"cd \"a b\"");
    EXPECT_EQ(Here(), top + u"\\a b");
    Execute(u"cd ..");
    EXPECT_EQ(Here(), top);
    Execute(u"cd a b");
    EXPECT_EQ(Here(), top + u"\\a b");
    EXPECT_EQ(frame.commandText, u"(untouched)");
    EXPECT_EQ(frame.hides, 0);
}

TEST_F(CommandTableTest, AFailingCdIsSilent) {
    const std::u16string before = Here();
    EXPECT_EQ(CallsOf(u"cd " + folder.Path("missing")), Calls{});
    EXPECT_EQ(Here(), before);
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(CommandTableTest, SetoptSetsAndReappliesTheSettings) {
    EXPECT_EQ(CallsOf(u"setopt fontsize 14"), Calls{u"apply settings"});
    EXPECT_EQ(settings.FontSize, 14u);
    // What follows a further space is ignored, and a missing value is the empty one.
    EXPECT_EQ(CallsOf(u"setopt FontSize 15 16"), Calls{u"apply settings"});
    EXPECT_EQ(settings.FontSize, 15u);
    EXPECT_EQ(CallsOf(u"setopt NoSuchKey 1"), Calls{u"apply settings"});
    EXPECT_EQ(CallsOf(u"setopt KeywordFg #102030"), Calls{u"apply colours"});
    EXPECT_EQ(CallsOf(u"setopt KeywordFg #102030"), Calls{u"apply settings"}) << "it has that colour already";
    // A key that is not closed sets nothing, so that there is nothing to re-apply.
    for (const Char* line : {u"setopt", u"setopt FontSize", u"setopt \"FontSize 14"}) EXPECT_EQ(CallsOf(line), Calls{});
}

TEST_F(CommandTableTest, SetengineNamesTheEngineOfTheActiveDocument) {
    EXPECT_EQ(CallsOf(u"setengine My Engine"), Calls{u"engine My Engine"});
    EXPECT_EQ(CallsOf(u"setengine"), Calls{});
}

TEST_F(CommandTableTest, FileShowsTheActiveDocumentsName) {
    frame.activeName = u"C:\\src\\main.c";
    Execute(u"file ignored");
    EXPECT_EQ(frame.commandText, u"C:\\src\\main.c");
    frame.commandText = u"before";
    frame.hasPane = false;
    Execute(u"f");
    EXPECT_EQ(frame.commandText, u"before");
    EXPECT_EQ(frame.hides, 0);
}

TEST_F(CommandTableTest, CommandsThatOnlyPassOn) {
    EXPECT_EQ(CallsOf(u"mkoutput"), Calls{u"mark output"});
    EXPECT_EQ(CallsOf(u"reloadoptions"), Calls{u"reload options"});
    EXPECT_EQ(CallsOf(u"cls"), Calls{u"clear output"});
    EXPECT_EQ(CallsOf(u"# any text: edit x"), Calls{});
    EXPECT_EQ(CallsOf(u"#"), Calls{});
}

TEST_F(CommandTableTest, EditbinOpensBinaryWithoutAQuestion) {
    folder.Write("a.bin", "");
    EXPECT_EQ(CallsOf(u"editbin \"" + folder.Path("a.bin") + u"\""), Calls{u"binary " + folder.Path("a.bin")});
    frame.failingName = u"missing";
    EXPECT_EQ(CallsOf(u"eb " + folder.Path("missing")), Calls{u"binary " + folder.Path("missing")});
    EXPECT_EQ(CallsOf(u"eb missing"), Calls{u"binary missing"});
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(CommandTableTest, LineZeroDoesNothingAndLine5xGoesToLine5) {
    EXPECT_EQ(CallsOf(u"line 0"), Calls{});
    EXPECT_EQ(CallsOf(u"line 5x"), Calls{u"line 4"});
    EXPECT_EQ(CallsOf(u"l 120"), Calls{u"line 119"});
    EXPECT_EQ(CallsOf(u"line"), Calls{});
    EXPECT_EQ(CallsOf(u"line x"), Calls{});
    EXPECT_EQ(CallsOf(u"line -3"), Calls{});
    EXPECT_EQ(CallsOf(u"line 4294967296"), Calls{}); // wraps to 0
    EXPECT_EQ(CallsOf(u"line 4294967298"), Calls{u"line 1"});
}

TEST_F(CommandTableTest, BookmarkTakesALineOrTheCarets) {
    EXPECT_EQ(CallsOf(u"bookmark 3"), Calls{u"bookmark 2"});
    EXPECT_EQ(CallsOf(u"bm 1"), Calls{u"bookmark 0"});
    EXPECT_EQ(CallsOf(u"bm"), Calls{u"bookmark caret"});
    EXPECT_EQ(CallsOf(u"bm 0"), Calls{u"bookmark caret"});
    EXPECT_EQ(CallsOf(u"bm x"), Calls{u"bookmark caret"});
    EXPECT_EQ(frame.hides, 0);
}

TEST_F(CommandTableTest, RepeatPlaysTheMacroThatManyTimes) {
    EXPECT_EQ(CallsOf(u"repeat 1"), Calls{u"repeat 1"});
    EXPECT_EQ(CallsOf(u"repeat 49"), Calls{u"repeat 49"});
    EXPECT_EQ(CallsOf(u"repeat  007 "), Calls{u"repeat 7"});
    EXPECT_EQ(CallsOf(u"repeat 1000000"), Calls{u"repeat 1000000"});
    EXPECT_TRUE(frame.questions.empty());
    EXPECT_EQ(frame.hides, 4) << "the command window is left";
}

TEST_F(CommandTableTest, RepeatWantsANumberOfTimes) {
    for (const Char* line :
         {u"repeat", u"repeat 0", u"repeat -1", u"repeat +1", u"repeat x", u"repeat 5x", u"repeat 5 6", u"repeat 1.5",
          u"repeat 1000001", u"repeat 4294967298", u"repeat 18446744073709551617"}) {
        SCOPED_TRACE(testing::PrintToString(Str(line)));
        frame.questions.clear();
        EXPECT_EQ(CallsOf(line), Calls{});
        ASSERT_EQ(frame.questions.size(), 1u);
        EXPECT_EQ(frame.questions[0].text, u"Please specify a number from 1 to 1000000.");
        EXPECT_EQ(frame.questions[0].kind, MessageKind::Information);
    }
}

TEST_F(CommandTableTest, RepeatSaysWhyNothingIsPlayed) {
    frame.repeatResult = RepeatResult::IsEmpty;
    Execute(u"repeat 2");
    frame.repeatResult = RepeatResult::IsRecording;
    Execute(u"repeat 2");
    frame.repeatResult = RepeatResult::IsPlaying;
    Execute(u"repeat 2");
    ASSERT_EQ(frame.questions.size(), 2u) << "within a macro it does nothing";
    EXPECT_EQ(frame.questions[0].text, u"There is no macro to repeat.");
    EXPECT_EQ(frame.questions[1].text, u"A macro is being recorded.");
    EXPECT_EQ(frame.questions[1].kind, MessageKind::Information);
}

TEST_F(CommandTableTest, ConsoleSetsOrInvertsTheFlag) {
    EXPECT_FALSE(frame.commands.console);
    Execute(u"console");
    EXPECT_TRUE(frame.commands.console);
    Execute(u"console 7");
    EXPECT_TRUE(frame.commands.console);
    Execute(u"console 0");
    EXPECT_FALSE(frame.commands.console);
    Execute(u"console 1");
    EXPECT_TRUE(frame.commands.console);
    Execute(u"console off"); // no digits: 0
    EXPECT_FALSE(frame.commands.console);
}

TEST_F(CommandTableTest, OpenedListsNamesAndCaretLines) {
    frame.Add(FakeDocument::WithFile(u"C:\\a.c")).view.caretLine = 41;
    frame.Add(FakeDocument::WithFile(u"C:\\b.bin")).binary = true;
    frame.Add(FakeDocument::WithTitle(u"Untitled1"));
    const Calls expected = {u"output C:\\a.c(42)\nC:\\b.binUntitled1(1)\n"};
    EXPECT_EQ(CallsOf(u"opened"), expected);
    EXPECT_EQ(CallsOf(u"o"), expected);
}

TEST_F(CommandTableTest, QuitAndQuitNowAreDifferentCommands) {
    EXPECT_EQ(CallsOf(u"quit"), Calls{u"close"});
    EXPECT_EQ(CallsOf(u"q"), Calls{u"close"});
    EXPECT_EQ(CallsOf(u"quit!"), Calls{u"quit now"});
    EXPECT_EQ(CallsOf(u"q!"), Calls{u"quit now"});
    EXPECT_EQ(CallsOf(u"Quit"), Calls{u"external [Quit]"});
}

TEST_F(CommandTableTest, SavesessionWithoutAnyNameAsksForOne) {
    Execute(u"savesession");
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, u"Please specify a filename.");
    EXPECT_EQ(frame.questions[0].kind, MessageKind::Information);
}

TEST_F(CommandTableTest, SavesessionToANameDoesNotSetTheSessionFile) {
    const std::u16string file = folder.Path("x.ses");
    Execute(u"savesession \"" + file + u"\"");
    EXPECT_EQ(folder.Read("x.ses"), "sessionfile\r\n");
    Execute(u"ss");
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, u"Please specify a filename.");
}

TEST_F(CommandTableTest, SessionfileTakesTheRunningScriptsName) {
    ASSERT_TRUE(frame.commands.sessionFile.Assign(u"before"));
    Execute(u"sessionfile"); // no script has run
    EXPECT_EQ(Str(frame.commands.sessionFile), u"before");
    const std::u16string file = folder.Write("s.ses", "sessionfile\r\n");
    Execute(u"run " + file);
    EXPECT_EQ(Str(frame.commands.sessionFile), file);
    Execute(u"run");
    EXPECT_EQ(Str(frame.commands.runningScript), file);
    // A bare savesession now writes back to it without a question.
    frame.Add(FakeDocument::WithFile(u"C:\\a")).sessionText = u"e C:\\a\r\n";
    Execute(u"savesession");
    EXPECT_EQ(folder.Read("s.ses"), "sessionfile\r\ne C:\\a\r\n");
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(CommandTableTest, SurvivesEveryAllocationFailure) {
    const std::u16string script = folder.Write("s", "sessionfile\r\ncd \"missing directory\"\r\nopened\r\n");
    const uint64_t failures = FailEachAllocation([&] {
        FakeFrame fresh;
        ExecuteCommandLine(fresh, (u"run " + script).c_str());
        const FailurePause pause;
        EXPECT_EQ(fresh.commands.scriptDepth, 0u);
        EXPECT_EQ(fresh.batchDepth, 0);
        return Str(fresh.commands.sessionFile) == script && fresh.calls == Calls{u"output "};
    });
    EXPECT_GT(failures, 5u);
}

} // namespace
