#include "base/Scan.h"

#include "support/Random.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using Scan::NotFound;

size_t Forward(const std::u16string& text, const std::u16string& pattern, bool matchCase, size_t from = 0,
               size_t end = NotFound) {
    return Scan::FindForward(text.data(), text.size(), {from, end}, {pattern.data(), pattern.size(), matchCase});
}

size_t Backward(const std::u16string& text, const std::u16string& pattern, bool matchCase, size_t from = NotFound) {
    return Scan::FindBackward(text.data(), text.size(), {0, from}, {pattern.data(), pattern.size(), matchCase});
}

std::u16string RandomText(Random& random, size_t length, const std::u16string& letters) {
    std::u16string text;
    for (size_t i = 0; i < length; ++i) text.push_back(letters[random.Below(letters.size())]);
    return text;
}

} // namespace

TEST(ScanFind, FindsTheFirstAndTheLast) {
    const std::u16string text = u"one two one two";
    EXPECT_EQ(Forward(text, u"two", true), 4u);
    EXPECT_EQ(Backward(text, u"two", true), 12u);
    EXPECT_EQ(Forward(text, u"three", true), NotFound);
    EXPECT_EQ(Backward(text, u"three", true), NotFound);
}

TEST(ScanFind, ForwardPositionsLieInFromToEnd) {
    const std::u16string text = u"abcabcabc";
    EXPECT_EQ(Forward(text, u"abc", true, 1), 3u);
    EXPECT_EQ(Forward(text, u"abc", true, 3), 3u);
    EXPECT_EQ(Forward(text, u"abc", true, 4, 6), NotFound);
    EXPECT_EQ(Forward(text, u"abc", true, 4, 7), 6u); // the match may reach past `end`
    EXPECT_EQ(Forward(text, u"abc", true, 7), NotFound);
    EXPECT_EQ(Forward(text, u"abc", true, 100), NotFound);
}

TEST(ScanFind, BackwardPositionsLieBelowFrom) {
    const std::u16string text = u"abcabcabc";
    EXPECT_EQ(Backward(text, u"abc", true, 6), 3u);
    EXPECT_EQ(Backward(text, u"abc", true, 7), 6u);
    EXPECT_EQ(Backward(text, u"abc", true, 0), NotFound);
    EXPECT_EQ(Backward(text, u"abc", true, 1), 0u);
}

TEST(ScanFind, BackwardPositionsAreNotBelowStart) {
    const std::u16string text = std::u16string(u"abcabc") + std::u16string(100, u' ');
    const Scan::Pattern wanted = {u"abc", 3, true};
    EXPECT_EQ(Scan::FindBackward(text.data(), text.size(), {3, NotFound}, wanted), 3u);
    EXPECT_EQ(Scan::FindBackward(text.data(), text.size(), {4, NotFound}, wanted), NotFound);
    EXPECT_EQ(Scan::FindBackward(text.data(), text.size(), {1, 3}, wanted), NotFound);
    EXPECT_EQ(Scan::FindBackward(text.data(), text.size(), {0, 3}, wanted), 0u);
    EXPECT_EQ(Scan::FindBackward(text.data(), text.size(), {200, NotFound}, wanted), NotFound);
}

TEST(ScanFind, OnlyAsciiLettersFold) {
    EXPECT_EQ(Forward(u"xx Hello", u"hELLO", false), 3u);
    EXPECT_EQ(Forward(u"xx Hello", u"hELLO", true), NotFound);
    EXPECT_EQ(Forward(u"\u00C4", u"\u00E4", false), NotFound);
    EXPECT_EQ(Forward(u"[@]", u"{`}", false), NotFound);
    EXPECT_EQ(Forward(u"\u0141", u"a", false), NotFound);
    EXPECT_EQ(Forward(u"\u0161", u"A", false), NotFound);
    // The Kelvin sign is a k to other comparisons.
    EXPECT_EQ(Forward(u"\u212A", u"k", false), NotFound);
}

TEST(ScanFind, EveryCharacterMatchesItselfAndItsOtherCaseAlone) {
    for (unsigned c = 1; c < 0x10000; ++c) {
        const std::u16string pattern(1, static_cast<Char>(c));
        std::u16string text(40, u'\0');
        text[35] = static_cast<Char>(c);
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        ASSERT_EQ(Forward(text, pattern, true), 35u) << c;
        ASSERT_EQ(Forward(text, pattern, false), 35u) << c;
        text[35] = static_cast<Char>(c ^ 0x20);
        ASSERT_EQ(Forward(text, pattern, true), NotFound) << c;
        ASSERT_EQ(Forward(text, pattern, false), isLetter ? 35u : NotFound) << c;
    }
}

TEST(ScanFind, APatternLongerThanTheTextIsAbsent) {
    EXPECT_EQ(Forward(u"ab", u"abc", true), NotFound);
    EXPECT_EQ(Backward(u"ab", u"abc", true), NotFound);
    EXPECT_EQ(Forward(u"", u"a", true), NotFound);
    EXPECT_EQ(Backward(u"", u"a", false), NotFound);
}

TEST(ScanFind, TheWholeTextIsFound) {
    Random random(5);
    for (size_t length = 1; length < 150; ++length) {
        const std::u16string text = RandomText(random, length, u"abcXYZ_ \u00E4");
        EXPECT_EQ(Forward(text, text, true), 0u);
        EXPECT_EQ(Backward(text, text, false), 0u);
    }
}

TEST(ScanFind, RandomSearchesMatchTheReference) {
    Random random(37);
    // Few letters make many near matches; the others differ by the bit that distinguishes the cases.
    const std::u16string alphabets[] = {u"ab", u"aAbB", u"aA[{@`\u0141\u0161", std::u16string(u"a\0\n", 3)};
    for (int round = 0; round < 60'000; ++round) {
        const std::u16string& letters = alphabets[random.Below(4)];
        const size_t length = random.Below(201);
        // A block that ends where the text ends shows every step outside to the sanitizers.
        const auto block = std::make_unique<Char[]>(length);
        const std::u16string text = RandomText(random, length, letters);
        std::copy(text.begin(), text.end(), block.get());
        const size_t n = 1 + random.Below(random.Below(4) ? 6 : 70);
        std::u16string pattern = RandomText(random, n, letters);
        if (random.Below(2) && n <= length) pattern = text.substr(random.Below(length - n + 1), n);
        const size_t from = random.Below(length + 3);
        const size_t end = random.Below(4) ? length : random.Below(length + 3);
        const Scan::Pattern wanted = {pattern.data(), n, random.Below(2) != 0};
        ASSERT_EQ(Scan::FindForward(block.get(), length, {from, end}, wanted),
                  Scan::Reference::FindForward(block.get(), length, {from, end}, wanted))
            << round;
        ASSERT_EQ(Scan::FindBackward(block.get(), length, {from, end}, wanted),
                  Scan::Reference::FindBackward(block.get(), length, {from, end}, wanted))
            << round;
        ASSERT_EQ(Scan::FindBackward(block.get(), length, {0, from}, wanted),
                  Scan::Reference::FindBackward(block.get(), length, {0, from}, wanted))
            << round;
    }
}
