#include "app/CommandLanguage.h"
#include "core/app/FakeFrame.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"
#include "support/WithAdditional.h"

#include <gtest/gtest.h>

namespace {

struct Split {
    std::u16string word;
    std::u16string argument;
    bool operator==(const Split&) const = default;
};

Split SplitOf(const std::u16string& line) {
    WString word;
    const Char* argument = nullptr;
    EXPECT_TRUE(SplitCommand(line.c_str(), word, argument));
    return {Str(word), Str(argument)};
}

TEST(SplitCommand, CutsAtTheFirstBlank) {
    EXPECT_EQ(SplitOf(u"edit a.c"), (Split{u"edit", u"a.c"}));
    EXPECT_EQ(SplitOf(u"edit\ta.c"), (Split{u"edit", u"a.c"}));
    EXPECT_EQ(SplitOf(u"edit"), (Split{u"edit", u""}));
    EXPECT_EQ(SplitOf(u""), (Split{u"", u""}));
    EXPECT_EQ(SplitOf(u" edit a"), (Split{u"", u"edit a"}));
}

TEST(SplitCommand, SkipsBlanksAndLeavesTheRestAsItIs) {
    EXPECT_EQ(SplitOf(u"edit  \t a  b "), (Split{u"edit", u"a  b "}));
    EXPECT_EQ(SplitOf(u"edit   "), (Split{u"edit", u""}));
    EXPECT_EQ(SplitOf(u"cd \"a b\""), (Split{u"cd", u"\"a b\""}));
}

TEST(SplitCommand, KeepsQuotesAndBlanksInsideThem) {
    EXPECT_EQ(SplitOf(u"\"a b\" c"), (Split{u"\"a b\"", u"c"}));
    EXPECT_EQ(SplitOf(u"x\"a b\"y c"), (Split{u"x\"a b\"y", u"c"}));
    EXPECT_EQ(SplitOf(u"\"a b c"), (Split{u"\"a b c", u""}));
}

TEST(SplitCommand, OnlySpaceAndTabAreBlanks) { EXPECT_EQ(SplitOf(u"a\u00A0b\nc d"), (Split{u"a\u00A0b\nc", u"d"})); }

class CommandLanguageTest : public ::testing::Test {
protected:
    Calls CallsOf(const std::u16string& line) {
        ExecuteCommandLine(frame, line.c_str());
        return frame.TakeCalls();
    }
    Calls RunText(const std::string& bytes) {
        RunScript(frame, folder.Write("script", bytes).c_str());
        return frame.TakeCalls();
    }

