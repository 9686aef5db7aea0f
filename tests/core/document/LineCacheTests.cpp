#include "document/LineCache.h"

#include "support/Random.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

struct Entry {
    uint32_t line;
    uint32_t offset;
    bool operator==(const Entry&) const = default;
};

std::vector<Entry> Entries(const LineCache& cache) {
    std::vector<Entry> entries;
    const LineCacheEntry* previous = nullptr;
    for (const LineCacheEntry* entry = cache.Head(); entry; entry = entry->next) {
        EXPECT_EQ(entry->previous, previous);
        entries.push_back({entry->line, entry->offset});
        previous = entry;
    }
    EXPECT_EQ(entries.size(), cache.Count());
    return entries;
}

} // namespace

TEST(LineCache, StartsEmpty) {
    LineCache cache;
    EXPECT_EQ(cache.NearestLine(3), nullptr);
    EXPECT_EQ(cache.NearestOffset(3), nullptr);
    EXPECT_EQ(cache.Count(), 0u);
}

TEST(LineCache, KeepsTheMostRecentlyAddedFirst) {
    LineCache cache;
    cache.Add({1, 10});
    cache.Add({2, 20});
    EXPECT_EQ(Entries(cache), (std::vector<Entry>{{2, 20}, {1, 10}}));
}

TEST(LineCache, TheSixthEntryTakesThePlaceOfTheOldest) {
    LineCache cache;
    for (uint32_t i = 1; i <= 6; ++i) cache.Add({i, 10 * i});
    EXPECT_EQ(Entries(cache), (std::vector<Entry>{{6, 60}, {5, 50}, {4, 40}, {3, 30}, {2, 20}}));
}

TEST(LineCache, FindsTheNearestLineAndOffset) {
    LineCache cache;
    cache.Add({100, 1000});
    cache.Add({10, 5000});
    EXPECT_EQ(cache.NearestLine(60)->line, 100u);
    EXPECT_EQ(cache.NearestLine(50)->line, 10u);
    EXPECT_EQ(cache.NearestOffset(2999)->offset, 1000u);
    EXPECT_EQ(cache.NearestOffset(3001)->offset, 5000u);
    EXPECT_EQ(cache.NearestLine(UINT32_MAX - 1)->line, 100u);
}

TEST(LineCache, OnATieTheMoreRecentlyAddedWins) {
    LineCache cache;
    cache.Add({10, 100});
    cache.Add({20, 200});
    EXPECT_EQ(cache.NearestLine(15)->line, 20u);
    EXPECT_EQ(cache.NearestOffset(150)->offset, 200u);
    LineCache other;
    other.Add({20, 200});
    other.Add({10, 100});
    EXPECT_EQ(other.NearestLine(15)->line, 10u);
    EXPECT_EQ(other.NearestOffset(150)->offset, 100u);
}

TEST(LineCache, AnInsertionMovesOnlyWhatFollowsIt) {
    LineCache cache;
    cache.Add({1, 10});
    cache.Add({2, 20});
    cache.Add({3, 30});
    cache.Inserted(20, {7, 2});
    EXPECT_EQ(Entries(cache), (std::vector<Entry>{{5, 37}, {2, 20}, {1, 10}}));
}

TEST(LineCache, ADeletionRemovesWhatLiesInItEndsIncluded) {
    LineCache cache;
    cache.Add({1, 9});
    cache.Add({2, 10});
    cache.Add({3, 15});
    cache.Add({4, 20});
    cache.Add({5, 21});
    cache.Deleted(10, {10, 3});
    EXPECT_EQ(Entries(cache), (std::vector<Entry>{{2, 11}, {1, 9}}));
}

TEST(LineCache, ADeletionClampsAtZero) {
    LineCache cache;
    cache.Add({2, 50});
    cache.Deleted(0, {40, 3});
    EXPECT_EQ(Entries(cache), (std::vector<Entry>{{0, 10}}));
}

