#include "base/Platform.h"

#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

// The folder itself, without a backslash at the end.
std::u16string Here(const ScratchFolder& folder) {
    const std::u16string entry = folder.Path("x");
    return entry.substr(0, entry.size() - 2);
}

void MakeFolder(const ScratchFolder& folder, const char* name) {
    std::error_code error;
    std::filesystem::create_directory(folder.File(name), error);
    EXPECT_FALSE(error);
}

std::u16string Content(const WString& string) { return {string.Text(), string.Length()}; }

std::u16string Full(const std::u16string& path) {
    WString out;
    return Platform::FullPath(path.c_str(), out) ? Content(out) : u"failed";
}

std::u16string Expanded(const Char* text) {
    WString out;
    return Platform::ExpandEnvironment(text, out) ? Content(out) : u"failed";
}

// Variables that the tests set; both systems' C libraries know putenv.
void SetVariable(const char* assignment) { putenv(const_cast<char*>(assignment)); }

// The current directory is another one while this lives.
class InFolder {
public:
    explicit InFolder(const std::u16string& path) {
        EXPECT_TRUE(Platform::CurrentDirectory(before));
        EXPECT_TRUE(Platform::SetCurrentDirectory(path.c_str()));
    }
    ~InFolder() { EXPECT_TRUE(Platform::SetCurrentDirectory(before.Text())); }

private:
    WString before;
};

// `operation` fills its argument; each failed allocation has to leave that as it was.
template <class Operation> void ExpectUnchangedOnFailure(Operation operation) {
    const uint64_t failures = FailEachAllocation([&] {
        WString out;
        {
            const FailurePause pause;
            EXPECT_TRUE(out.Assign(u"before"));
        }
        const bool done = operation(out);
        EXPECT_TRUE(done || Content(out) == u"before");
        return done;
    });
    EXPECT_GE(failures, 1u);
}

} // namespace

TEST(Platform, FullPathIsAbsoluteAndWithoutDots) {
    const ScratchFolder folder;
    const InFolder inside(Here(folder));
    const std::u16string here = Here(folder);
    EXPECT_EQ(Full(u"a"), here + u"\\a");
    EXPECT_EQ(Full(u"a/b"), here + u"\\a\\b");
    EXPECT_EQ(Full(u".\\a\\.\\b\\..\\c"), here + u"\\a\\c");
    EXPECT_EQ(Full(u"."), here);
    EXPECT_EQ(Full(here + u"\\x\\..\\y"), here + u"\\y");
    EXPECT_EQ(Full(u"a\\\\b"), here + u"\\a\\b");
    EXPECT_EQ(Full(u"a\\"), here + u"\\a\\");
}

TEST(Platform, FullPathNeverClimbsAboveTheRoot) {
    EXPECT_EQ(Full(u"C:\\..\\..\\x"), u"C:\\x");
    EXPECT_EQ(Full(u"C:\\"), u"C:\\");
    EXPECT_EQ(Full(u"C:\\a\\.."), u"C:\\");
    EXPECT_EQ(Full(u"C:/dir/a.c"), u"C:\\dir\\a.c");
}

TEST(Platform, FullPathKeepsTheNameOfAShare) {
    EXPECT_EQ(Full(u"\\\\server\\share\\x\\..\\y"), u"\\\\server\\share\\y");
    EXPECT_EQ(Full(u"//server/share/x"), u"\\\\server\\share\\x");
}

TEST(Platform, FullPathDropsALeadingAndATrailingQuote) {
    EXPECT_EQ(Full(u"\"C:\\a b\""), u"C:\\a b");
    EXPECT_EQ(Full(u"C:\\a b\""), u"C:\\a b");
    EXPECT_EQ(Full(u"\"C:\\a b"), u"C:\\a b");
}

TEST(Platform, TheEmptyPathHasNoFullForm) {
    EXPECT_EQ(Full(u""), u"failed");
    EXPECT_EQ(Full(u"\"\""), u"failed");
}

