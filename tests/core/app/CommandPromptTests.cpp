#include "app/CommandPrompt.h"
#include "core/app/FakeFrame.h"
#include "settings/Settings.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

CommandHistory& operator<<(CommandHistory& history, const Char* text) {
    EXPECT_TRUE(history.Add(text));
    return history;
}

TEST(CommandHistory, EmptyHasNothingToShow) {
    CommandHistory history;
    EXPECT_EQ(history.Older(), nullptr);
    EXPECT_EQ(history.Newer(), nullptr);
    EXPECT_EQ(history.FindPrefix(u"a", 1), nullptr);
}

TEST(CommandHistory, WalksToTheOldestAndStaysThere) {
    CommandHistory history;
    history << u"one" << u"two" << u"three";
    EXPECT_EQ(Str(history.Older()), u"three"); // from no cursor: the newest
    EXPECT_EQ(Str(history.Older()), u"two");
    EXPECT_EQ(Str(history.Older()), u"one");
    EXPECT_EQ(Str(history.Older()), u"one");
}

TEST(CommandHistory, WalksToTheNewestAndStaysThere) {
    CommandHistory history;
    history << u"one" << u"two" << u"three";
    EXPECT_EQ(history.Newer(), nullptr); // no cursor
    history.Older();
    history.Older();
    history.Older();
    EXPECT_EQ(Str(history.Newer()), u"two");
    EXPECT_EQ(Str(history.Newer()), u"three");
    EXPECT_EQ(Str(history.Newer()), u"three");
}

TEST(CommandHistory, AddingEndsTheWalk) {
    CommandHistory history;
    history << u"one" << u"two";
    history.Older();
    history.Older();
    history << u"three";
    EXPECT_EQ(Str(history.Older()), u"three");
}

TEST(CommandHistory, KeepsRepeatedAndEmptyLines) {
    CommandHistory history;
    history << u"a" << u"" << u"a";
    EXPECT_EQ(Str(history.Older()), u"a");
    EXPECT_EQ(Str(history.Older()), u"");
    EXPECT_EQ(Str(history.Older()), u"a");
}

TEST(CommandHistory, PrefixSearchGoesToOlderEntriesAndWraps) {
    CommandHistory history;
    history << u"edit 1" << u"line" << u"edit 2" << u"edit 3";
    // Without a cursor the newest entry comes last in the round.
    EXPECT_EQ(Str(history.FindPrefix(u"edxx", 2)), u"edit 2");
    EXPECT_EQ(Str(history.FindPrefix(u"ed", 2)), u"edit 1");
    EXPECT_EQ(Str(history.FindPrefix(u"ed", 2)), u"edit 3");
    EXPECT_EQ(Str(history.FindPrefix(u"ed", 2)), u"edit 2");
    EXPECT_EQ(Str(history.Older()), u"line"); // the found entry is the cursor
}

TEST(CommandHistory, PrefixSearchFindsTheCursorsOwnEntryLast) {
    CommandHistory history;
    history << u"only";
    EXPECT_EQ(Str(history.FindPrefix(u"on", 2)), u"only");
    EXPECT_EQ(Str(history.FindPrefix(u"on", 2)), u"only");
}

TEST(CommandHistory, PrefixSearchMatchesByCaseAndLength) {
    CommandHistory history;
    history << u"Edit" << u"ed";
    EXPECT_EQ(history.FindPrefix(u"edit", 4), nullptr); // shorter entries never match
    EXPECT_EQ(history.FindPrefix(u"eDit", 2), nullptr);
    EXPECT_EQ(Str(history.FindPrefix(u"Edit", 4)), u"Edit");
    EXPECT_EQ(history.FindPrefix(u"zzz", 3), nullptr);
    EXPECT_EQ(Str(history.Older()), u"Edit"); // a miss leaves the cursor; the oldest stays
    EXPECT_EQ(history.FindPrefix(u"anything", 0), nullptr);
}

TEST(CommandHistory, IsUnchangedWithoutMemory) {
    const std::u16string text(100, u'x');
    const uint64_t failures = FailEachAllocation([&] {
        CommandHistory history;
        {
            const FailurePause pause;
            history << u"one" << u"two";
            history.Older();
        }
        const bool added = history.Add(text.c_str());
        const FailurePause pause;
        EXPECT_EQ(Str(history.Older()), added ? text : u"one");
        return added;
    });
    EXPECT_EQ(failures, 2u);
}

class CompletionTest : public ::testing::Test {
protected:
    CompletionTest() : scope(folder.File(".")) {
        for (const char* name : {"beta.c", "Alpha.c", "alpha.h"}) folder.Write(name, "");
        std::filesystem::create_directories(folder.File("sub/inner"));
        folder.Write("sub/one.c", "");
        folder.Write("sub/two words.c", "");
    }
    // The texts of a whole run and one step more, which wraps to the first again.
    Calls Run(const std::u16string& text, size_t steps, bool forward = true) {
        completion.EndRun();
        Calls shown;
        for (size_t i = 0; i < steps; ++i) shown.push_back(Str(completion.Step(text.c_str(), forward)));
        return shown;
    }

