#include "base/WString.h"

#include "support/FailureInjection.h"
#include "support/Random.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace {

std::u16string Content(const WString& string) { return {string.Text(), string.Length()}; }

// The rules that hold after every operation.
void ExpectConsistent(const WString& string) {
    EXPECT_EQ(string.Text()[string.Length()], 0);
    if (string.Capacity())
        EXPECT_LT(string.Length(), string.Capacity());
    else
        EXPECT_EQ(string.Length(), 0u);
}

// Runs `change` on a string holding `before` with each of its allocations failing in turn; a failed
// one has to leave everything in place.
template <class Change> void ExpectUnchangedOnFailure(const Char* before, Change change) {
    const uint64_t failures = FailEachAllocation([&] {
        WString string;
        {
            const FailurePause pause;
            EXPECT_TRUE(string.Assign(before));
        }
        const Char* const buffer = string.Text();
        const uint32_t capacity = string.Capacity();
        const bool done = change(string);
        if (!done) {
            EXPECT_EQ(Content(string), before);
            EXPECT_EQ(string.Text(), buffer);
            EXPECT_EQ(string.Capacity(), capacity);
        }
        return done;
    });
    EXPECT_EQ(failures, 1u);
}

} // namespace

TEST(WString, AllZeroIsTheEmptyString) {
    WString string;
    EXPECT_EQ(string.Data(), nullptr);
    EXPECT_EQ(string.Capacity(), 0u);
    EXPECT_EQ(string.Length(), 0u);
    EXPECT_TRUE(string.IsEmpty());
    EXPECT_EQ(string.Text()[0], 0);
}

TEST(WString, TheMembersArePointerThenCapacityThenLength) {
    struct Layout {
        const Char* buffer;
        uint32_t capacity;
        uint32_t length;
    };
    static_assert(sizeof(WString) == sizeof(Layout));
    WString string;
    ASSERT_TRUE(string.Reserve(9) && string.Assign(u"abc"));
    const auto* layout = reinterpret_cast<const Layout*>(&string);
    EXPECT_EQ(layout->buffer, string.Text());
    EXPECT_EQ(layout->capacity, 10u);
    EXPECT_EQ(layout->length, 3u);
}

TEST(WString, ReserveMakesRoomForTheTerminator) {
    WString string;
    ASSERT_TRUE(string.Reserve(10));
    EXPECT_EQ(string.Capacity(), 11u);
    EXPECT_EQ(string.Length(), 0u);
    ASSERT_TRUE(string.Reserve(10));
    EXPECT_EQ(string.Capacity(), 11u);
}

TEST(WString, GrowingTakesTwiceTheCapacityWhenThatIsLarger) {
    WString string;
    ASSERT_TRUE(string.Reserve(9));
    ASSERT_TRUE(string.Reserve(10));
    EXPECT_EQ(string.Capacity(), 20u);
}

TEST(WString, GrowingTakesTheSizeNeededWhenThatIsLarger) {
    WString string;
    ASSERT_TRUE(string.Reserve(9));
    ASSERT_TRUE(string.Reserve(100));
    EXPECT_EQ(string.Capacity(), 101u);
}

TEST(WString, GrowingTakesANewZeroFilledBlock) {
    WString string;
    ASSERT_TRUE(string.Assign(u"abc"));
    ASSERT_TRUE(string.Reserve(50));
    EXPECT_EQ(Content(string), u"abc");
    for (uint32_t i = 3; i < string.Capacity(); ++i) EXPECT_EQ(string.Data()[i], 0) << i;
}

TEST(WString, ReservingMoreThanCanBeAddressedFails) {
    WString string;
    ASSERT_TRUE(string.Assign(u"abc"));
    EXPECT_FALSE(string.Reserve(UINT32_MAX));
    EXPECT_EQ(Content(string), u"abc");
}

TEST(WString, AppendingPastThirtyTwoBitsFails) {
    WString string;
    ASSERT_TRUE(string.Assign(u"abc"));
    const Char unread = u'x';
    EXPECT_FALSE(string.Append(&unread, int64_t{UINT32_MAX} - 3));
    EXPECT_FALSE(string.Assign(&unread, int64_t{UINT32_MAX}));
    EXPECT_FALSE(string.Assign(&unread, INT64_MAX));
    EXPECT_FALSE(string.Insert(0, &unread, UINT32_MAX));
    EXPECT_EQ(Content(string), u"abc");
}

TEST(WString, AssignTakesTheCount) {
    WString string;
    ASSERT_TRUE(string.Assign(u"abcdef", 4));
    EXPECT_EQ(Content(string), u"abcd");
    ASSERT_TRUE(string.Assign(u"xy"));
    EXPECT_EQ(Content(string), u"xy");
    ASSERT_TRUE(string.Assign(u"zzz", 0));
    EXPECT_TRUE(string.IsEmpty());
    ExpectConsistent(string);
}