TEST(Platform, FullPathTakesLongPaths) {
    const std::u16string path = u"C:\\" + std::u16string(200, u'a') + u"\\" + std::u16string(200, u'b');
    EXPECT_EQ(Full(path), path);
}

TEST(Platform, CurrentDirectoryFollowsSetCurrentDirectory) {
    const ScratchFolder folder;
    MakeFolder(folder, "sub");
    const InFolder inside(Here(folder));
    WString out;
    ASSERT_TRUE(Platform::CurrentDirectory(out));
    EXPECT_EQ(Content(out), Here(folder));
    ASSERT_TRUE(Platform::SetCurrentDirectory(u"sub"));
    ASSERT_TRUE(Platform::CurrentDirectory(out));
    EXPECT_EQ(Content(out), folder.Path("sub"));
    EXPECT_FALSE(Platform::SetCurrentDirectory(u"missing"));
}

TEST(Platform, EntryKindTellsFilesFromDirectories) {
    const ScratchFolder folder;
    folder.Write("f", "");
    EXPECT_EQ(Platform::EntryKind(Here(folder).c_str()), Platform::Entry::Directory);
    EXPECT_EQ(Platform::EntryKind(folder.Path("f").c_str()), Platform::Entry::File);
    EXPECT_EQ(Platform::EntryKind(folder.Path("g").c_str()), Platform::Entry::Missing);
    EXPECT_EQ(Platform::EntryKind(u""), Platform::Entry::Missing);
}

TEST(Platform, SearchAlongTakesTheFirstDirectoryThatHasIt) {
    const ScratchFolder folder;
    for (const char* name : {"one", "two", "three"}) MakeFolder(folder, name);
    folder.Write("two/f.h", "");
    folder.Write("three/f.h", "");
    const std::u16string list =
        folder.Path("one") + u";" + folder.Path("missing") + u";" + folder.Path("two") + u";" + folder.Path("three");
    WString out;
    ASSERT_TRUE(Platform::SearchAlong(list.c_str(), u"f.h", out));
    EXPECT_EQ(Content(out), folder.Path("two/f.h"));
    EXPECT_FALSE(Platform::SearchAlong(list.c_str(), u"g.h", out));
    EXPECT_EQ(Content(out), folder.Path("two/f.h"));
}

TEST(Platform, SearchAlongTakesAnAbsoluteNameAsItIs) {
    const ScratchFolder folder;
    folder.Write("f.h", "");
    WString out;
    ASSERT_TRUE(Platform::SearchAlong(u"C:\\nowhere", folder.Path("f.h").c_str(), out));
    EXPECT_EQ(Content(out), folder.Path("f.h"));
}

TEST(Platform, SearchAlongTheSystemsOwnPlacesFindsTheCurrentDirectory) {
    const ScratchFolder folder;
    folder.Write("orvane-search-test.ini", "");
    const InFolder inside(Here(folder));
    WString out;
    ASSERT_TRUE(Platform::SearchAlong(nullptr, u"orvane-search-test.ini", out));
    EXPECT_EQ(Content(out), folder.Path("orvane-search-test.ini"));
}

TEST(Platform, EnvironmentVariableTellsEmptyFromMissing) {
    SetVariable("ORVANE_TEST_VALUE=some value");
    WString out;
    ASSERT_TRUE(Platform::EnvironmentVariable(u"ORVANE_TEST_VALUE", out));
    EXPECT_EQ(Content(out), u"some value");
    EXPECT_FALSE(Platform::EnvironmentVariable(u"ORVANE_TEST_MISSING", out));
    EXPECT_EQ(Content(out), u"some value");
}

