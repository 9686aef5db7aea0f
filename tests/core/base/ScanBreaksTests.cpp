#include "base/ScanBreaks.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Scan::BreakCounts;
using Scan::Copied;

std::vector<uint8_t> Bytes(const std::string& text) { return {text.begin(), text.end()}; }

struct Result {
    std::u16string out;
    size_t taken;
    BreakCounts breaks;

    bool operator==(const Result& other) const {
        return out == other.out && taken == other.taken && breaks.lineFeeds == other.breaks.lineFeeds &&
               breaks.returns == other.breaks.returns;
    }
};

void PrintTo(const Result& result, std::ostream* stream) {
    *stream << "taken " << result.taken << ", written " << result.out.size() << ", lineFeeds "
            << result.breaks.lineFeeds << ", returns " << result.breaks.returns;
}

// Vectors of exactly the size that the contract promises, so that the sanitizers see every step outside.
template <class Function> Result Widen(Function function, const std::vector<uint8_t>& bytes) {
    std::vector<Char> out(bytes.size());
    BreakCounts breaks;
    const Copied copied = function(bytes.data(), bytes.size(), out.data(), breaks);
    return {std::u16string(out.data(), copied.written), copied.taken, breaks};
}

// Copies to a place `lag` characters before the text, in the same storage.
template <class Function> Result CopyInPlace(Function function, const std::u16string& text, size_t lag) {
    std::vector<Char> storage(lag, u'?');
    storage.insert(storage.end(), text.begin(), text.end());
    BreakCounts breaks;
    const Copied copied = function(storage.data() + lag, text.size(), storage.data(), breaks);
    return {std::u16string(storage.data(), copied.written), copied.taken, breaks};
}

template <class Function> Result WithReturns(Function function, const std::u16string& text, size_t capacity) {
    const std::vector<Char> input(text.begin(), text.end());
    std::vector<Char> out(capacity);
    const Copied copied = function(input.data(), input.size(), out.data(), capacity);
    return {std::u16string(out.data(), copied.written), copied.taken, {}};
}

// Text in which each of `special` turns up about every `spacing` characters.
template <class Text> Text RandomText(std::mt19937& random, size_t length, const Text& special, unsigned spacing) {
    Text text;
    for (size_t i = 0; i < length; ++i) {
        const bool plain = random() % spacing != 0;
        text.push_back(plain ? static_cast<typename Text::value_type>('a' + random() % 26)
                             : special[random() % special.size()]);
    }
    return text;
}

} // namespace

TEST(ScanBreaks, WidenTextTurnsBreaksIntoLineFeedsAndNulIntoSpace) {
    const Result result = Widen(Scan::WidenText, Bytes(std::string("a\r\nb\rc\nd\0e\r\r\n", 13)));
    EXPECT_EQ(result.out, u"a\nb\nc\nd e\n\n");
    EXPECT_EQ(result.taken, 13u);
    EXPECT_EQ(result.breaks.lineFeeds, 1u);
    EXPECT_EQ(result.breaks.returns, 4u);
}

TEST(ScanBreaks, WidenTextStopsBeforeTheFirstHighByte) {
    const Result result = Widen(Scan::WidenText, Bytes("plain text of more than a vector\x80 more"));
    EXPECT_EQ(result.out, u"plain text of more than a vector");
    EXPECT_EQ(result.taken, 32u);
}

TEST(ScanBreaks, AReturnThatEndsTheInputIsOneBreak) {
    EXPECT_EQ(Widen(Scan::WidenText, Bytes("x\r")).out, u"x\n");
    EXPECT_EQ(CopyInPlace(Scan::CopyWithLineFeeds, u"x\r", 0).out, u"x\n");
}

TEST(ScanBreaks, CopyWithLineFeedsStopsAtTheFirstNul) {
    const Result result = CopyInPlace(Scan::CopyWithLineFeeds, std::u16string(u"a\r\nbcdefghijklm\0n\n", 18), 0);
    EXPECT_EQ(result.out, u"a\nbcdefghijklm");
    EXPECT_EQ(result.taken, 15u);
    EXPECT_EQ(result.breaks.returns, 1u);
    EXPECT_EQ(result.breaks.lineFeeds, 0u);
}

TEST(ScanBreaks, CopyWithReturnsTakesALineFeedOnlyWithTwoPlacesLeft) {
    EXPECT_EQ(WithReturns(Scan::CopyWithReturns, u"ab\nc", 3).out, u"ab");
    EXPECT_EQ(WithReturns(Scan::CopyWithReturns, u"ab\nc", 4).out, u"ab\r\n");
    EXPECT_EQ(WithReturns(Scan::CopyWithReturns, u"ab\nc", 5).out, u"ab\r\nc");
}

