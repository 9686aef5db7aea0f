#include "base/Platform.h"

#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>

using Platform::File;

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

std::string Content(const Platform::ByteBlock& block) {
    return {reinterpret_cast<const char*>(block.bytes), block.size};
}

// Midnight of the first of January 2020, in both countings.
constexpr Platform::FileTime NewYear2020 = 132'223'104'000'000'000u;
constexpr auto NewYear2020System = std::chrono::sys_seconds(std::chrono::seconds(1'577'836'800));

void SetTime(const ScratchFolder& folder, const char* name) {
    std::error_code error;
    std::filesystem::last_write_time(folder.File(name), std::chrono::file_clock::from_sys(NewYear2020System), error);
    EXPECT_FALSE(error);
}

std::multiset<std::u16string> Found(const std::u16string& pattern) {
    std::multiset<std::u16string> names;
    Platform::FileSearch search;
    for (bool more = search.First(pattern.c_str()); more; more = search.Next()) {
        const std::u16string name = search.Name();
        if (name != u"." && name != u"..") names.insert(name);
    }
    return names;
}

} // namespace

TEST(ReadWholeFile, ReadsEveryByteAndTheTime) {
    const ScratchFolder folder;
    const std::string bytes("a\0b\r\n\xFF\x1A"
                            "c",
                            8);
    folder.Write("f", bytes);
    SetTime(folder, "f");
    Platform::ByteBlock block;
    Platform::FileTime time = 0;
    ASSERT_TRUE(Platform::ReadWholeFile(folder.Path("f").c_str(), block, &time));
    EXPECT_EQ(Content(block), bytes);
    EXPECT_EQ(time, NewYear2020);
}

TEST(ReadWholeFile, AnEmptyFileIsNoFailure) {
    const ScratchFolder folder;
    folder.Write("f", "");
    Platform::ByteBlock block;
    ASSERT_TRUE(Platform::ReadWholeFile(folder.Path("f").c_str(), block));
    EXPECT_EQ(block.size, 0u);
    EXPECT_NE(block.bytes, nullptr);
}

TEST(ReadWholeFile, ReplacesWhatTheBlockHeld) {
    const ScratchFolder folder;
    folder.Write("a", "first");
    folder.Write("b", "second one");
    Platform::ByteBlock block;
    ASSERT_TRUE(Platform::ReadWholeFile(folder.Path("a").c_str(), block));
    ASSERT_TRUE(Platform::ReadWholeFile(folder.Path("b").c_str(), block));
    EXPECT_EQ(Content(block), "second one");
}

TEST(ReadWholeFile, RefusesWhatIsNoFile) {
    const ScratchFolder folder;
    MakeFolder(folder, "sub");
    Platform::ByteBlock block;
    Platform::FileTime time = 5;
    EXPECT_FALSE(Platform::ReadWholeFile(folder.Path("missing").c_str(), block, &time));
    EXPECT_FALSE(Platform::ReadWholeFile(folder.Path("sub").c_str(), block, &time));
    for (const Char* device : {u"NUL", u"CON", u"\\dev\\null", u"\\dev\\zero", u""})
        EXPECT_FALSE(Platform::ReadWholeFile(device, block, &time)) << std::filesystem::path(device).string();
    EXPECT_EQ(block.bytes, nullptr);
    EXPECT_EQ(time, 5u);
}

TEST(ReadWholeFile, RefusesFourGibibytes) {
    const ScratchFolder folder;
    folder.Write("f", "");
    std::error_code error;
    std::filesystem::resize_file(folder.File("f"), Platform::LargestWholeFile + 1, error);
    if (error) GTEST_SKIP() << "no sparse files here";
    Platform::ByteBlock block;
    EXPECT_FALSE(Platform::ReadWholeFile(folder.Path("f").c_str(), block));
}

TEST(ReadWholeFile, LeavesEverythingWhenAnyCallFails) {
    const ScratchFolder folder;
    folder.Write("f", "content");
    const auto read = [&] {
        Platform::ByteBlock block;
        Platform::FileTime time = 5;
        const bool done = Platform::ReadWholeFile(folder.Path("f").c_str(), block, &time);
        if (!done) {
            EXPECT_EQ(block.bytes, nullptr);
            EXPECT_EQ(block.size, 0u);
            EXPECT_EQ(time, 5u);
        }
        return done;
    };
    EXPECT_EQ(FailEachFileCall(read), 4u); // open, size, time, read
    EXPECT_GE(FailEachAllocation(read), 1u);
}

TEST(File, WritesSeeksAndReads) {
    const ScratchFolder folder;
    const std::u16string path = folder.Path("f");
    {
        File file;
        ASSERT_TRUE(file.Open(path.c_str(), File::Mode::Create));
        ASSERT_TRUE(file.Write("hello", 5) && file.Write("", 0) && file.Write(" world", 6) && file.Flush());
    }
    EXPECT_EQ(folder.Read("f"), "hello world");

    File file;
    ASSERT_TRUE(file.Open(path.c_str(), File::Mode::ReadWrite));
    uint64_t size = 0;
    ASSERT_TRUE(file.GetSize(size));
    EXPECT_EQ(size, 11u);
    ASSERT_TRUE(file.Seek(6) && file.Write("W", 1) && file.Seek(4));
    char bytes[100];
    size_t read = 0;
    ASSERT_TRUE(file.Read(bytes, 3, read));
    EXPECT_EQ(std::string(bytes, read), "o W");
    ASSERT_TRUE(file.Read(bytes, 100, read)); // fewer are there
    EXPECT_EQ(std::string(bytes, read), "orld");
    ASSERT_TRUE(file.Read(bytes, 100, read)); // at the end
    EXPECT_EQ(read, 0u);
}

TEST(File, CreateEmptiesWhatIsThere) {
    const ScratchFolder folder;
    folder.Write("f", "a long content");
    {
        File file;
        ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::Create));
        ASSERT_TRUE(file.Write("x", 1));
    }
    EXPECT_EQ(folder.Read("f"), "x");
}

