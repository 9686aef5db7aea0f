#include "support/FailureInjection.h"
#include "support/Random.h"
#include "syntax/KeywordSet.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using Set = std::unique_ptr<KeywordSet>;

Set Make(const std::u16string& list, bool caseSensitive = true) {
    return Set(KeywordSet::Make(list.c_str(), caseSensitive));
}

std::vector<std::u16string> Bucket(const KeywordSet& set, uint32_t bucket) {
    std::vector<std::u16string> words;
    const auto [low, high] = set.InBucket(bucket);
    for (const KeywordSet::Entry* entry = low; entry < high; ++entry) words.emplace_back(entry->text, entry->length);
    return words;
}

size_t EntryCount(const KeywordSet& set, uint32_t bucket) { return Bucket(set, bucket).size(); }

size_t WordLength(std::u16string_view text) {
    size_t length = 0;
    while (length < text.size() && Text::IsWordChar(text[length])) ++length;
    return length;
}

// The keyword at the start of a text that ends in a block of exactly its size.
uint32_t Find(const KeywordSet& set, std::u16string_view text) {
    const std::vector<Char> exact(text.begin(), text.end());
    return set.Find(exact.data(), exact.data() + exact.size(), WordLength(text));
}

// The look-up as the lists are meant to be walked.
uint32_t FindByWalking(const KeywordSet& set, std::u16string_view text, bool caseSensitive) {
    auto fold = [=](Char c) { return caseSensitive ? c : Text::FoldCase(c); };
    if (fold(text[0]) < 33) return 0;
    for (const std::u16string& word : Bucket(set, (fold(text[0]) - 32u) % 91)) {
        int order = 0;
        for (size_t i = 0; i < word.size() && order == 0; ++i) {
            const int c = i < text.size() ? fold(text[i]) : 0;
            order = c - word[i];
        }
        if (order < 0) return 0;
        if (order > 0) continue;
        if (word.size() == text.size() || !Text::IsWordChar(text[word.size()])) {
            return static_cast<uint32_t>(word.size());
        }
    }
    return 0;
}

} // namespace

TEST(KeywordSet, HashesByTheFirstCharacter) {
    const Set set = Make(u"int # zebra ~x");
    EXPECT_EQ(Bucket(*set, (u'i' - 32) % 91), std::vector<std::u16string>{u"int"});
    EXPECT_EQ(Bucket(*set, 3), (std::vector<std::u16string>{u"#", u"~x"})); // 35 - 32, and 126 - 32 - 91
    EXPECT_EQ(Bucket(*set, u'z' - 32), std::vector<std::u16string>{u"zebra"});
}

TEST(KeywordSet, FirstCharactersThatMeetShareABucketInOrder) {
    // '!' is 33 and '|' is 124: both give 1.
    const Set set = Make(u"|b !z |a !a");
    EXPECT_EQ(Bucket(*set, 1), (std::vector<std::u16string>{u"!a", u"!z", u"|a", u"|b"}));
    EXPECT_EQ(Find(*set, u"|a "), 2u);
    EXPECT_EQ(Find(*set, u"!z "), 2u);
    EXPECT_EQ(Find(*set, u"!b "), 0u);
}

TEST(KeywordSet, FoldsTheFirstCharacterUnlessCaseMatters) {
    EXPECT_EQ(EntryCount(*Make(u"Select", false), u's' - 32), 1u);
    EXPECT_EQ(EntryCount(*Make(u"Select", true), u'S' - 32), 1u);
    // Only A to Z are folded.
    EXPECT_EQ(EntryCount(*Make(u"\u00C4x", false), (0xC4 - 32) % 91), 1u);
}

TEST(KeywordSet, KeepsWordsInAscendingOrder) {
    const Set set = Make(u"c cc ca b cab Ca");
    EXPECT_EQ(Bucket(*set, u'c' - 32), (std::vector<std::u16string>{u"c", u"ca", u"cab", u"cc"}));
    const Set folding = Make(u"cb CA ca cC", false);
    EXPECT_EQ(Bucket(*folding, u'c' - 32), (std::vector<std::u16string>{u"ca", u"ca", u"cb", u"cc"}));
}

TEST(KeywordSet, LeavesOutWordsThatBeginWithControlCharacters) {
    const Set set = Make(u"\tx \u0001y z");
    uint32_t count = 0;
    for (uint32_t bucket = 0; bucket < KeywordSet::BucketCount; ++bucket)
        count += static_cast<uint32_t>(EntryCount(*set, bucket));
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(Find(*set, u"\tx"), 0u);
    EXPECT_EQ(Find(*set, u"z"), 1u);
}

TEST(KeywordSet, SplitsAtRunsOfSpaces) {
    const Set set = Make(u"   one  two ");
    EXPECT_EQ(Find(*set, u"one"), 3u);
    EXPECT_EQ(Find(*set, u"two"), 3u);
    EXPECT_EQ(Make(u""), nullptr);
    EXPECT_EQ(Make(u"   "), nullptr);
}

TEST(KeywordSet, FindsWholeWordsOnly) {
    const Set set = Make(u"int");
    EXPECT_EQ(Find(*set, u"int"), 3u);
    EXPECT_EQ(Find(*set, u"int("), 3u);
    EXPECT_EQ(Find(*set, u"int\u00E4"), 3u); // no word character
    for (const Char* text : {u"int2", u"intX", u"int_", u"int#", u"in", u"Int", u"i", u" int"}) {
        EXPECT_EQ(Find(*set, text), 0u);
    }
}