    FakeFrame frame;
    ScratchFolder folder;
};

TEST_F(CommandLanguageTest, ExclamationMarkRunsAnExternalProgramNamedEdit) {
    EXPECT_EQ(CallsOf(u"!edit x"), Calls{u"external [edit x]"});
    EXPECT_EQ(CallsOf(u"! edit x"), Calls{u"external [ edit x]"});
    EXPECT_EQ(CallsOf(u"!"), Calls{u"external []"});
}

TEST_F(CommandLanguageTest, AnUnknownWordRunsTheWholeLine) {
    EXPECT_EQ(CallsOf(u"dir /b *.c"), Calls{u"external [dir /b *.c]"});
    EXPECT_EQ(CallsOf(u"\"edit\" x"), Calls{u"external [\"edit\" x]"});
    EXPECT_EQ(CallsOf(u" mkoutput"), Calls{u"external [ mkoutput]"});
    EXPECT_EQ(CallsOf(u""), Calls{u"external []"});
}

TEST_F(CommandLanguageTest, HidesTheWindowUnlessARowKeepsIt) {
    CallsOf(u"mkoutput");
    EXPECT_EQ(frame.hides, 1);
    CallsOf(u"make");
    EXPECT_EQ(frame.hides, 2);
    CallsOf(u"!make");
    EXPECT_EQ(frame.hides, 3);
    CallsOf(u"pwd");
    EXPECT_EQ(frame.hides, 3);
}

TEST_F(CommandLanguageTest, ConsoleModeKeepsTheWindow) {
    CallsOf(u"console 1");
    CallsOf(u"mkoutput");
    CallsOf(u"make");
    EXPECT_EQ(frame.hides, 0);
    CallsOf(u"console 0"); // its own row keeps the window
    EXPECT_EQ(frame.hides, 0);
    CallsOf(u"make");
    EXPECT_EQ(frame.hides, 1);
}

TEST_F(CommandLanguageTest, RebuildsTheTitleAfterEveryLine) {
    CallsOf(u"pwd");
    EXPECT_EQ(frame.titles, 1);
    CallsOf(u"make");
    EXPECT_EQ(frame.titles, 2);
}

TEST_F(CommandLanguageTest, RunsAScriptLineByLine) {
    const Calls expected = {u"line 0", u"external []", u"external [make all]", u"line 1"};
    EXPECT_EQ(RunText("l 1\r\n\r\nmake all\r\nl 2\r\n"), expected);
    EXPECT_EQ(RunText("l 1\n\nmake all\nl 2"), expected);
    EXPECT_EQ(RunText("l 1\r\rmake all\rl 2\r"), expected);
    EXPECT_EQ(frame.batchDepth, 0);
}

TEST_F(CommandLanguageTest, ReadsScriptsAsUtf8WithOrWithoutSignature) {
    const Calls expected = {u"external [gr\u00FC\u00DFe \u20AC]"};
    EXPECT_EQ(RunText("gr\xC3\xBC\xC3\x9F"
                      "e \xE2\x82\xAC"),
              expected);
    EXPECT_EQ(RunText("\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F"
                      "e \xE2\x82\xAC\n"),
              expected);
    EXPECT_EQ(RunText("a\xFFz"), Calls{u"external [a\uFFFDz]"});
}

TEST_F(CommandLanguageTest, TheSettingUtf8ChangesNothingInScripts) {
    const WithAdditional on;
    on->Utf8 = 1;
    for (const char* script : {"a \xC3\xBC", "\xEF\xBB\xBF"
                                             "a \xC3\xBC"})
        EXPECT_EQ(RunText(script), Calls{u"external [a \u00FC]"});
    EXPECT_EQ(RunText("a\xFFz \xC3\xBC"), Calls{u"external [a\uFFFDz \u00FC]"});
}

TEST_F(CommandLanguageTest, StoresTheScriptsNameAndKeepsIt) {
    const std::u16string name = folder.Write("a script", "mkoutput");
    RunScript(frame, (u"\"" + name + u"\"").c_str());
    EXPECT_EQ(Str(frame.commands.runningScript), name);
    EXPECT_EQ(frame.TakeCalls(), Calls{u"mark output"});
}

TEST_F(CommandLanguageTest, TheScriptsNameIsItsFullPath) {
    const std::u16string name = folder.Write("here.ses", "sessionfile");
    const InDirectory scope(folder.File("."));
    RunScript(frame, u"here.ses");
    EXPECT_EQ(Str(frame.commands.runningScript), name);
    EXPECT_EQ(Str(frame.commands.sessionFile), name);
}

// Also when the script leaves the directory before it names itself.
TEST_F(CommandLanguageTest, TheScriptsNameHoldsElsewhere) {
    std::filesystem::create_directory(folder.File("sub"));
    const std::u16string name = folder.Write("here.ses", "cd sub\nsessionfile");
    const InDirectory scope(folder.File("."));
    RunScript(frame, u"here.ses");
    EXPECT_EQ(Str(frame.commands.sessionFile), name);
}

TEST_F(CommandLanguageTest, AfterANestedScriptTheOuterOneIsTheRunningOneAgain) {
    const std::u16string inner = folder.Write("inner", "sessionfile");
    const std::string innerBytes(std::filesystem::path(inner).string());
    const std::u16string outer = folder.Write("outer", "run " + innerBytes + "\nsessionfile");
    RunScript(frame, outer.c_str());
    EXPECT_EQ(Str(frame.commands.sessionFile), outer);
    EXPECT_EQ(Str(frame.commands.runningScript), outer);
    folder.Write("outer", "run " + innerBytes);
    RunScript(frame, outer.c_str());
    EXPECT_EQ(Str(frame.commands.sessionFile), inner);
    EXPECT_EQ(Str(frame.commands.runningScript), outer); // the last one to end
}

TEST_F(CommandLanguageTest, AnUnreadableScriptDoesNothing) {
    const std::u16string name = folder.Write("good", "mkoutput");
    RunScript(frame, name.c_str());
    frame.TakeCalls();
    RunScript(frame, folder.Path("missing").c_str());
    RunScript(frame, folder.Path("").c_str()); // a directory
    RunScript(frame, u"");
    EXPECT_EQ(frame.TakeCalls(), Calls{});
    EXPECT_TRUE(frame.questions.empty());
    EXPECT_EQ(Str(frame.commands.runningScript), name);
}

TEST_F(CommandLanguageTest, ReadsNothingFromEmptyFilesAndZeros) {
    EXPECT_EQ(RunText(""), Calls{});
    EXPECT_EQ(RunText("\xEF\xBB\xBF"), Calls{});
    EXPECT_EQ(RunText(std::string(1 << 20, '\0')), Calls{});
    EXPECT_EQ(RunText(std::string("mkoutput\nl 1\0l 2\n", 17)), (Calls{u"mark output", u"line 0"}));
}

TEST_F(CommandLanguageTest, RunsAMillionLines) {
    std::string text;
    for (int i = 0; i < 1000000; ++i) text += "#\r\n";
    EXPECT_EQ(RunText(text + "mkoutput"), Calls{u"mark output"});
    EXPECT_EQ(frame.titles, 1000001);
}

TEST_F(CommandLanguageTest, ScriptsRunScripts) {
    const std::u16string inner = folder.Write("inner", "l 2");
    const std::string innerBytes(std::filesystem::path(inner).string());
    EXPECT_EQ(RunText("l 1\nrun " + innerBytes + "\nl 3"), (Calls{u"line 0", u"line 1", u"line 2"}));
    EXPECT_EQ(frame.commands.scriptDepth, 0u);
}

// Two calls of itself would take 2 to the 100th steps if only the innermost level ended.
TEST_F(CommandLanguageTest, AScriptThatRunsItselfEndsWithOneMessage) {
    const std::u16string name = folder.Path("self");
    const std::string bytes(std::filesystem::path(name).string());
    folder.Write("self", "l 1\nrun " + bytes + "\nrun " + bytes + "\nmkoutput\n");
    RunScript(frame, name.c_str());
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, u"Scripts run each other too deeply: " + name);
    EXPECT_EQ(frame.questions[0].kind, MessageKind::Warning);
    EXPECT_EQ(frame.calls, Calls(MaxScriptDepth, u"line 0"));
    EXPECT_EQ(frame.commands.scriptDepth, 0u);
    EXPECT_EQ(frame.batchDepth, 0);

    frame.calls.clear();
    EXPECT_EQ(RunText("mkoutput"), Calls{u"mark output"}); // later scripts run again
}

TEST_F(CommandLanguageTest, SurvivesEveryFileFailure) {
    const std::u16string name = folder.Write("s", "mkoutput");
    const uint64_t failures = FailEachFileCall([&] {
        FakeFrame fresh;
        RunScript(fresh, name.c_str());
        if (fresh.calls == Calls{u"mark output"}) return true;
        EXPECT_EQ(fresh.calls, Calls{});
        EXPECT_EQ(Str(fresh.commands.runningScript), u"");
        return false;
    });
    EXPECT_GT(failures, 1u);
}

} // namespace