    ScratchFolder folder;
    InDirectory scope;
    CommandCompletion completion;
};

TEST_F(CompletionTest, FilesAreSortedWithoutRegardToCase) {
    const Calls shown = {u"edit Alpha.c", u"edit alpha.h", u"edit beta.c", u"edit sub", u"edit Alpha.c"};
    EXPECT_EQ(Run(u"edit", 5), shown);
    EXPECT_EQ(Run(u"edit ", 5), shown);
}

TEST_F(CompletionTest, BackwardStartsAtTheLastAndWraps) {
    EXPECT_EQ(Run(u"edit ", 5, false),
              (Calls{u"edit sub", u"edit beta.c", u"edit alpha.h", u"edit Alpha.c", u"edit sub"}));
}

TEST_F(CompletionTest, ARunTurnsRound) {
    EXPECT_EQ(Str(completion.Step(u"e al", true)), u"e Alpha.c");
    EXPECT_EQ(Str(completion.Step(u"e Alpha.c", true)), u"e alpha.h");
    EXPECT_EQ(Str(completion.Step(u"e alpha.h", false)), u"e Alpha.c");
    EXPECT_EQ(Str(completion.Step(u"e Alpha.c", false)), u"e alpha.h");
}

TEST_F(CompletionTest, AnyOtherChangeEndsTheRun) {
    EXPECT_EQ(Str(completion.Step(u"e al", true)), u"e Alpha.c");
    completion.EndRun();
    EXPECT_EQ(Str(completion.Step(u"e b", true)), u"e beta.c");
}

TEST_F(CompletionTest, ThePathStaysInFrontOfTheName) {
    EXPECT_EQ(Run(u"edit sub\\o", 1), Calls{u"edit sub\\one.c"});
    EXPECT_EQ(Run(u"edit sub/t", 1), Calls{u"edit sub\\two words.c"});
    EXPECT_EQ(Run(u"edit \"sub\\t", 1), Calls{u"edit sub\\two words.c"});
    EXPECT_EQ(Run(u"edit sub\\two w", 1), Calls{u"edit sub\\two words.c"});
}

TEST_F(CompletionTest, CdIsOfferedDirectoriesOnly) {
    EXPECT_EQ(Run(u"cd ", 2), Calls(2, u"cd sub"));
    EXPECT_EQ(Run(u"cd sub\\", 2), Calls(2, u"cd sub\\inner"));
    EXPECT_EQ(Run(u"cd al", 1), Calls{u"(null)"});
}

TEST_F(CompletionTest, SetoptIsOfferedTheKeysOfTheSettings) {
    EXPECT_EQ(Run(u"setopt font", 4),
              (Calls{u"setopt FontBold", u"setopt FontName", u"setopt FontSize", u"setopt FontBold"}));
    EXPECT_EQ(Run(u"setopt FontSize", 2), Calls(2, u"setopt FontSize"));
    EXPECT_EQ(Run(u"setopt FontSize 1", 1), Calls{u"(null)"});
    const Calls all = Run(u"setopt ", SettingCount + 6 + 1);
    EXPECT_EQ(all.front(), u"setopt AltGr");
    EXPECT_EQ(all.back(), all.front());
    EXPECT_EQ(std::count(all.begin(), all.end(), all.front()), 2);
}

TEST_F(CompletionTest, SetoptIsOfferedTheAdditionalSettings) {
    EXPECT_EQ(Run(u"setopt u", 3), (Calls{u"setopt UnixNewFiles", u"setopt Utf8", u"setopt UnixNewFiles"}));
    for (const Char* line :
         {u"setopt AltGr", u"setopt MarkActivePane", u"setopt OutputCodePage", u"setopt WholeCharacters"})
        EXPECT_EQ(Run(line, 1), Calls{line});
}

TEST_F(CompletionTest, CommandsWithoutCompletionOfferNothing) {
    for (const Char* text : {u"pwd", u"pwd a", u"line a", u"# a", u"quit", u"console a"})
        EXPECT_EQ(completion.Step(text, true), nullptr) << Str(text).size();
}

TEST_F(CompletionTest, OtherWordsCompleteFileNames) {
    EXPECT_EQ(Run(u"be", 1), Calls{u"beta.c"});
    EXPECT_EQ(Run(u"be ", 1), Calls{u"beta.c"}); // only the word was typed
    EXPECT_EQ(Run(u"sub\\o", 1), Calls{u"sub\\one.c"});
    EXPECT_EQ(Run(u"make be", 1), Calls{u"make beta.c"});
    EXPECT_EQ(Run(u"", 5), (Calls{u"Alpha.c", u"alpha.h", u"beta.c", u"sub", u"Alpha.c"}));
}