TEST(File, OverwriteKeepsTheBytesUntilTheyAreReplacedOrCutOff) {
    const ScratchFolder folder;
    folder.Write("f", "a long content");
    for (const char* expected : {"a long content", "xylong content", "xy"}) {
        File file;
        ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::Overwrite));
        ASSERT_TRUE(*expected != 'x' || file.Write("xy", 2));
        ASSERT_TRUE(expected[2] || file.CutHere());
        file.Close();
        EXPECT_EQ(folder.Read("f"), expected);
    }
    File made;
    EXPECT_TRUE(made.Open(folder.Path("new").c_str(), File::Mode::Overwrite));
}

TEST(File, CreateNewTakesNoNameThatIsThere) {
    const ScratchFolder folder;
    folder.Write("f", "content");
    File file;
    EXPECT_FALSE(file.Open(folder.Path("f").c_str(), File::Mode::CreateNew));
    EXPECT_EQ(folder.Read("f"), "content");
    ASSERT_TRUE(file.Open(folder.Path("new").c_str(), File::Mode::CreateNew));
    EXPECT_TRUE(file.Write("x", 1));
}

TEST(File, AloneIsRefusedWhileAnotherWrites) {
    const ScratchFolder folder;
    File writer;
    ASSERT_TRUE(writer.Open(folder.Path("f").c_str(), File::Mode::CreateNew));
    File file;
    EXPECT_FALSE(file.Open(folder.Path("f").c_str(), File::Mode::Alone));
    writer.Close();
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::Alone));
    File second;
    EXPECT_FALSE(second.Open(folder.Path("f").c_str(), File::Mode::Alone));
}

TEST(File, RoomIsReservedWithoutASize) {
    const ScratchFolder folder;
    folder.Write("f", "content");
    File file;
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::Overwrite));
    EXPECT_TRUE(file.Reserve(100000));
    EXPECT_TRUE(file.Reserve(1));
    file.Close();
    EXPECT_EQ(folder.Read("f"), "content");
}

TEST(File, ThereIsNoRoomForMoreThanAnyDiskHolds) {
    const ScratchFolder folder;
    File file;
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::Overwrite));
    if (std::filesystem::path::preferred_separator != '/') GTEST_SKIP() << "Wine reserves none";
    EXPECT_TRUE(file.Reserve(1));
    EXPECT_FALSE(file.Reserve(uint64_t{1} << 62));
}

TEST(File, SeeksPastFourGibibytes) {
    const ScratchFolder folder;
    File file;
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::Create));
    constexpr uint64_t Far = 0x1'0000'0005u;
    if (!file.Seek(Far) || !file.Write("x", 1)) GTEST_SKIP() << "no sparse files here";
    uint64_t size = 0;
    ASSERT_TRUE(file.GetSize(size));
    EXPECT_EQ(size, Far + 1);
}

