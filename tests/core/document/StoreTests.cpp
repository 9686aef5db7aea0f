#include "document/TextStore.h"

#include "support/FailureInjection.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace {

std::u16string TextOf(const TextStore& store) { return {store.Text(), store.Length()}; }

bool Insert(TextStore& store, uint32_t offset, const std::u16string& text) {
    const auto lines = static_cast<uint32_t>(std::count(text.begin(), text.end(), u'\n'));
    return store.Insert(offset, text.data(), {static_cast<uint32_t>(text.size()), lines});
}

} // namespace

TEST(Store, AnAbsentTextHasOneLineAndNoCharacters) {
    TextStore store;
    EXPECT_EQ(store.Text(), nullptr);
    EXPECT_EQ(store.Length(), 0u);
    EXPECT_EQ(store.LineCount(), 1u);
    EXPECT_EQ(store.LineToOffset(7), 0u);
    uint32_t start = 9;
    EXPECT_EQ(store.OffsetToLine(7, start), 0u);
    EXPECT_EQ(start, 0u);
    store.Empty();
    EXPECT_EQ(store.Text(), nullptr) << "stays absent";
}

TEST(Store, GrowsToExactlyWhatIsNeeded) {
    TextStore store;
    ASSERT_TRUE(Insert(store, 0, u"one\nthree"));
    EXPECT_EQ(store.Capacity(), 10u);
    ASSERT_TRUE(Insert(store, 4, u"two\n"));
    EXPECT_EQ(TextOf(store), u"one\ntwo\nthree");
    EXPECT_EQ(store.Capacity(), 14u);
    EXPECT_EQ(store.LineCount(), 3u);
    EXPECT_EQ(store.Text()[store.Length()], 0);
    store.Delete(0, {4, 1});
    EXPECT_EQ(TextOf(store), u"two\nthree");
    EXPECT_EQ(store.Capacity(), 14u);
}

TEST(Store, ATextOfTheGreatestLengthIsRefused) {
    TextStore store;
    EXPECT_FALSE(store.EnsureCapacity(UINT32_MAX));
    EXPECT_EQ(store.Text(), nullptr);
}

TEST(Store, AFailedInsertionLeavesTheText) {
    FailEachAllocation([] {
        TextStore store;
        {
            const FailurePause pause;
            EXPECT_TRUE(Insert(store, 0, u"abc\n"));
        }
        const bool done = Insert(store, 1, std::u16string(5000, u'x'));
        if (!done) {
            EXPECT_EQ(TextOf(store), u"abc\n");
            EXPECT_EQ(store.LineCount(), 2u);
        }
        return done;
    });
}

TEST(Store, ALineIsReplacedWithTheLinesAfterItKept) {
    TextStore store;
    ASSERT_TRUE(Insert(store, 0, u"one\ntwo\nthree"));
    EXPECT_EQ(store.LineToOffset(2), 8u);
    ASSERT_TRUE(store.ReplaceLine({4, 8}, u"longer\n", 7));
    EXPECT_EQ(TextOf(store), u"one\nlonger\nthree");
    EXPECT_EQ(store.LineToOffset(2), 11u) << "the remembered line has moved";
    ASSERT_TRUE(store.ReplaceLine({4, 11}, u"\n", 1));
    EXPECT_EQ(TextOf(store), u"one\n\nthree");
    // The last line goes with the terminator.
    ASSERT_TRUE(store.ReplaceLine({5, 11}, u"four", 5));
    EXPECT_EQ(std::u16string(store.Text()), u"one\n\nfour");
}

TEST(Store, AppendedTextMovesTheStartOfTheLastLine) {
    TextStore store;
    ASSERT_TRUE(Insert(store, 0, u"one\ntw"));
    EXPECT_EQ(store.LastLineStart(), 4u);
    ASSERT_TRUE(store.EnsureCapacity(20));
    store.Data()[6] = u'o';
    store.Appended({1, 0});
    EXPECT_EQ(store.LastLineStart(), 4u);
    store.Data()[7] = u'\n';
    store.Data()[8] = u'x';
    store.Appended({2, 1});
    EXPECT_EQ(TextOf(store), u"one\ntwo\nx");
    EXPECT_EQ(store.LastLineStart(), 8u);
    EXPECT_EQ(store.LineCount(), 3u);
    store.Delete(0, {4, 1});
    EXPECT_EQ(store.LastLineStart(), 4u);
}

TEST(Store, AnEmptiedTextGivesItsRoomBack) {
    TextStore store;
    ASSERT_TRUE(Insert(store, 0, u"one\ntwo"));
    store.Empty();
    EXPECT_EQ(store.Capacity(), 1u);
    EXPECT_EQ(store.LineCount(), 1u);
    EXPECT_EQ(std::u16string(store.Text()), u"");
}
