#include "binary/PagedContent.h"
#include "support/FailureInjection.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using WriteResult = PagedContent::WriteResult;

// A file of three pages, the last of which is short, and its content.
class PagedContentTest : public ::testing::Test {
protected:
    static constexpr size_t Size = 2 * PageSize + 10;

    PagedContentTest() {
        path = folder.Write("file.bin", std::string(Size, 'a'));
        EXPECT_TRUE(file.Open(path.c_str()));
    }

    bool Write(uint64_t offset, const std::string& bytes) {
        return content.WriteBytes(offset, reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    std::string Read(uint64_t offset, size_t count) {
        std::string bytes(count, '\0');
        return content.ReadBytes(offset, reinterpret_cast<uint8_t*>(bytes.data()), count) ? bytes : "failed";
    }

    ScratchFolder folder;
    std::u16string path;
    FileWindow file;
    PagedContent content{file};
};

TEST_F(PagedContentTest, WrittenBytesAreReadInPlaceOfTheFiles) {
    ASSERT_TRUE(Write(PageSize - 1, "xyz"));
    EXPECT_EQ(Read(PageSize - 3, 6), "aaxyza");
    EXPECT_EQ(content.PageCount(), 2u);
    EXPECT_EQ(folder.Read("file.bin"), std::string(Size, 'a'));
}

TEST_F(PagedContentTest, NothingIsWrittenOrReadPastTheEnd) {
    EXPECT_FALSE(Write(Size - 1, "xy"));
    EXPECT_EQ(content.PageCount(), 0u);
    EXPECT_EQ(Read(Size - 1, 2), "failed");
    ASSERT_TRUE(Write(Size - 1, "x"));
    EXPECT_EQ(Read(Size - 2, 2), "ax");
}

TEST_F(PagedContentTest, APageIsTheChangedOneOrTheFiles) {
    ASSERT_TRUE(Write(2 * PageSize, "x"));
    std::vector<uint8_t> page(PageSize, 1);
    uint32_t valid = 0;
    ASSERT_TRUE(content.ReadPage(page.data(), 2 * PageSize, false, valid));
    EXPECT_EQ(valid, 10u);
    EXPECT_EQ(page[0], 'x');
    EXPECT_EQ(page[10], 0); // the rest is zero
    ASSERT_TRUE(content.ReadPage(page.data(), 2 * PageSize, true, valid));
    EXPECT_EQ(page[0], 'a');
}

TEST_F(PagedContentTest, ReadingKeepsWhatTheWindowSaysOfItself) {
    ASSERT_TRUE(file.Ensure(0, 100));
    const uint64_t start = file.Start();
    const uint32_t valid = file.Valid();
    EXPECT_EQ(Read(2 * PageSize, 3), "aaa");
    EXPECT_EQ(file.Start(), start);
    EXPECT_EQ(file.Valid(), valid);
}

TEST_F(PagedContentTest, PagesAreWrittenIntoTheFileNoLongerThanItIs) {
    ASSERT_TRUE(Write(0, "x"));
    ASSERT_TRUE(Write(Size - 1, "z"));
    EXPECT_EQ(content.WritePages(), WriteResult::Done);
    std::string expected(Size, 'a');
    expected.front() = 'x';
    expected.back() = 'z';
    EXPECT_EQ(folder.Read("file.bin"), expected);
    EXPECT_EQ(content.PageCount(), 2u); // until they are forgotten
    content.ForgetPages();
    EXPECT_EQ(Read(0, 2), "xa");
}

TEST_F(PagedContentTest, WithoutMemoryNothingChanges) {
    const uint64_t failures = FailEachAllocation([&] {
        if (Write(PageSize - 1, "xyz")) return true;
        EXPECT_EQ(content.PageCount(), 0u);
        return false;
    });
    EXPECT_EQ(failures, 2u);
    EXPECT_EQ(Read(PageSize - 1, 3), "xyz");
}

} // namespace