TEST(File, OnlyCreateMakesAFile) {
    const ScratchFolder folder;
    const std::u16string path = folder.Path("missing");
    for (const auto mode : {File::Mode::Attributes, File::Mode::ReadShared, File::Mode::ReadWrite, File::Mode::Alone}) {
        File file;
        EXPECT_FALSE(file.Open(path.c_str(), mode));
        EXPECT_FALSE(file.IsOpen());
    }
    EXPECT_EQ(Platform::EntryKind(path.c_str()), Platform::Entry::Missing);
}

TEST(File, NoModeOpensAFolder) {
    const ScratchFolder folder;
    for (const auto mode : {File::Mode::Attributes, File::Mode::ReadShared, File::Mode::ReadWrite, File::Mode::Create,
                            File::Mode::Overwrite, File::Mode::CreateNew, File::Mode::Alone}) {
        File file;
        EXPECT_FALSE(file.Open(Here(folder).c_str(), mode));
    }
}

TEST(File, NoModeOpensADevice) {
    for (const auto mode : {File::Mode::Attributes, File::Mode::ReadShared, File::Mode::ReadWrite, File::Mode::Create})
        for (const Char* device : {u"NUL", u"nul", u"CON", u"COM1", u"C:\\nul", u"\\dev\\null"}) {
            // Elsewhere than on Windows some of these are plain names.
            if (mode == File::Mode::Create && std::filesystem::path::preferred_separator == '/' && *device != u'\\')
                continue;
            File file;
            EXPECT_FALSE(file.Open(device, mode)) << std::filesystem::path(device).string();
        }
}

TEST(File, ATimeIsReadWhileTheFileIsInUse) {
    const ScratchFolder folder;
    folder.Write("f", "content");
    SetTime(folder, "f");
    File user;
    ASSERT_TRUE(user.Open(folder.Path("f").c_str(), File::Mode::ReadWrite));
    File asking;
    ASSERT_TRUE(asking.Open(folder.Path("f").c_str(), File::Mode::Attributes));
    Platform::FileTime time = 0;
    EXPECT_TRUE(asking.GetTime(time));
    EXPECT_EQ(time, NewYear2020);
    MakeFolder(folder, "sub");
    for (const char* other : {"missing", "sub"})
        EXPECT_FALSE(asking.Open(folder.Path(other).c_str(), File::Mode::Attributes)) << other;
}

TEST(File, OpeningAgainClosesTheFirst) {
    const ScratchFolder folder;
    folder.Write("a", "1");
    folder.Write("b", "22");
    File file;
    ASSERT_TRUE(file.Open(folder.Path("a").c_str(), File::Mode::ReadShared));
    ASSERT_TRUE(file.Open(folder.Path("b").c_str(), File::Mode::ReadShared));
    uint64_t size = 0;
    ASSERT_TRUE(file.GetSize(size));
    EXPECT_EQ(size, 2u);
    EXPECT_FALSE(file.Open(folder.Path("missing").c_str(), File::Mode::ReadShared));
    EXPECT_FALSE(file.IsOpen());
    file.Close();
}

TEST(File, WritingToAFileOpenedForReadingFails) {
    const ScratchFolder folder;
    folder.Write("f", "x");
    File file;
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::ReadShared));
    EXPECT_FALSE(file.Write("y", 1));
    size_t read = 9;
    char byte = 0;
    EXPECT_TRUE(file.Read(&byte, 1, read));
    EXPECT_EQ(byte, 'x');
}

TEST(File, ReadsAtAPlaceUpToTheEnd) {
    const ScratchFolder folder;
    folder.Write("f", "0123456789");
    File file;
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::ReadWrite));
    char out[8] = {};
    size_t read = 99;
    EXPECT_TRUE(file.ReadAt(3, out, 4, read));
    EXPECT_EQ(std::string(out, read), "3456");
    EXPECT_TRUE(file.ReadAt(7, out, 8, read));
    EXPECT_EQ(std::string(out, read), "789");
    EXPECT_TRUE(file.ReadAt(0, out, 2, read)); // back again
    EXPECT_EQ(std::string(out, read), "01");
    for (const uint64_t offset : {uint64_t{10}, uint64_t{11}, uint64_t{5} << 32}) {
        read = 99;
        EXPECT_TRUE(file.ReadAt(offset, out, 8, read));
        EXPECT_EQ(read, 0u);
    }
    File closed;
    EXPECT_FALSE(closed.ReadAt(0, out, 1, read));
}