TEST(ScanBreaks, EveryShortArrangementMatchesTheReference) {
    // All arrangements of plain, LF and CR over nine places cross the border of a vector of characters.
    for (unsigned code = 0; code < 3 * 3 * 3 * 3 * 3 * 3 * 3 * 3 * 3; ++code) {
        std::u16string text;
        for (unsigned rest = code, i = 0; i < 9; ++i, rest /= 3) text.push_back(u"a\n\r"[rest % 3]);
        const std::vector<uint8_t> bytes(text.begin(), text.end());
        ASSERT_EQ(Widen(Scan::WidenText, bytes), Widen(Scan::Reference::WidenText, bytes)) << code;
        ASSERT_EQ(CopyInPlace(Scan::CopyWithLineFeeds, text, 0),
                  CopyInPlace(Scan::Reference::CopyWithLineFeeds, text, 0))
            << code;
        ASSERT_EQ(WithReturns(Scan::CopyWithReturns, text, 12), WithReturns(Scan::Reference::CopyWithReturns, text, 12))
            << code;
    }
}

TEST(ScanBreaks, RandomTextsMatchTheReference) {
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        const size_t length = random() % 200;
        const unsigned spacing = static_cast<unsigned>(1 + random() % 40);
        const bool high = random() % 4 == 0;
        const std::string special = high ? std::string("\n\r\0\x80", 4) : std::string("\n\r\r\0", 4);
        const std::vector<uint8_t> bytes = Bytes(RandomText<std::string>(random, length, special, spacing));
        ASSERT_EQ(Widen(Scan::WidenText, bytes), Widen(Scan::Reference::WidenText, bytes)) << round;

        const std::u16string marks = high ? std::u16string(u"\n\r\0\u0A0D", 4) : u"\n\r";
        const std::u16string text = RandomText<std::u16string>(random, length, marks, spacing);
        const size_t lag = random() % 20;
        ASSERT_EQ(CopyInPlace(Scan::CopyWithLineFeeds, text, lag),
                  CopyInPlace(Scan::Reference::CopyWithLineFeeds, text, lag))
            << round;
        const size_t capacity = random() % 250;
        ASSERT_EQ(WithReturns(Scan::CopyWithReturns, text, capacity),
                  WithReturns(Scan::Reference::CopyWithReturns, text, capacity))
            << round;
    }
}

// Lines that nearly all end in CR LF, many of them in a row, with little else among them.
TEST(ScanBreaks, LinesOfPairsMatchTheReference) {
    std::mt19937 random(3);
    for (int round = 0; round < 4000; ++round) {
        const auto lineLength = static_cast<unsigned>(1 + random() % 60);
        const auto rarity = static_cast<unsigned>(1 + random() % 400);
        std::string text;
        const size_t length = random() % 6000;
        while (text.size() < length) {
            text.append(random() % lineLength, 'x');
            text += "\r\n";
            if (random() % rarity == 0) text.push_back("\r\n\0\x80"[random() % 4]);
        }
        text.resize(length);
        const std::vector<uint8_t> bytes = Bytes(text);
        ASSERT_EQ(Widen(Scan::WidenText, bytes), Widen(Scan::Reference::WidenText, bytes)) << round;
    }
}

TEST(ScanBreaks, ReturnsAreDroppedAndNothingElse) {
    std::vector<uint8_t> bytes = Bytes("\rone\r\ntwo\r\r three \r0123456789 0123456789\r");
    bytes.resize(Scan::DropReturns(bytes.data(), bytes.size()));
    EXPECT_EQ(bytes, Bytes("one\ntwo three 0123456789 0123456789"));
}

TEST(ScanBreaks, ReturnsAreDroppedAsByTheReference) {
    std::mt19937 random(2);
    for (int round = 0; round < 20000; ++round) {
        const unsigned spacing = static_cast<unsigned>(1 + random() % 40);
        const std::string special("\r\r\n\0\x8D", 5);
        std::vector<uint8_t> bytes = Bytes(RandomText<std::string>(random, random() % 200, special, spacing));
        std::vector<uint8_t> expected = bytes;
        expected.resize(Scan::Reference::DropReturns(expected.data(), expected.size()));
        bytes.resize(Scan::DropReturns(bytes.data(), bytes.size()));
        ASSERT_EQ(bytes, expected) << round;
    }
}

TEST(ScanBreaks, LongTextsOfLineFeedsAreCountedPastTheRangeOfAByte) {
    const std::vector<uint8_t> bytes(100000, '\n');
    EXPECT_EQ(Widen(Scan::WidenText, bytes).breaks.lineFeeds, 100000u);
    EXPECT_EQ(CopyInPlace(Scan::CopyWithLineFeeds, std::u16string(100000, u'\n'), 1).breaks.lineFeeds, 100000u);
}
