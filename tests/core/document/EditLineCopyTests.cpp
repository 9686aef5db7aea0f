#include "document/EditLine.h"

#include "support/FailureInjection.h"

#include <gtest/gtest.h>
#include <string>

namespace {

struct EditLineCopyTest : testing::Test {
    EditLineCopyTest() { EXPECT_TRUE(store.Insert(0, u"one\ntwo\nthree", {13, 2})); }
    std::u16string Content() const { return {store.Text(), store.Length()}; }
    std::u16string Copy() const { return {line.Text().Text(), line.Text().Length()}; }

    TextStore store;
    EditLine line;
};

} // namespace

TEST_F(EditLineCopyTest, NoLineIsOpenAtFirst) {
    EXPECT_FALSE(line.IsOpen());
    EXPECT_EQ(line.Number(), NoLine);
    EXPECT_FALSE(line.IsPending());
    EXPECT_EQ(line.Length(), 0u);
}

TEST_F(EditLineCopyTest, ALineIsCopiedWithItsEnd) {
    ASSERT_TRUE(line.Open(store, 1));
    EXPECT_EQ(Copy(), u"two\n");
    EXPECT_EQ(line.Start(), 4u);
    EXPECT_EQ(line.StoreLength(), 4u);
    EXPECT_EQ(line.Length(), 3u);
    ASSERT_TRUE(line.Open(store, 2));
    EXPECT_EQ(Copy(), std::u16string(u"three\0", 6)) << "the terminator ends the last line";
}

TEST_F(EditLineCopyTest, ChangesStayInTheCopyUntilItIsWrittenBack) {
    ASSERT_TRUE(line.Open(store, 1));
    ASSERT_TRUE(line.Insert(1, u"hrowa", 5));
    line.Erase({6, 8});
    line.Set(0, u'T');
    EXPECT_EQ(Copy(), u"Throwa\n");
    EXPECT_TRUE(line.IsPending());
    EXPECT_EQ(line.Growth(), 3u);
    EXPECT_EQ(Content(), u"one\ntwo\nthree");
    ASSERT_TRUE(line.WriteBack(store));
    EXPECT_EQ(Content(), u"one\nThrowa\nthree");
    EXPECT_FALSE(line.IsOpen());
    EXPECT_FALSE(line.IsPending());
    EXPECT_EQ(line.Growth(), 0u);
    EXPECT_EQ(store.LineCount(), 3u);
}

TEST_F(EditLineCopyTest, AFailedWriteBackLeavesEverythingPending) {
    ASSERT_TRUE(line.Open(store, 2));
    ASSERT_TRUE(line.Insert(5, u" and more", 9));
    Heap::SetFailureHook([] { return true; });
    const bool written = line.WriteBack(store);
    Heap::SetFailureHook(nullptr);
    EXPECT_FALSE(written);
    EXPECT_TRUE(line.IsOpen() && line.IsPending());
    EXPECT_EQ(Content(), u"one\ntwo\nthree");
    ASSERT_TRUE(line.WriteBack(store));
    EXPECT_EQ(Content(), u"one\ntwo\nthree and more");
}

TEST_F(EditLineCopyTest, AReleasedLineForgetsWhatIsPending) {
    ASSERT_TRUE(line.Open(store, 0));
    line.Erase({0, 1});
    line.Release();
    EXPECT_FALSE(line.IsOpen() || line.IsPending());
    EXPECT_EQ(Copy(), u"");
}
