#include "base/Path.h"

#include "base/WString.h"
#include "support/FailureInjection.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace {

std::u16string Content(const WString& string) { return {string.Text(), string.Length()}; }

std::u16string WithoutLast(const Char* path) {
    WString string;
    EXPECT_TRUE(string.Assign(path));
    Path::RemoveLastComponent(string);
    return Content(string);
}

std::u16string Joined(const Char* path, const Char* name) {
    WString string;
    EXPECT_TRUE(string.Assign(path));
    EXPECT_TRUE(Path::Join(string, name));
    return Content(string);
}

} // namespace

TEST(Path, AVolumeIsADriveOrAShareHoweverThePathIsWritten) {
    struct Case {
        std::u16string path;
        std::u16string name;
        bool isShare;
    };
    const Case cases[] = {
        {u"C:\\dir\\a.c", u"C:", false},
        {u"c:", u"c:", false},
        {u"\\\\?\\C:\\dir", u"C:", false},
        {u"\\\\.\\C:\\dir", u"C:", false},
        {u"\\\\server\\share\\dir\\a.c", u"server\\share", true},
        {u"\\\\server\\share", u"server\\share", true},
        {u"\\\\server", u"server", true},
        {u"\\\\?\\UNC\\server\\share\\a.c", u"server\\share", true},
        {u"\\\\.\\unc\\server\\share\\a.c", u"server\\share", true},
        {u"\\\\?\\Volume{1-2}\\dir", u"Volume{1-2}", false},
        {u"\\dir\\a.c", u"", false},
        {u"a.c", u"", false},
        {u"", u"", false},
    };
    for (const Case& expected : cases) {
        const Path::Volume volume = Path::VolumeOf(expected.path.c_str());
        EXPECT_EQ(std::u16string(volume.name, volume.length), expected.name);
        EXPECT_EQ(volume.isShare, expected.isShare) << testing::PrintToString(expected.path);
    }
}

TEST(Path, ADeviceIsWhatIsNoFileOfAVolume) {
    for (const Char* path :
         {u"\\\\.\\nul", u"\\\\.\\COM1", u"\\\\.\\PhysicalDrive0", u"\\\\?\\PhysicalDrive0", u"\\\\.\\C:", u"\\\\?\\c:",
          u"\\\\?\\Volume{1-2}", u"\\\\.\\pipe\\name", u"\\\\?\\GLOBALROOT\\Device\\Harddisk0\\Partition1"})
        EXPECT_TRUE(Path::IsDevice(path)) << testing::PrintToString(std::u16string(path));
    for (const Char* path :
         {u"", u"a", u"C:\\a", u"C:", u"\\a", u"\\\\server\\share\\a", u"\\\\.\\C:\\a", u"\\\\?\\C:\\dir\\a",
          u"\\\\?\\UNC\\server\\share\\a", u"\\\\.\\unc\\server\\share\\a", u"\\\\?\\volume{1-2}\\a"})
        EXPECT_FALSE(Path::IsDevice(path)) << testing::PrintToString(std::u16string(path));
}

TEST(Path, FileNameFollowsTheLastSeparator) {
    EXPECT_EQ(std::u16string(Path::FileName(u"C:\\dir\\a.c")), u"a.c");
    EXPECT_EQ(std::u16string(Path::FileName(u"C:\\dir/b.c")), u"b.c");
    EXPECT_EQ(std::u16string(Path::FileName(u"a.c")), u"a.c");
    EXPECT_EQ(std::u16string(Path::FileName(u"C:a.c")), u"a.c");
    EXPECT_EQ(std::u16string(Path::FileName(u"C:\\dir\\")), u"");
    EXPECT_EQ(std::u16string(Path::FileName(u"C:")), u"");
    EXPECT_EQ(std::u16string(Path::FileName(u"")), u"");
    EXPECT_EQ(std::u16string(Path::FileName(u"\\\\server\\share\\x")), u"x");
}

TEST(Path, AColonThatIsNoDrivesBelongsToTheName) {
    EXPECT_EQ(std::u16string(Path::FileName(u"ab:c")), u"ab:c");
    EXPECT_EQ(std::u16string(Path::FileName(u"1:c")), u"1:c");
}

TEST(Path, ExtensionBeginsAtTheLastFullStopOfTheName) {
    EXPECT_EQ(std::u16string(Path::Extension(u"C:\\a.b\\x.tar.gz")), u".gz");
    EXPECT_EQ(std::u16string(Path::Extension(u"C:\\a.b\\x")), u"");
    EXPECT_EQ(std::u16string(Path::Extension(u".profile")), u".profile");
    EXPECT_EQ(std::u16string(Path::Extension(u"x.")), u".");
    const Char* const path = u"dir.x\\name";
    EXPECT_EQ(Path::Extension(path), path + 10);
}

TEST(Path, RemoveLastComponentCutsTheNameAndItsBackslash) {
    EXPECT_EQ(WithoutLast(u"C:\\a\\b"), u"C:\\a");
    EXPECT_EQ(WithoutLast(u"a\\b\\c.txt"), u"a\\b");
    EXPECT_EQ(WithoutLast(u"C:\\a\\"), u"C:\\a");
    EXPECT_EQ(WithoutLast(u"\\\\server\\share\\x"), u"\\\\server\\share");
}

TEST(Path, RootsKeepTheirBackslash) {
    EXPECT_EQ(WithoutLast(u"C:\\a"), u"C:\\");
    EXPECT_EQ(WithoutLast(u"C:\\"), u"C:\\");
    EXPECT_EQ(WithoutLast(u"C:a"), u"C:");
    EXPECT_EQ(WithoutLast(u"\\x"), u"\\");
    EXPECT_EQ(WithoutLast(u"\\"), u"\\");
    EXPECT_EQ(WithoutLast(u"\\\\server"), u"\\\\");
}

TEST(Path, ALoneNameBecomesEmpty) {
    EXPECT_EQ(WithoutLast(u"*.c"), u"");
    EXPECT_EQ(WithoutLast(u""), u"");
}

TEST(Path, JoinAddsABackslashOnlyWhereOneIsMissing) {
    EXPECT_EQ(Joined(u"C:\\a", u"b"), u"C:\\a\\b");
    EXPECT_EQ(Joined(u"C:\\", u"b"), u"C:\\b");
    EXPECT_EQ(Joined(u"", u"b"), u"b");
    EXPECT_EQ(Joined(u"a", u""), u"a\\");
}

TEST(Path, AFailingJoinLeavesThePathAsItWas) {
    const uint64_t failures = FailEachAllocation([] {
        WString path;
        {
            const FailurePause pause;
            EXPECT_TRUE(path.Reserve(4) && path.Assign(u"C:\\a"));
        }
        const bool done = Path::Join(path, u"a name that is longer than the path");
        EXPECT_EQ(Content(path), done ? u"C:\\a\\a name that is longer than the path" : u"C:\\a");
        return done;
    });
    EXPECT_EQ(failures, 2u);
}