TEST(File, TellsWhenItWasDeleted) {
    const ScratchFolder folder;
    folder.Write("f", "content");
    File file;
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::ReadWrite));
    EXPECT_FALSE(file.IsDeleted());
    std::error_code error;
    std::filesystem::remove(folder.File("f"), error);
    ASSERT_FALSE(error);
    if (std::filesystem::exists(folder.File("f"))) GTEST_SKIP() << "deleted here only once it is closed";
    EXPECT_TRUE(file.IsDeleted());
}

TEST(File, TellsWhetherAPathLeadsToIt) {
    const ScratchFolder folder;
    folder.Write("f", "content");
    folder.Write("other", "content");
    File file;
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::ReadWrite));
    EXPECT_TRUE(file.IsAt(folder.Path("f").c_str()));
    EXPECT_FALSE(file.IsAt(folder.Path("other").c_str()));
    EXPECT_FALSE(file.IsAt(folder.Path("missing").c_str()));
    EXPECT_FALSE(file.IsAt(folder.Path("missing\\f").c_str()));
    std::error_code error;
    std::filesystem::rename(folder.File("f"), folder.File("g"), error);
    ASSERT_FALSE(error);
    EXPECT_FALSE(file.IsAt(folder.Path("f").c_str()));
    folder.Write("f", "content"); // the old one is a copy for safety now
    EXPECT_FALSE(file.IsAt(folder.Path("f").c_str()));
    std::filesystem::rename(folder.File("g"), folder.File("f"), error);
    ASSERT_FALSE(error);
    EXPECT_TRUE(file.IsAt(folder.Path("f").c_str()));
}

TEST(File, TwoPathsAreTheSameFileHoweverItIsNamed) {
    const ScratchFolder folder;
    const std::u16string file = folder.Write("f", "content");
    const std::u16string other = folder.Write("other", "content");
    std::filesystem::create_hard_link(folder.File("f"), folder.File("linked"));
    EXPECT_TRUE(Platform::IsSameFile(file.c_str(), file.c_str()));
    EXPECT_TRUE(Platform::IsSameFile(file.c_str(), folder.Path("linked").c_str()));
    EXPECT_FALSE(Platform::IsSameFile(file.c_str(), other.c_str()));
    EXPECT_FALSE(Platform::IsSameFile(file.c_str(), folder.Path("missing").c_str()));
    EXPECT_FALSE(Platform::IsSameFile(folder.Path("missing").c_str(), folder.Path("missing").c_str()));
    EXPECT_FALSE(Platform::IsSameFile(u"", file.c_str()));
}

TEST(File, ReadAtFailsWhereBytesWereMadeUnreadable) {
    const ScratchFolder folder;
    folder.Write("f", "0123456789");
    File file;
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::ReadShared));
    char out[10];
    size_t read = 0;
    Platform::SetUnreadableBytes(4, 6);
    EXPECT_TRUE(file.ReadAt(0, out, 4, read));
    EXPECT_FALSE(file.ReadAt(0, out, 5, read));
    EXPECT_FALSE(file.ReadAt(5, out, 1, read));
    EXPECT_TRUE(file.ReadAt(6, out, 4, read));
    Platform::SetUnreadableBytes(0, 0);
    EXPECT_TRUE(file.ReadAt(0, out, 10, read));
}

TEST(File, EveryCallFailsInTurn) {
    const ScratchFolder folder;
    const uint64_t failures = FailEachFileCall([&] {
        File file;
        uint64_t size = 0;
        Platform::FileTime time = 0;
        char byte = 0;
        size_t read = 0;
        return file.Open(folder.Path("f").c_str(), File::Mode::Create) && file.Write("x", 1) && file.Flush() &&
               file.Open(folder.Path("f").c_str(), File::Mode::ReadShared) && file.GetSize(size) &&
               file.GetTime(time) && file.Seek(0) && file.Read(&byte, 1, read) && file.ReadAt(0, &byte, 1, read);
    });
    EXPECT_EQ(failures, 9u);
}