TEST(Platform, ExpandEnvironmentReplacesKnownVariablesOnly) {
    SetVariable("ORVANE_TEST_A=alpha");
    SetVariable("ORVANE_TEST_B=beta");
    EXPECT_EQ(Expanded(u"%ORVANE_TEST_A%;x\\%ORVANE_TEST_B%\\y"), u"alpha;x\\beta\\y");
    EXPECT_EQ(Expanded(u"%ORVANE_TEST_MISSING%;%ORVANE_TEST_A%"), u"%ORVANE_TEST_MISSING%;alpha");
    EXPECT_EQ(Expanded(u"100% sure"), u"100% sure");
    EXPECT_EQ(Expanded(u"%%"), u"%%");
    EXPECT_EQ(Expanded(u"%ORVANE_TEST_A"), u"%ORVANE_TEST_A");
    EXPECT_EQ(Expanded(u"a%b%ORVANE_TEST_A%"), u"a%b%ORVANE_TEST_A%");
    EXPECT_EQ(Expanded(u""), u"");
}

TEST(Platform, ExpandEnvironmentTakesLongValues) {
    static const std::string assignment = "ORVANE_TEST_LONG=" + std::string(3000, 'x');
    SetVariable(assignment.c_str());
    std::u16string expected(3002, u'x');
    expected.front() = u'<';
    expected.back() = u'>';
    EXPECT_EQ(Expanded(u"<%ORVANE_TEST_LONG%>"), expected);
    WString out;
    ASSERT_TRUE(Platform::EnvironmentVariable(u"ORVANE_TEST_LONG", out));
    EXPECT_EQ(out.Length(), 3000u);
}

TEST(Platform, FillingAStringFailsCleanlyWithoutMemory) {
    const ScratchFolder folder;
    folder.Write("f", "");
    SetVariable("ORVANE_TEST_A=alpha");
    const std::u16string list = Here(folder);
    ExpectUnchangedOnFailure([](WString& out) { return Platform::FullPath(u"a\\b", out); });
    ExpectUnchangedOnFailure([](WString& out) { return Platform::CurrentDirectory(out); });
    ExpectUnchangedOnFailure([](WString& out) { return Platform::EnvironmentVariable(u"ORVANE_TEST_A", out); });
    ExpectUnchangedOnFailure([](WString& out) {
        const bool done = Platform::ExpandEnvironment(u"%ORVANE_TEST_A%!", out);
        EXPECT_TRUE(!done || Content(out) == u"alpha!");
        return done;
    });
    ExpectUnchangedOnFailure([&](WString& out) { return Platform::SearchAlong(list.c_str(), u"f", out); });
}

TEST(Platform, TicksAndTimeNeverRunBackwards) {
    uint64_t ticks = Platform::Ticks();
    Platform::FileTime time = Platform::Now();
    for (int i = 0; i < 1000; ++i) {
        const uint64_t later = Platform::Ticks();
        EXPECT_GE(later, ticks);
        ticks = later;
        const Platform::FileTime laterTime = Platform::Now();
        EXPECT_GE(laterTime, time);
        time = laterTime;
    }
}

TEST(Platform, WaitLetsTheTimePass) {
    const uint64_t begun = Platform::Ticks();
    for (int i = 0; i < 1000 && Platform::Ticks() == begun; ++i) Platform::Wait(1);
    EXPECT_GT(Platform::Ticks(), begun);
    uint64_t ticks = 5;
    Platform::SetTestClock(&ticks);
    Platform::Wait(60'000); // at once
    EXPECT_EQ(Platform::Ticks(), 60'005u);
    Platform::SetTestClock(nullptr);
}

TEST(Platform, CompareNamesIgnoresCase) {
    EXPECT_EQ(Platform::CompareNames(u"C:\\Dir\\A.c", u"c:\\dir\\a.C"), 0);
    EXPECT_NE(Platform::CompareNames(u"a", u"b"), 0);
    EXPECT_NE(Platform::CompareNames(u"a", u"ab"), 0);
    EXPECT_EQ(Platform::CompareNames(u"\u00C4", u"\u00E4"), 0);
    EXPECT_EQ(Platform::CompareNames(u"\u0416", u"\u0436"), 0);
}
