#include "app/StartArguments.h"
#include "base/Text.h"
#include "core/app/FakeFrame.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

Calls ArgumentsOf(const std::u16string& text) {
    Calls arguments;
    const Char* position = text.c_str();
    WString token;
    while (NextArgument(position, token)) arguments.push_back(Str(token));
    return arguments;
}

TEST(NextArgument, SplitsAtSpacesAndTabs) {
    EXPECT_EQ(ArgumentsOf(u"a bc\td"), (Calls{u"a", u"bc", u"d"}));
    EXPECT_EQ(ArgumentsOf(u" \t a  \t"), Calls{u"a"});
    EXPECT_EQ(ArgumentsOf(u""), Calls{});
    EXPECT_EQ(ArgumentsOf(u" \t"), Calls{});
    EXPECT_EQ(ArgumentsOf(u"a\nb\u00A0c"), Calls{u"a\nb\u00A0c"});
}

TEST(NextArgument, TakesQuotedTextWithoutItsQuotes) {
    EXPECT_EQ(ArgumentsOf(u"\"a b\" c"), (Calls{u"a b", u"c"}));
    EXPECT_EQ(ArgumentsOf(u"\"a b\"c d"), (Calls{u"a bc", u"d"}));
    EXPECT_EQ(ArgumentsOf(u"\"\"c d"), (Calls{u"c", u"d"}));
    // Only a quote at the start quotes; one after a closing quote is ordinary text.
    EXPECT_EQ(ArgumentsOf(u"a\"b c\""), (Calls{u"a\"b", u"c\""}));
    EXPECT_EQ(ArgumentsOf(u"\"a\"\"b c\""), (Calls{u"a\"b", u"c\""}));
}

TEST(NextArgument, AMissingClosingQuoteTakesTheRest) {
    EXPECT_EQ(ArgumentsOf(u"a \"b c "), (Calls{u"a", u"b c "}));
    EXPECT_EQ(ArgumentsOf(u"a \""), Calls{u"a"});
}

TEST(NextArgument, AnEmptyQuotedTokenEndsTheList) {
    EXPECT_EQ(ArgumentsOf(u"x \"\" y"), Calls{u"x"});
    // It is used up all the same.
    const Char* position = u"\"\" y";
    WString token;
    EXPECT_TRUE(token.Assign(u"old"));
    EXPECT_FALSE(NextArgument(position, token));
    EXPECT_TRUE(token.IsEmpty());
    EXPECT_TRUE(NextArgument(position, token));
    EXPECT_EQ(Str(token), u"y");
}

TEST(ParseDecimal, ReadsLeadingDigitsOnly) {
    EXPECT_EQ(Text::ParseDecimal(u"12x3"), 12u);
    EXPECT_EQ(Text::ParseDecimal(u""), 0u);
    EXPECT_EQ(Text::ParseDecimal(u" 5"), 0u);
    EXPECT_EQ(Text::ParseDecimal(u"-5"), 0u);
    EXPECT_EQ(Text::ParseDecimal(u"4294967297"), 1u);
}

class ParseCommandLineTest : public ::testing::Test {
protected:
    ParseCommandLineTest() : scope(folder.File(".")) {
        frame.addsDocuments = true;
        frame.defaultAnswer = Answer::No;
    }
    void Make(std::initializer_list<const char*> files) {
        for (const char* file : files) {
            std::filesystem::create_directories(folder.File(file).parent_path());
            folder.Write(file, "");
        }
    }
    Calls CallsOf(const std::u16string& arguments) {
        EXPECT_TRUE(ParseCommandLine(frame, (u"orvane.exe " + arguments).c_str()));
        EXPECT_EQ(frame.batchDepth, 0);
        EXPECT_EQ(frame.layouts, 1);
        return frame.TakeCalls();
    }

    FakeFrame frame;
    ScratchFolder folder;
    InDirectory scope;
};

TEST_F(ParseCommandLineTest, WithoutFilesANewDocumentIsMade) { EXPECT_EQ(CallsOf(u""), Calls{u"new document"}); }

TEST_F(ParseCommandLineTest, TheProgramsOwnNameIsSkipped) {
    Make({"a.c"});
    EXPECT_TRUE(ParseCommandLine(frame, u"\"C:\\Program Files\\orvane.exe\" a.c"));
    EXPECT_EQ(frame.TakeCalls(), Calls{u"text a.c"});
}

TEST_F(ParseCommandLineTest, AnEmptyProgramNameIsSkippedToo) {
    Make({"a.c"});
    EXPECT_TRUE(ParseCommandLine(frame, u"\"\" a.c"));
    EXPECT_EQ(frame.TakeCalls(), Calls{u"text a.c"});
}

TEST_F(ParseCommandLineTest, AnEmptyCommandLineMakesANewDocument) {
    EXPECT_TRUE(ParseCommandLine(frame, u""));
    EXPECT_EQ(frame.TakeCalls(), Calls{u"new document"});
    EXPECT_EQ(frame.layouts, 1);
}