TEST_F(CompletionTest, NamesWithBlanksAreQuotedForExternalCommands) {
    EXPECT_EQ(Run(u"make sub\\t", 2), Calls(2, u"make \"sub\\two words.c\""));
    EXPECT_EQ(Run(u"make sub\\", 3), (Calls{u"make sub\\inner", u"make sub\\one.c", u"make \"sub\\two words.c\""}));
    EXPECT_EQ(Run(u"sub\\t", 1), Calls{u"\"sub\\two words.c\""});
    EXPECT_EQ(Run(u"!make sub\\t", 1), Calls{u"!make \"sub\\two words.c\""});
    EXPECT_EQ(Run(u"edit sub\\t", 1), Calls{u"edit sub\\two words.c"}); // takes the rest of the line
}

TEST_F(CompletionTest, ANameInQuotesIsCompletedFurther) {
    std::filesystem::create_directories(folder.File("a dir"));
    folder.Write("a dir/x.c", "");
    EXPECT_EQ(Run(u"make a", 1), Calls{u"make \"a dir\""});
    EXPECT_EQ(Run(u"make \"a dir\"\\", 1), Calls{u"make \"a dir\\x.c\""});
    EXPECT_EQ(Run(u"make \"a dir\\x", 1), Calls{u"make \"a dir\\x.c\""});
    EXPECT_EQ(Run(u"\"a dir\\x", 1), Calls{u"\"a dir\\x.c\""});
}

TEST_F(CompletionTest, WithoutACandidateNothingHappens) {
    EXPECT_EQ(completion.Step(u"edit zzz", true), nullptr);
    EXPECT_EQ(completion.Step(u"edit no\\such\\", false), nullptr);
    EXPECT_EQ(Str(completion.Step(u"edit be", true)), u"edit beta.c");
}

TEST_F(CompletionTest, LeavesNothingWithoutMemory) {
    const uint64_t failures = FailEachAllocation([] {
        CommandCompletion fresh;
        const Char* const shown = fresh.Step(u"edit a", true);
        const FailurePause pause;
        return shown && Str(shown) == u"edit Alpha.c" && Str(fresh.Step(u"", true)) == u"edit alpha.h";
    });
    EXPECT_GT(failures, 6u);
}

class PromptTest : public CompletionTest {
protected:
    FakeFrame frame;
    CommandPrompt prompt;
};

TEST_F(PromptTest, EnterExecutesAndKeepsATypedLine) {
    prompt.Enter(frame, u"mkoutput", true);
    EXPECT_EQ(frame.TakeCalls(), Calls{u"mark output"});
    EXPECT_EQ(Str(prompt.Older()), u"mkoutput");
}

TEST_F(PromptTest, EnterDoesNotKeepALineThatWasNeitherTypedNorCompleted) {
    prompt.Enter(frame, u"mkoutput", false);
    EXPECT_EQ(prompt.Older(), nullptr);
    EXPECT_EQ(frame.TakeCalls(), Calls{u"mark output"});
}

TEST_F(PromptTest, EnterKeepsACompletedLine) {
    EXPECT_EQ(Str(prompt.Complete(u"edit b", true)), u"edit beta.c");
    prompt.Enter(frame, u"edit beta.c", false);
    EXPECT_EQ(frame.TakeCalls(), Calls{u"text beta.c"});
    EXPECT_EQ(Str(prompt.Older()), u"edit beta.c");
}

TEST_F(PromptTest, ACompletedLineIsKeptOnceHoweverOftenItIsEntered) {
    prompt.Enter(frame, u"pwd", true);
    EXPECT_EQ(Str(prompt.Complete(u"edit b", true)), u"edit beta.c");
    prompt.Enter(frame, u"edit beta.c", false);
    prompt.Enter(frame, u"edit beta.c", false);
    EXPECT_EQ(frame.TakeCalls(), Calls(2, u"text beta.c"));
    EXPECT_EQ(Str(prompt.Older()), u"edit beta.c");
    EXPECT_EQ(Str(prompt.Older()), u"pwd");
}

TEST_F(PromptTest, AHistoryEntryReplacesWhatWasCompleted) {
    prompt.Enter(frame, u"pwd", true);
    EXPECT_EQ(Str(prompt.Complete(u"edit b", true)), u"edit beta.c");
    EXPECT_EQ(Str(prompt.Older()), u"pwd");
    prompt.Enter(frame, u"pwd", false);
    EXPECT_EQ(Str(prompt.Older()), u"pwd"); // still the only entry, not a second one
    EXPECT_EQ(Str(prompt.Newer()), u"pwd");
    // And the completion starts over.
    EXPECT_EQ(Str(prompt.Complete(u"e al", true)), u"e Alpha.c");
}

TEST_F(PromptTest, TypingEndsTheCompletion) {
    EXPECT_EQ(Str(prompt.Complete(u"e al", true)), u"e Alpha.c");
    prompt.TextChanged();
    EXPECT_EQ(Str(prompt.Complete(u"e b", false)), u"e beta.c");
}

TEST_F(PromptTest, PrefixSearchTakesTheTextBeforeTheCaret) {
    prompt.Enter(frame, u"line 1", true);
    prompt.Enter(frame, u"pwd", true);
    EXPECT_EQ(Str(prompt.FindPrefix(u"lixyz", 2)), u"line 1");
    EXPECT_EQ(prompt.FindPrefix(u"li", 0), nullptr);
}

} // namespace