TEST(LineCache, ADeletionThatEndsBeyond32BitsRemovesAllThatFollowsIt) {
    LineCache cache;
    cache.Add({1, 10});
    cache.Add({2, UINT32_MAX - 5});
    cache.Deleted(20, {UINT32_MAX - 10, 0});
    EXPECT_EQ(Entries(cache), (std::vector<Entry>{{1, 10}}));
}

TEST(LineCache, TakesEntriesAgainAfterADeletionAndAfterClear) {
    LineCache cache;
    for (uint32_t i = 0; i < 5; ++i) cache.Add({i, i});
    cache.Deleted(0, {3, 0});
    EXPECT_EQ(cache.Count(), 1u);
    for (uint32_t i = 0; i < 4; ++i) cache.Add({100 + i, 200 + i});
    EXPECT_EQ(Entries(cache), (std::vector<Entry>{{103, 203}, {102, 202}, {101, 201}, {100, 200}, {4, 1}}));
    cache.Clear();
    EXPECT_EQ(cache.Count(), 0u);
    EXPECT_EQ(cache.Head(), nullptr);
    for (uint32_t i = 0; i < 7; ++i) cache.Add({i, i});
    EXPECT_EQ(cache.Count(), 5u);
}

// The same rules over a plain vector.
class LineCacheModel {
public:
    void Add(uint32_t line, uint32_t offset) {
        if (entries.size() == 5) entries.pop_back();
        entries.insert(entries.begin(), {line, offset});
    }
    void Inserted(uint32_t position, uint32_t characters, uint32_t newLines) {
        for (Entry& entry : entries) {
            if (entry.offset > position) entry = {entry.line + newLines, entry.offset + characters};
        }
    }
    void Deleted(uint32_t position, uint32_t characters, uint32_t newLines) {
        std::erase_if(entries, [&](const Entry& entry) {
            return entry.offset >= position && entry.offset <= position + characters;
        });
        for (Entry& entry : entries) {
            if (entry.offset <= position) continue;
            entry = {entry.line > newLines ? entry.line - newLines : 0, entry.offset - characters};
        }
    }
    const Entry* Nearest(uint32_t Entry::*field, uint32_t value) const {
        const Entry* best = nullptr;
        auto distance = [&](const Entry& entry) {
            return std::abs(static_cast<int64_t>(entry.*field) - static_cast<int64_t>(value));
        };
        for (const Entry& entry : entries) {
            if (!best || distance(entry) < distance(*best)) best = &entry;
        }
        return best;
    }

    std::vector<Entry> entries;
};

TEST(LineCache, BehavesLikeThePlainListOnRandomOperations) {
    Random random(1);
    LineCache cache;
    LineCacheModel model;
    for (int step = 0; step < 50000; ++step) {
        const uint32_t a = random.Below(200);
        const uint32_t b = random.Below(40);
        const uint32_t c = random.Below(5);
        switch (random.Below(4)) {
        case 0:
        case 1:
            cache.Add({a, b * 5});
            model.Add(a, b * 5);
            break;
        case 2:
            cache.Inserted(a, {b, c});
            model.Inserted(a, b, c);
            break;
        default:
            cache.Deleted(a, {b, c});
            model.Deleted(a, b, c);
            break;
        }
        ASSERT_EQ(Entries(cache), model.entries) << "step " << step;
        const LineCacheEntry* line = cache.NearestLine(a);
        const LineCacheEntry* offset = cache.NearestOffset(a);
        const Entry* modelLine = model.Nearest(&Entry::line, a);
        const Entry* modelOffset = model.Nearest(&Entry::offset, a);
        ASSERT_EQ(line == nullptr, modelLine == nullptr);
        if (!line) continue;
        ASSERT_EQ((Entry{line->line, line->offset}), *modelLine) << "step " << step;
        ASSERT_EQ((Entry{offset->line, offset->offset}), *modelOffset) << "step " << step;
    }
}
