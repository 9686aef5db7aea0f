#include "app/FileDialogText.h"
#include "app/OpenFiles.h"
#include "core/app/FakeFrame.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

class OpenFilesTest : public ::testing::Test {
protected:
    OpenFilesTest() : scope(folder.File(".")) {}

    FakeFrame frame;
    ScratchFolder folder;
    InDirectory scope;
};

TEST_F(OpenFilesTest, AnEmptyPathFails) {
    EXPECT_FALSE(OpenFileArgument(frame, u"", NoLine, true, false));
    EXPECT_FALSE(OpenFileArgument(frame, u"\"\"", NoLine, true, false));
    EXPECT_FALSE(OpenFileArgument(frame, u"\"", NoLine, true, false));
    EXPECT_TRUE(frame.calls.empty());
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(OpenFilesTest, DropsOneQuoteAtEachEnd) {
    folder.Write("a b", "");
    EXPECT_TRUE(OpenFileArgument(frame, u"\"a b\"", NoLine, true, false));
    EXPECT_TRUE(OpenFileArgument(frame, u"\"a b", NoLine, true, false));
    EXPECT_TRUE(OpenFileArgument(frame, u"a b\"", NoLine, true, false));
    EXPECT_EQ(frame.calls, Calls(3, u"text a b"));
}

TEST_F(OpenFilesTest, KeepsTheDirectoryPart) {
    std::filesystem::create_directory(folder.File("dir"));
    folder.Write("dir/a", "");
    EXPECT_TRUE(OpenFileArgument(frame, u"dir/a", 6, true, false));
    EXPECT_TRUE(OpenFileArgument(frame, u".\\dir\\a", NoLine, true, true));
    EXPECT_EQ(frame.calls, (Calls{u"text dir\\a at 6", u"binary .\\dir\\a"}));
}

TEST_F(OpenFilesTest, ALineAppliesToEveryMatch) {
    for (const char* name : {"a1.c", "a2.c", "b.c"}) folder.Write(name, "");
    EXPECT_TRUE(OpenFileArgument(frame, u"a?.c", 9, true, false));
    std::sort(frame.calls.begin(), frame.calls.end());
    EXPECT_EQ(frame.calls, (Calls{u"text a1.c at 9", u"text a2.c at 9"}));
    EXPECT_EQ(frame.opensOutsideBatch, 0);
    EXPECT_EQ(frame.batchDepth, 0);
}

TEST_F(OpenFilesTest, TriesAllMatchesAndTellsOfAFailure) {
    for (const char* name : {"a.c", "b.c", "c.c"}) folder.Write(name, "");
    for (const Char* failing : {u"a.c", u"b.c", u"c.c"}) {
        frame.failingName = failing;
        frame.calls.clear();
        EXPECT_FALSE(OpenFileArgument(frame, u"*.c", NoLine, true, false));
        EXPECT_EQ(frame.calls.size(), 3u);
    }
    frame.failingName.clear();
    EXPECT_TRUE(OpenFileArgument(frame, u"*.c", NoLine, true, false));
}

TEST_F(OpenFilesTest, AWildcardPassesOverDirectoriesSilently) {
    for (const char* name : {"sub.c", "other.c"}) std::filesystem::create_directory(folder.File(name));
    frame.failingName = u"sub.c";
    EXPECT_TRUE(OpenFileArgument(frame, u"s*.c", NoLine, true, false)); // nothing else matches
    EXPECT_EQ(frame.calls, Calls{});
    folder.Write("some.c", "");
    EXPECT_TRUE(OpenFileArgument(frame, u"?*.c", NoLine, true, false));
    EXPECT_TRUE(OpenBinaryArgument(frame, u"s*"));
    EXPECT_EQ(frame.calls, (Calls{u"text some.c", u"binary some.c"}));
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(OpenFilesTest, ADirectoryThatIsNamedIsTried) {
    std::filesystem::create_directory(folder.File("sub.c"));
    frame.failingName = u"sub.c";
    EXPECT_FALSE(OpenFileArgument(frame, u"sub.c", NoLine, true, false));
    EXPECT_EQ(frame.calls, Calls{u"text sub.c"});
}

TEST_F(OpenFilesTest, AQuestionMarkInFrontOfTheNameIsNoWildcard) {
    std::error_code refused;
    std::filesystem::create_directories(folder.File("q?/sub.c"), refused);
    if (refused) GTEST_SKIP() << "the system has no such names";
    frame.failingName = u"q?\\sub.c";
    EXPECT_FALSE(OpenFileArgument(frame, u"q?\\sub.c", NoLine, true, false));
    EXPECT_EQ(frame.calls, Calls{u"text q?\\sub.c"});
}

TEST_F(OpenFilesTest, AWildcardOfAThousandFilesIsOneBatch) {
    for (int i = 0; i < 1000; ++i) folder.Write(std::to_string(i) + ".txt", "");
    EXPECT_TRUE(OpenFileArgument(frame, u"*.txt", NoLine, true, false));
    EXPECT_EQ(frame.calls.size(), 1000u);
    EXPECT_EQ(frame.opensOutsideBatch, 0);
    EXPECT_EQ(frame.layouts, 0);
}

TEST_F(OpenFilesTest, AsksToCreateWhatIsMissing) {
    frame.answers = {Answer::Yes};
    EXPECT_TRUE(OpenFileArgument(frame, u"\"sub/new file.c\"", 3, true, false));
    EXPECT_EQ(frame.calls, Calls{u"text sub\\new file.c at 3 new"});
    ASSERT_EQ(frame.questions.size(), 1u);
    EXPECT_EQ(frame.questions[0].text, u"Create file sub\\new file.c?");
    EXPECT_EQ(frame.questions[0].kind, MessageKind::YesNo);
}

TEST_F(OpenFilesTest, AnythingButYesCreatesNothing) {
    for (const Answer answer : {Answer::No, Answer::Cancel, Answer::Ok}) {
        frame.answers = {answer};
        EXPECT_FALSE(OpenFileArgument(frame, u"new.c", NoLine, true, false));
    }
    EXPECT_TRUE(frame.calls.empty());
}

TEST_F(OpenFilesTest, AFileMadeDuringTheQuestionIsOpenedAsItIs) {
    frame.answers = {Answer::Yes};
    frame.whileAsking = [&] { folder.Write("a.c", "text"); };
    EXPECT_TRUE(OpenFileArgument(frame, u"a.c", NoLine, true, false));
    EXPECT_EQ(frame.calls, Calls{u"text a.c"});
}

TEST_F(OpenFilesTest, ADirectoryWithABackslashIsNotCreatedAsAFile) {
    std::filesystem::create_directory(folder.File("d"));
    frame.answers = {Answer::Yes};
    OpenFileArgument(frame, u"d\\", NoLine, true, false);
    EXPECT_EQ(frame.calls, Calls{u"text d\\"});
}

TEST_F(OpenFilesTest, OddNamesReachTheQuestionWhole) {
    const std::u16string name = u"100% & %s %ls #.c";
    EXPECT_FALSE(OpenFileArgument(frame, name.c_str(), NoLine, true, false));
    const std::u16string longName(32000, u'x');
    EXPECT_FALSE(OpenFileArgument(frame, longName.c_str(), NoLine, true, false));
    ASSERT_EQ(frame.questions.size(), 2u);
    EXPECT_EQ(frame.questions[0].text, u"Create file " + name + u"?");
    EXPECT_EQ(frame.questions[1].text, u"Create file " + longName + u"?");
}

TEST_F(OpenFilesTest, WithoutAskingTheDirectoryIsTriedOnce) {
    frame.failingName = u"x\\";
    EXPECT_FALSE(OpenFileArgument(frame, u"x\\*.none", 4, false, false));
    EXPECT_EQ(frame.calls, Calls{u"text x\\ at 4"});
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(OpenFilesTest, BytesThatAreMissingFailUnderTheirName) {
    for (const Char* path : {u"x\\typo.bin", u"typo.bin", u"x\\*.none"}) {
        frame.calls.clear();
        frame.failingName = path;
        EXPECT_FALSE(OpenBinaryArgument(frame, path));
        EXPECT_EQ(frame.calls, Calls{u"binary " + std::u16string(path)});
    }
    EXPECT_TRUE(frame.questions.empty());
}

TEST_F(OpenFilesTest, BytesAreOpenedByWildcardsAndQuotedNames) {
    std::filesystem::create_directory(folder.File("d"));
    folder.Write("d/a b.bin", "");
    EXPECT_TRUE(OpenBinaryArgument(frame, u"\"d/a b.bin\""));
    EXPECT_TRUE(OpenBinaryArgument(frame, u"d\\*.bin"));
    EXPECT_FALSE(OpenBinaryArgument(frame, u""));
    EXPECT_EQ(frame.calls, Calls(2, u"binary d\\a b.bin"));
}

TEST_F(OpenFilesTest, SurvivesEveryAllocationFailure) {
    folder.Write("a.c", "");
    const uint64_t failures = FailEachAllocation([&] {
        FakeFrame fresh;
        fresh.defaultAnswer = Answer::Yes;
        const bool found = OpenFileArgument(fresh, u"a.c", NoLine, true, false);
        const bool made = OpenFileArgument(fresh, u".\\b.c", NoLine, true, false);
        const FailurePause pause;
        EXPECT_EQ(fresh.batchDepth, 0);
        // A search that fails may look like a missing file, so a question for a.c is right.
        return found && made && fresh.calls == Calls{u"text a.c", u"text .\\b.c new"};
    });
    EXPECT_GT(failures, 4u);
}

Calls PathsOf(const std::u16string& result) {
    SelectedFiles files(result.c_str());
    Calls paths;
    WString path;
    while (files.Next(path)) paths.push_back(Str(path));
    return paths;
}

TEST(SelectedFiles, ASingleSelectionIsAFullPath) {
    EXPECT_EQ(PathsOf(std::u16string(u"C:\\x\\a.c\0", 9)), Calls{u"C:\\x\\a.c"});
    EXPECT_EQ(PathsOf(u""), Calls{});
}

TEST(SelectedFiles, ThreeFilesComeInTheOrderOfTheDialog) {
    EXPECT_EQ(PathsOf(std::u16string(u"C:\\x\0b\0a\0c\0", 11)), (Calls{u"C:\\x\\b", u"C:\\x\\a", u"C:\\x\\c"}));
}

TEST(SelectedFiles, ARootKeepsItsOneBackslash) {
    EXPECT_EQ(PathsOf(std::u16string(u"C:\\\0a\0b\0", 8)), (Calls{u"C:\\a", u"C:\\b"}));
}

TEST(SelectedFiles, AreOpenedOneByOneAsExistingFiles) {
    FakeFrame frame;
    frame.failingName = u"b";
    OpenSelectedFiles(frame, u"C:\\x\0a\0b\0c\0");
    EXPECT_EQ(frame.calls, (Calls{u"text C:\\x\\a", u"text C:\\x\\b", u"text C:\\x\\c"}));
    EXPECT_EQ(frame.opensOutsideBatch, 0);
    EXPECT_EQ(frame.batchDepth, 0);
}

TEST(DialogFilter, TurnsBarsIntoNulsAndAddsTwo) {
    WString filter;
    EXPECT_TRUE(MakeDialogFilter(u"C (*.c)|*.c|All|*.*", filter));
    EXPECT_EQ(Str(filter), std::u16string(u"C (*.c)\0*.c\0All\0*.*\0\0", 21));
    EXPECT_TRUE(MakeDialogFilter(u"", filter));
    EXPECT_EQ(Str(filter), std::u16string(2, u'\0'));
    EXPECT_TRUE(MakeDialogFilter(nullptr, filter)); // the setting may be absent
    EXPECT_EQ(Str(filter), std::u16string(2, u'\0'));
}

TEST(DialogFilter, IsUnchangedWithoutMemory) {
    const uint64_t failures = FailEachAllocation([] {
        WString filter;
        {
            const FailurePause pause;
            EXPECT_TRUE(filter.Assign(u"old"));
        }
        const bool made = MakeDialogFilter(u"0123456789|*", filter);
        const FailurePause pause;
        EXPECT_EQ(Str(filter), made ? std::u16string(u"0123456789\0*\0\0", 14) : u"old");
        return made;
    });
    EXPECT_GT(failures, 0u);
}

} // namespace