TEST(File, TakesNamesBeyondTheOldLimitAndOutsideAscii) {
    const ScratchFolder folder;
    const std::u16string names[] = {std::u16string(240, u'n') + u".txt", u"\u00E4\u4E2D \u0416.txt"};
    for (const std::u16string& name : names) {
        const std::u16string path = Here(folder) + u"\\" + name;
        {
            File file;
            ASSERT_TRUE(file.Open(path.c_str(), File::Mode::Create));
            ASSERT_TRUE(file.Write("x", 1));
        }
        EXPECT_EQ(Platform::EntryKind(path.c_str()), Platform::Entry::File);
        Platform::ByteBlock block;
        ASSERT_TRUE(Platform::ReadWholeFile(path.c_str(), block));
        EXPECT_EQ(Content(block), "x");
        EXPECT_EQ(Found(path), std::multiset<std::u16string>{name});
    }
}

TEST(File, TellsTheTimeOfItsLastWrite) {
    const ScratchFolder folder;
    folder.Write("f", "x");
    SetTime(folder, "f");
    File file;
    Platform::FileTime time = 0;
    ASSERT_TRUE(file.Open(folder.Path("f").c_str(), File::Mode::ReadShared));
    ASSERT_TRUE(file.GetTime(time));
    EXPECT_EQ(time, NewYear2020);
    EXPECT_GT(Platform::Now(), NewYear2020);
}

TEST(FileSearch, WildcardsMatchWithoutRegardToCase) {
    const ScratchFolder folder;
    for (const char* name : {"a.c", "b.C", "ab.h", "noextension", "x.cpp"}) folder.Write(name, "");
    MakeFolder(folder, "dir.c");
    using Names = std::multiset<std::u16string>;
    EXPECT_EQ(Found(folder.Path("*.c")), (Names{u"a.c", u"b.C", u"dir.c"}));
    EXPECT_EQ(Found(folder.Path("?.c")), (Names{u"a.c", u"b.C"}));
    EXPECT_EQ(Found(folder.Path("A*")), (Names{u"a.c", u"ab.h"}));
    EXPECT_EQ(Found(folder.Path("*b*")), (Names{u"ab.h", u"b.C"}));
    EXPECT_EQ(Found(folder.Path("*.x")), Names{});
    EXPECT_EQ(Found(folder.Path("missing\\*")), Names{});
}

TEST(FileSearch, StarDotStarNamesEverything) {
    const ScratchFolder folder;
    folder.Write("noextension", "");
    folder.Write("a.b", "");
    using Names = std::multiset<std::u16string>;
    EXPECT_EQ(Found(folder.Path("*.*")), (Names{u"a.b", u"noextension"}));
    EXPECT_EQ(Found(folder.Path("*")), (Names{u"a.b", u"noextension"}));
}

TEST(FileSearch, APlainNameMatchesItself) {
    const ScratchFolder folder;
    folder.Write("a.c", "");
    MakeFolder(folder, "sub");
    Platform::FileSearch search;
    ASSERT_TRUE(search.First(folder.Path("a.c").c_str()));
    EXPECT_EQ(std::u16string(search.Name()), u"a.c");
    EXPECT_FALSE(search.IsDirectory());
    EXPECT_FALSE(search.Next());
    ASSERT_TRUE(search.First(folder.Path("sub").c_str()));
    EXPECT_TRUE(search.IsDirectory());
    EXPECT_FALSE(search.First(folder.Path("none").c_str()));
    EXPECT_FALSE(search.Next());
}

TEST(FileSearch, FindsNothingInTheEmptyPatternOrAFolderName) {
    const ScratchFolder folder;
    Platform::FileSearch search;
    EXPECT_FALSE(search.First(u""));
    EXPECT_FALSE(search.First((Here(folder) + u"\\").c_str()));
}

TEST(FileSearch, SearchesTheCurrentDirectoryForABareName) {
    const ScratchFolder folder;
    folder.Write("only-here.txt", "");
    WString before;
    ASSERT_TRUE(Platform::CurrentDirectory(before));
    ASSERT_TRUE(Platform::SetCurrentDirectory(Here(folder).c_str()));
    const auto found = Found(u"only*.TXT");
    ASSERT_TRUE(Platform::SetCurrentDirectory(before.Text()));
    EXPECT_EQ(found, std::multiset<std::u16string>{u"only-here.txt"});
}

TEST(FileSearch, FailsCleanlyWithoutMemory) {
    const ScratchFolder folder;
    folder.Write("a.c", "");
    const uint64_t failures = FailEachAllocation([&] {
        Platform::FileSearch search;
        return search.First(folder.Path("*.c").c_str());
    });
    EXPECT_GE(failures, 1u);
}
