#include "support/FailureInjection.h"
#include "viewbase/FindState.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

std::vector<std::u16string> Entries(const History& history) {
    std::vector<std::u16string> entries;
    for (uint32_t i = 0; i < history.Count(); ++i) entries.emplace_back(history[i].Text());
    return entries;
}

bool Add(History& history, const std::u16string& text) {
    return history.Add(text.data(), static_cast<uint32_t>(text.size()));
}

using List = std::vector<std::u16string>;

} // namespace

TEST(HistoryTest, NewTextsGoToTheEnd) {
    History history;
    EXPECT_TRUE(Add(history, u"a"));
    EXPECT_TRUE(Add(history, u"b"));
    EXPECT_EQ(Entries(history), (List{u"a", u"b"}));
    EXPECT_STREQ(reinterpret_cast<const char*>(history.Newest().Text()), reinterpret_cast<const char*>(u"b"));
}

TEST(HistoryTest, AnEqualTextIsMovedNotRepeated) {
    History history;
    for (const Char* text : {u"a", u"b", u"c"}) Add(history, text);
    Add(history, u"a");
    EXPECT_EQ(Entries(history), (List{u"b", u"c", u"a"}));
    Add(history, u"a");
    EXPECT_EQ(Entries(history), (List{u"b", u"c", u"a"}));
}

TEST(HistoryTest, LetterCaseAndLengthDistinguishTexts) {
    History history;
    for (const Char* text : {u"a", u"A", u"ab"}) Add(history, text);
    EXPECT_EQ(Entries(history), (List{u"a", u"A", u"ab"}));
}

TEST(HistoryTest, TheTwentyFirstTextPushesOutTheOldest) {
    History history;
    List expected;
    for (int i = 0; i < 21; ++i) {
        const std::u16string text(1, static_cast<Char>(u'a' + i));
        Add(history, text);
        if (i > 0) expected.push_back(text);
    }
    EXPECT_EQ(history.Count(), 20u);
    EXPECT_EQ(Entries(history), expected);
}

TEST(HistoryTest, WithoutMemoryItStaysAsItWas) {
    const uint64_t failures = FailEachAllocation([] {
        History history;
        {
            FailurePause pause;
            for (int i = 0; i < 20; ++i) Add(history, std::u16string(1, static_cast<Char>(u'a' + i)));
        }
        const List before = Entries(history);
        const bool done = Add(history, u"new");
        if (!done) {
            EXPECT_EQ(Entries(history), before);
        }
        return done;
    });
    EXPECT_EQ(failures, 1u);
}
