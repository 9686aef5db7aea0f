#include "document/TextSearch.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

struct Found {
    bool found = false;
    uint32_t offset = 0;
    bool wrapped = false;
    bool operator==(const Found&) const = default;
};

SearchQuery Word(const std::u16string& text) { return {text.c_str(), static_cast<uint32_t>(text.size()), true, true}; }

Found Find(const std::u16string& text, const SearchQuery& query, uint32_t from, bool backward = false,
           SearchProgress* progress = nullptr) {
    SearchHit hit;
    const TextSearch search(text.c_str(), static_cast<uint32_t>(text.size()), query);
    const bool found = search.Find({from, NoOffset, backward}, hit, progress);
    return {found, found ? hit.offset : 0, hit.wrapped};
}

// Stops after some reports.
struct Patience final : SearchProgress {
    explicit Patience(int most) : left(most) {}
    bool Continue(uint64_t done, uint64_t total) override {
        reports.push_back(done);
        EXPECT_LE(done, total);
        return left-- > 0;
    }
    int left;
    std::vector<uint64_t> reports;
};

const SearchQuery Abc = {u"abc", 3, true, false};

} // namespace

TEST(TextSearch, BothDirectionsWrapOnce) {
    const std::u16string text = u"abc abc";
    EXPECT_EQ(Find(text, Abc, 1), (Found{true, 4, false}));
    EXPECT_EQ(Find(text, Abc, 5), (Found{true, 0, true}));
    EXPECT_EQ(Find(text, Abc, 4, true), (Found{true, 0, false}));
    EXPECT_EQ(Find(text, Abc, 0, true), (Found{true, 4, true}));
    EXPECT_EQ(Find(u"ab", Abc, 1), (Found{false, 0, true}));
}

TEST(TextSearch, AWordIsNoPartOfAnother) {
    EXPECT_EQ(Find(u"cats cat", Word(u"cat"), 0), (Found{true, 5, false}));
    EXPECT_TRUE(TextSearch::IsWholeWord(u"a-b", 3, {2, 3}));
    EXPECT_FALSE(TextSearch::IsWholeWord(u"a#b", 3, {2, 3}));
    EXPECT_FALSE(TextSearch::IsWholeWord(u"a", 1, {1, 1})) << "past the end";
}

TEST(TextSearch, AStoppedSearchFindsNothing) {
    const std::u16string text = std::u16string(5'000'000, u'x') + u"abc";
    Patience enough(100);
    EXPECT_EQ(Find(text, Abc, 0, false, &enough), (Found{true, 5'000'000, false}));
    EXPECT_GE(enough.reports.size(), 4u);
    Patience little(1);
    EXPECT_FALSE(Find(text, Abc, 0, false, &little).found);
    EXPECT_EQ(little.reports.size(), 2u);
}

TEST(TextSearch, ALongQueryReportsMoreOften) {
    EXPECT_EQ((SearchQuery{u"", 1, true, false}).Slice(), 1u << 20);
    EXPECT_EQ((SearchQuery{u"", 1u << 20, true, false}).Slice(), 63u);
    EXPECT_EQ((SearchQuery{u"", 1u << 28, true, false}).Slice(), 32u);
}