TEST_F(ParseCommandLineTest, TheLineAppliesToTheNextFileOnly) {
    Make({"a.c", "b.c"});
    EXPECT_EQ(CallsOf(u"-l 12 a.c b.c"), (Calls{u"text a.c at 11", u"text b.c"}));
}

TEST_F(ParseCommandLineTest, OptionsAreKnownByTheirSecondCharacter) {
    Make({"a.c"});
    EXPECT_EQ(CallsOf(u"-LINE 3 a.c"), Calls{u"text a.c at 2"});
}

TEST_F(ParseCommandLineTest, SlashBeginsAnOptionToo) {
    Make({"a.c"});
    EXPECT_EQ(CallsOf(u"/l 3 a.c"), Calls{u"text a.c at 2"});
}

TEST_F(ParseCommandLineTest, LineZeroMeansNoLine) {
    Make({"a.c"});
    EXPECT_EQ(CallsOf(u"-l 0 a.c"), Calls{u"text a.c"});
}

TEST_F(ParseCommandLineTest, AnEmptyLineNumberIsUsedUp) {
    Make({"a.c"});
    EXPECT_EQ(CallsOf(u"-l \"\" a.c"), Calls{u"text a.c"});
}

TEST_F(ParseCommandLineTest, AnOptionsArgumentMayBeMissing) { EXPECT_EQ(CallsOf(u"-r"), Calls{u"new document"}); }

TEST_F(ParseCommandLineTest, LineWithoutANumberIsHarmless) { EXPECT_EQ(CallsOf(u"-l"), Calls{u"new document"}); }

TEST_F(ParseCommandLineTest, UnknownOptionsAreIgnored) {
    Make({"a.c"});
    EXPECT_EQ(CallsOf(u"-x - / /? a.c"), Calls{u"text a.c"});
}

TEST_F(ParseCommandLineTest, AnEmptyArgumentEndsTheList) {
    Make({"x", "y"});
    EXPECT_EQ(CallsOf(u"x \"\" y"), Calls{u"text x"});
}

TEST_F(ParseCommandLineTest, BinaryModeLastsToTheEnd) {
    Make({"a", "b", "c"});
    EXPECT_EQ(CallsOf(u"a -b b c"), (Calls{u"text a", u"binary b", u"binary c"}));
}

TEST_F(ParseCommandLineTest, AScriptRunsBeforeLaterFilesAreOpened) {
    Make({"a", "b"});
    folder.Write("s", "mkoutput");
    EXPECT_EQ(CallsOf(u"a -r s b"), (Calls{u"text a", u"mark output", u"text b"}));
}

TEST_F(ParseCommandLineTest, AMissingFileIsAskedFor) {
    EXPECT_EQ(CallsOf(u"none.c"), Calls{u"new document"});
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, u"Create file none.c?");
}

TEST_F(ParseCommandLineTest, SubdirectoryModeOpensFilesOneLevelDown) {
    Make({"top.c", "x/a.c", "x/b.c", "x/b.h", "x/deep/d.c", ".git/g.c"});
    Calls calls = CallsOf(u"-s *.c");
    std::sort(calls.begin(), calls.end());
    EXPECT_EQ(calls, (Calls{u"text x\\a.c", u"text x\\b.c"}));
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(ParseCommandLineTest, SubdirectoryModeTakesNoLineAndEndsThePendingOne) {
    Make({"x/a.c", "y/a.c"});
    Calls calls = CallsOf(u"-l 5 -s a.c");
    std::sort(calls.begin(), calls.end());
    EXPECT_EQ(calls, (Calls{u"text x\\a.c", u"text y\\a.c"}));
}

// A directory without a match is tried as "x\", which fails like any path that cannot be read.
TEST_F(ParseCommandLineTest, SubdirectoryModeAsksForNothing) {
    Make({"x/a.c", "y/b.c"});
    frame.failingName = u"\\";
    Calls calls = CallsOf(u"-s a.c");
    std::sort(calls.begin(), calls.end());
    EXPECT_EQ(calls, (Calls{u"text x\\a.c", u"text y\\"}));
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(ParseCommandLineTest, OpensEverythingInOneBatch) {
    Make({"a", "b", "x/c"});
    CallsOf(u"a b -s c");
    EXPECT_EQ(frame.opensOutsideBatch, 0);
}

TEST_F(ParseCommandLineTest, SurvivesEveryAllocationFailure) {
    Make({"a.c", "x/b.c"});
    const uint64_t failures = FailEachAllocation([&] {
        FakeFrame fresh;
        EXPECT_TRUE(ParseCommandLine(fresh, u"orvane -l 3 a.c -s b.c"));
        const FailurePause pause;
        EXPECT_EQ(fresh.batchDepth, 0);
        EXPECT_EQ(fresh.layouts, 1);
        return fresh.calls == Calls{u"text a.c at 2", u"text x\\b.c", u"new document"};
    });
    EXPECT_GT(failures, 5u);
}

} // namespace