TEST(WString, AssignKeepsNulsInsideTheCount) {
    WString string;
    const std::u16string text(u"a\0b", 3);
    ASSERT_TRUE(string.Assign(text.data(), 3));
    EXPECT_EQ(Content(string), text);
}

TEST(WString, AssigningNothingToTheEmptyStringAllocatesNothing) {
    WString string;
    ASSERT_TRUE(string.Assign(u""));
    EXPECT_EQ(string.Data(), nullptr);
}

TEST(WString, AssignTakesPartsOfItself) {
    WString string;
    ASSERT_TRUE(string.Assign(u"abcdef"));
    ASSERT_TRUE(string.Assign(string.Text() + 2));
    EXPECT_EQ(Content(string), u"cdef");
    ASSERT_TRUE(string.Assign(string));
    EXPECT_EQ(Content(string), u"cdef");
}

TEST(WString, AppendWithANegativeCountGoesToTheTerminator) {
    WString string;
    ASSERT_TRUE(string.Append(u"ab"));
    ASSERT_TRUE(string.Append(u"cd", -1));
    ASSERT_TRUE(string.Append(u"efgh", 2));
    EXPECT_EQ(Content(string), u"abcdef");
    ExpectConsistent(string);
}

TEST(WString, AppendingACountOfZeroSucceedsAndDoesNothing) {
    WString string;
    Heap::SetFailureHook([] { return true; });
    const bool onNothing = string.Append(u"abc", 0);
    const bool ofNull = string.Append(nullptr, 0);
    Heap::SetFailureHook(nullptr);
    EXPECT_TRUE(onNothing);
    EXPECT_TRUE(ofNull);
    EXPECT_EQ(string.Data(), nullptr);
}

TEST(WString, AppendsItselfEvenWhileGrowing) {
    WString string;
    ASSERT_TRUE(string.Assign(u"ab"));
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(string.Append(string));
    std::u16string expected;
    for (int i = 0; i < 32; ++i) expected += u"ab";
    EXPECT_EQ(Content(string), expected);
}

TEST(WString, AppendCharTerminates) {
    WString string;
    for (Char c = u'a'; c <= u'z'; ++c) {
        ASSERT_TRUE(string.AppendChar(c));
        ExpectConsistent(string);
    }
    EXPECT_EQ(Content(string), u"abcdefghijklmnopqrstuvwxyz");
}

TEST(WString, AppendNumberWritesDecimals) {
    WString string;
    ASSERT_TRUE(string.AppendNumber(0) && string.AppendChar(u',') && string.AppendNumber(4294967295u) &&
                string.AppendChar(u',') && string.AppendNumber(10));
    EXPECT_EQ(Content(string), u"0,4294967295,10");
}

TEST(WString, InsertsAnywhere) {
    WString string;
    ASSERT_TRUE(string.Insert(0, u"ad", 2));
    ASSERT_TRUE(string.Insert(1, u"bc", 2));
    ASSERT_TRUE(string.Insert(4, u"e", 1));
    ASSERT_TRUE(string.Insert(0, u"", 0));
    EXPECT_EQ(Content(string), u"abcde");
}

TEST(WString, InsertsPartsOfItself) {
    WString string;
    ASSERT_TRUE(string.Reserve(50) && string.Assign(u"abcdef"));
    ASSERT_TRUE(string.Insert(2, string.Text() + 1, 4));
    EXPECT_EQ(Content(string), u"abbcdecdef");
}

