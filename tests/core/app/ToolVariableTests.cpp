#include "app/ToolVariables.h"
#include "base/Platform.h"
#include "core/app/FakeFrame.h"
#include "settings/ToolList.h"
#include "support/FailureInjection.h"

#include <gtest/gtest.h>

namespace {

class ToolVariableTest : public ::testing::Test {
protected:
    ToolVariableTest() {
        frame.activeName = u"C:\\work\\a.c";
        frame.word = u"foo";
    }
    std::u16string Expand(const Char* text) {
        WString out;
        EXPECT_TRUE(ExpandToolVariables(frame, text, out));
        return Str(out);
    }
    std::u16string ExpandDirectory(const Char* text) {
        WString out;
        EXPECT_TRUE(ExpandStartDirectory(frame, text, out));
        return Str(out);
    }

    FakeFrame frame;
};

TEST_F(ToolVariableTest, EachVariableHasItsValue) {
    frame.selection = u"two words";
    EXPECT_EQ(Expand(u"%PATH%|%FILE%|%DIR%|%EXT%|%WORD%|%SEL%"), u"C:\\work\\a.c|a.c|C:\\work|.c|foo|two words");
}

TEST_F(ToolVariableTest, ATextIsAppended) {
    WString out;
    ASSERT_TRUE(out.Assign(u"> "));
    EXPECT_TRUE(ExpandToolVariables(frame, u"%FILE%", out));
    EXPECT_EQ(Str(out), u"> a.c");
}

TEST_F(ToolVariableTest, AToolsCommandAndDirectory) {
    ToolRecord tool;
    ASSERT_TRUE(tool.command.Assign(u"cc -c %FILE%"));
    WString line;
    EXPECT_TRUE(ToolCommandLine(tool, line));
    EXPECT_EQ(Str(line), u"cc -c %FILE% ");
    EXPECT_EQ(Expand(line.Text()), u"cc -c a.c ");
    EXPECT_EQ(ExpandDirectory(u"%DIR%"), u"C:\\work");
    ASSERT_TRUE(tool.lastArgs.Assign(u"-O2 -g"));
    EXPECT_TRUE(ToolCommandLine(tool, line));
    EXPECT_EQ(Str(line), u"cc -c %FILE% -O2 -g");
}

TEST_F(ToolVariableTest, AnEmptyDirectoryIsTheCurrentOne) {
    WString here;
    ASSERT_TRUE(Platform::CurrentDirectory(here));
    EXPECT_EQ(ExpandDirectory(u""), Str(here));
    frame.hasPane = false;
    EXPECT_EQ(ExpandDirectory(u"%DIR%"), Str(here));
}

TEST_F(ToolVariableTest, NamesMatchByCaseAndAsAWhole) {
    EXPECT_EQ(Expand(u"%PATHX%"), u"%PATHX%");
    EXPECT_EQ(Expand(u"%path%"), u"%path%");
    EXPECT_EQ(Expand(u"%Path% %FILE"), u"%Path% %FILE");
    EXPECT_EQ(Expand(u"%PATH%X%"), u"C:\\work\\a.cX%");
}

TEST_F(ToolVariableTest, LonePercentSignsAreCopied) {
    EXPECT_EQ(Expand(u"100%"), u"100%");
    EXPECT_EQ(Expand(u"%%"), u"%%");
    EXPECT_EQ(Expand(u"%%FILE%%"), u"%a.c%");
    EXPECT_EQ(Expand(u""), u"");
}

TEST_F(ToolVariableTest, ValuesAreNotExpandedAgain) {
    frame.activeName = u"C:\\%FILE%.c";
    EXPECT_EQ(Expand(u"%PATH%"), u"C:\\%FILE%.c");
}

TEST_F(ToolVariableTest, AnEmptySelectionGivesTheWord) {
    EXPECT_EQ(Expand(u"%SEL%"), u"foo");
    frame.word.clear();
    EXPECT_EQ(Expand(u"[%SEL%%WORD%]"), u"[]");
}

TEST_F(ToolVariableTest, WithoutAPaneTheVariablesAreEmpty) {
    frame.hasPane = false;
    EXPECT_EQ(Expand(u"a %PATH%%FILE%%DIR%%EXT%%WORD%%SEL% b"), u"a  b");
}

TEST_F(ToolVariableTest, RootsKeepTheirBackslash) {
    frame.activeName = u"C:\\a";
    EXPECT_EQ(Expand(u"%DIR%|%EXT%|%FILE%"), u"C:\\||a");
}

TEST_F(ToolVariableTest, PathsWithSpacesAreNotQuoted) {
    frame.activeName = u"C:\\my work\\a b.tar.gz";
    EXPECT_EQ(Expand(u"\"%PATH%\" %EXT%"), u"\"C:\\my work\\a b.tar.gz\" .gz");
}

TEST_F(ToolVariableTest, ADocumentWithoutAFileGivesItsTitle) {
    frame.activeName = u"Untitled1";
    EXPECT_EQ(Expand(u"%PATH%|%FILE%|%DIR%|%EXT%"), u"Untitled1|Untitled1||");
}

TEST_F(ToolVariableTest, ASlashEndsNoFolder) {
    frame.activeName = u"C:\\bin\\lint /all"; // an output document's name
    EXPECT_EQ(Expand(u"%FILE%|%DIR%"), u"lint /all|C:\\bin");
    frame.activeName = u"C:file";
    EXPECT_EQ(Expand(u"%FILE%"), u"C:file");
}

TEST_F(ToolVariableTest, PathOperationsSeeTheFirst1049Characters) {
    const std::u16string directory = u"C:\\" + std::u16string(1040, u'd'); // 1043 characters
    frame.activeName = directory + u"\\name.c";                            // cut after "name."
    EXPECT_EQ(Expand(u"%DIR%"), directory);
    EXPECT_EQ(Expand(u"%FILE%"), u"name.");
    EXPECT_EQ(Expand(u"%EXT%"), u".");
    EXPECT_EQ(Expand(u"%PATH%"), frame.activeName);
    frame.activeName = directory + u"\\ame.c"; // exactly 1049
    EXPECT_EQ(Expand(u"%FILE%"), u"ame.c");
}

TEST_F(ToolVariableTest, IsUnchangedWithoutMemory) {
    const uint64_t failures = FailEachAllocation([&] {
        WString out;
        {
            const FailurePause pause;
            EXPECT_TRUE(out.Assign(u"old"));
        }
        const bool expanded = ExpandToolVariables(frame, u"%PATH% %FILE% %DIR% %EXT% %WORD% %SEL%", out);
        const FailurePause pause;
        EXPECT_EQ(Str(out) == u"old", !expanded);
        return expanded;
    });
    EXPECT_GT(failures, 4u);
}

} // namespace

TEST(ToolVariables, TheInterpreterRunsOnlyWhereThereIsADriveLetter) {
    for (const Char* directory : {u"C:\\work", u"C:\\", u"work", u".", u"", u"\"C:\\work\""})
        EXPECT_TRUE(InterpreterRunsIn(directory));
    for (const Char* directory : {u"\\\\server\\share", u"\\\\server\\share\\work\\", u"//server/share",
                                  u"\\\\?\\C:\\work", u"\\\\?\\UNC\\server\\share", u"\"\\\\server\\share\""})
        EXPECT_FALSE(InterpreterRunsIn(directory));
}