TEST(KeywordSet, GoesOnPastShorterWordsThatDoNotEnd) {
    const Set set = Make(u"do double do-while dou");
    EXPECT_EQ(Find(*set, u"double x"), 6u);
    EXPECT_EQ(Find(*set, u"do x"), 2u);
    // The shorter word comes first and ends there.
    EXPECT_EQ(Find(*set, u"do-while"), 2u);
    EXPECT_EQ(Find(*Make(u"do-while dont"), u"do-while x"), 8u);
    EXPECT_EQ(Find(*Make(u"do-while dont"), u"do-whiles"), 0u);
}

TEST(KeywordSet, WordsOfOtherCharacters) {
    const Set set = Make(u"@media -> \u00FCber a.b.c");
    EXPECT_EQ(Find(*set, u"@media {"), 6u);
    EXPECT_EQ(Find(*set, u"-> "), 2u);
    EXPECT_EQ(Find(*set, u"->x"), 0u);
    EXPECT_EQ(Find(*set, u"\u00FCber"), 4u);
    EXPECT_EQ(Find(*set, u"a.b.c"), 5u);
    EXPECT_EQ(Find(*set, u"a.b.cd"), 0u);
    EXPECT_TRUE(set->CanBegin(u'@'));
    EXPECT_FALSE(set->CanBegin(u'b'));
    EXPECT_TRUE(set->CanBeginBeyondAscii());
    EXPECT_FALSE(Make(u"a")->CanBeginBeyondAscii());
}

TEST(KeywordSet, IgnoresCaseWhenAsked) {
    const Set set = Make(u"Begin", false);
    EXPECT_EQ(Find(*set, u"BEGIN"), 5u);
    EXPECT_EQ(Find(*set, u"begin"), 5u);
    EXPECT_TRUE(set->CanBegin(u'B'));
}

TEST(KeywordSet, WordsLongerThanTheFilterTells) {
    const std::u16string longWord(200, u'a');
    const Set set = Make(longWord + u" " + longWord + u"b");
    EXPECT_EQ(Find(*set, longWord), 200u);
    EXPECT_EQ(Find(*set, longWord + u"b"), 201u);
    EXPECT_EQ(Find(*set, longWord + u"a"), 0u);
}

TEST(KeywordSet, AMegabyteOfWordsInOneBucket) {
    std::u16string list;
    for (int i = 150000; i > 0; --i) {
        std::string digits = std::to_string(i);
        list += u'k';
        list.append(digits.begin(), digits.end());
        list += u' ';
    }
    const Set set = Make(list);
    ASSERT_EQ(EntryCount(*set, u'k' - 32), 150000u);
    EXPECT_EQ(Find(*set, u"k1"), 2u);
    EXPECT_EQ(Find(*set, u"k149999;"), 7u);
    EXPECT_EQ(Find(*set, u"k150001"), 0u);
    EXPECT_EQ(Find(*set, u"k"), 0u);
}

TEST(KeywordSet, AgreesWithWalkingTheLists) {
    Random random(41);
    const std::u16string letters = u"aAbB1_-|\u00FC";
    auto word = [&](size_t longest) {
        std::u16string text;
        for (uint32_t n = 1 + random.Below(longest); n > 0; --n) text += random.Pick(letters);
        return text;
    };
    for (int round = 0; round < 400; ++round) {
        std::u16string list;
        for (uint32_t n = 1 + random.Below(60); n > 0; --n) (list += word(4)) += u' ';
        const bool caseSensitive = random.OneIn(2);
        const Set set = Make(list, caseSensitive);
        for (int look = 0; look < 60; ++look) {
            const std::u16string text = word(6);
            ASSERT_EQ(Find(*set, text), FindByWalking(*set, text, caseSensitive));
        }
    }
}

TEST(KeywordSet, AMegabyteOfWords) {
    std::u16string list;
    std::vector<std::u16string> words;
    for (uint32_t i = 0; list.size() < (1u << 20); ++i) {
        std::u16string word = u"w";
        for (uint32_t rest = i; rest; rest /= 26) word += static_cast<Char>(u'a' + rest % 26);
        words.push_back(word + u"_");
        list += words.back() + u' ';
    }
    list += std::u16string(1u << 20, u'x'); // and one word of a megabyte
    const Set set = Make(list);
    ASSERT_NE(set, nullptr);
    for (size_t i = 0; i < words.size(); i += 97) {
        const std::u16string& word = words[i];
        EXPECT_EQ(set->Find(word.data(), word.data() + word.size(), word.size()), word.size());
        const std::u16string longer = word + u'1';
        EXPECT_EQ(set->Find(longer.data(), longer.data() + longer.size(), longer.size()), 0u);
    }
    const std::u16string longest(1u << 20, u'x');
    EXPECT_EQ(set->Find(longest.data(), longest.data() + longest.size(), longest.size()), longest.size());
    EXPECT_EQ(set->Find(longest.data(), longest.data() + 9, 9), 0u);
}

TEST(KeywordSet, ReportsMissingMemory) {
    const uint64_t failures = FailEachAllocation([] {
        const Set set(KeywordSet::Make(u"a b c", true));
        return set != nullptr;
    });
    EXPECT_GE(failures, 3u);
}

TEST(KeywordSet, KnowsWhatItsWordsHoldAfterTheirFirstCharacter) {
    const std::unique_ptr<KeywordSet> set(KeywordSet::Make(u"don't /x a-\u00FCb", true));
    EXPECT_TRUE(set->HoldsAfterFirst(u'\''));
    EXPECT_TRUE(set->HoldsAfterFirst(u'-'));
    EXPECT_TRUE(set->HoldsAfterFirst(u'X'));
    EXPECT_TRUE(set->HoldsAfterFirst(0x4E00)); // beyond ASCII all are one
    EXPECT_FALSE(set->HoldsAfterFirst(u'/'));
    EXPECT_FALSE(set->HoldsAfterFirst(u'a'));
}