TEST(WString, EraseIsClippedToTheEnd) {
    WString string;
    ASSERT_TRUE(string.Assign(u"abcdef"));
    string.Erase(1, 2);
    EXPECT_EQ(Content(string), u"adef");
    string.Erase(2, UINT32_MAX);
    EXPECT_EQ(Content(string), u"ad");
    string.Erase(2, 1);
    string.Erase(99, 1);
    EXPECT_EQ(Content(string), u"ad");
    WString empty;
    empty.Erase(0, 5);
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(WString, TruncateAndClearKeepTheBuffer) {
    WString string;
    ASSERT_TRUE(string.Assign(u"abcdef"));
    const Char* const buffer = string.Text();
    string.Truncate(3);
    EXPECT_EQ(Content(string), u"abc");
    string.Truncate(10);
    EXPECT_EQ(Content(string), u"abc");
    string.Clear();
    EXPECT_TRUE(string.IsEmpty());
    EXPECT_EQ(string.Text(), buffer);
    EXPECT_EQ(string.Capacity(), 7u);
    WString empty;
    empty.Clear();
    EXPECT_EQ(empty.Data(), nullptr);
}

TEST(WString, ReplaceAllReplacesEveryOccurrence) {
    WString string;
    ASSERT_TRUE(string.Assign(u"/a//b/"));
    string.ReplaceAll(u'/', u'\\');
    EXPECT_EQ(Content(string), u"\\a\\\\b\\");
    WString empty;
    empty.ReplaceAll(u'a', u'b');
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(WString, StripQuotesDropsOneOfEachSide) {
    const std::pair<const Char*, const Char*> cases[] = {
        {u"\"a b\"", u"a b"}, {u"\"a", u"a"}, {u"a\"", u"a"}, {u"\"\"a\"\"", u"\"a\""},
        {u"a", u"a"},         {u"\"", u""},   {u"\"\"", u""}, {u"", u""},
    };
    for (const auto& [text, expected] : cases) {
        WString string;
        ASSERT_TRUE(string.Assign(text));
        string.StripQuotes();
        EXPECT_EQ(Content(string), expected);
        ExpectConsistent(string);
    }
}

TEST(WString, SetAndIndexReachSingleCharacters) {
    WString string;
    ASSERT_TRUE(string.Assign(u"abc"));
    string.Set(1, u'X');
    EXPECT_EQ(string[1], u'X');
    EXPECT_EQ(Content(string), u"aXc");
}

TEST(WString, ReleaseZeroesAllMembers) {
    WString string;
    ASSERT_TRUE(string.Assign(u"abc"));
    string.Release();
    EXPECT_EQ(string.Data(), nullptr);
    EXPECT_EQ(string.Capacity(), 0u);
    EXPECT_EQ(string.Length(), 0u);
    string.Release();
    ASSERT_TRUE(string.Assign(u"again"));
    EXPECT_EQ(Content(string), u"again");
}

TEST(WString, MovingTakesTheBufferAlong) {
    WString first;
    ASSERT_TRUE(first.Assign(u"abc"));
    const Char* const buffer = first.Text();
    WString second(std::move(first));
    EXPECT_EQ(second.Text(), buffer);
    EXPECT_EQ(first.Data(), nullptr); // moved from is empty, by contract
    ASSERT_TRUE(first.Assign(u"x"));
    second = std::move(first);
    EXPECT_EQ(Content(second), u"x");
    WString& same = second;
    second = std::move(same);
    EXPECT_EQ(Content(second), u"x");
}

TEST(WString, FailingOperationsLeaveItUnchanged) {
    ExpectUnchangedOnFailure(u"abc", [](WString& s) { return s.Reserve(100); });
    ExpectUnchangedOnFailure(u"abc", [](WString& s) { return s.Assign(u"longer than before"); });
    ExpectUnchangedOnFailure(u"abc", [](WString& s) { return s.AppendChar(u'd'); });
    ExpectUnchangedOnFailure(u"abc", [](WString& s) { return s.Append(u"def"); });
    ExpectUnchangedOnFailure(u"abc", [](WString& s) { return s.Append(s); });
    ExpectUnchangedOnFailure(u"abc", [](WString& s) { return s.AppendNumber(123456); });
    ExpectUnchangedOnFailure(u"abc", [](WString& s) { return s.Insert(1, u"xyz", 3); });
}

TEST(WString, RandomOperationsMatchAPlainString) {
    Random random(11);
    WString string;
    std::u16string model;
    std::u16string text;
    uint32_t at = 0;
    // Each does the same to both and returns whether it succeeded.
    const std::function<bool()> operations[] = {
        [&] {
            model += text;
            return string.Append(text.data(), static_cast<int64_t>(text.size()));
        },
        [&] {
            model.insert(at, text);
            return string.Insert(at, text.data(), static_cast<uint32_t>(text.size()));
        },
        [&] {
            const uint32_t count = random.Below(20);
            model.erase(at, count);
            string.Erase(at, count);
            return true;
        },
        [&] {
            model.push_back(u'q');
            return string.AppendChar(u'q');
        },
        [&] {
            std::replace(model.begin(), model.end(), u'q', u'a');
            string.ReplaceAll(u'q', u'a');
            return true;
        },
        [&] {
            model.insert(at, std::u16string(model, 0, model.size() / 4));
            return string.Insert(at, string.Text(), string.Length() / 4);
        },
        [&] {
            if (model.size() < 200) return true;
            model.resize(at);
            string.Truncate(at);
            return true;
        },
        [&] {
            if (random.Below(50)) return true;
            model = text;
            return string.Assign(text.c_str());
        },
    };
    for (int step = 0; step < 40000; ++step) {
        text.clear();
        for (uint32_t i = random.Below(12); i; --i) text.push_back(static_cast<Char>(u'a' + random.Below(4)));
        at = random.Below(model.size() + 1);
        ASSERT_TRUE(operations[random.Below(std::size(operations))]());
        ASSERT_EQ(Content(string), model) << step;
        ASSERT_EQ(string.Text()[string.Length()], 0);
    }
}
