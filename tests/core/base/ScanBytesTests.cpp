#include "base/Scan.h"
#include "base/ScanBytes.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

using Bytes = std::vector<uint8_t>;

Bytes Of(const char* text) { return Bytes(text, text + std::char_traits<char>::length(text)); }

size_t Find(const Bytes& bytes, const Bytes& pattern, bool matchCase) {
    return Scan::ByteFinder(pattern.data(), pattern.size(), matchCase).First(bytes.data(), bytes.size());
}

size_t FindLast(const Bytes& bytes, const Bytes& pattern, bool matchCase) {
    return Scan::ByteFinder(pattern.data(), pattern.size(), matchCase).Last(bytes.data(), bytes.size());
}

} // namespace

TEST(ScanBytes, FindsTheFirstAndTheLast) {
    const Bytes bytes = Of("one two one two");
    EXPECT_EQ(Find(bytes, Of("two"), true), 4u);
    EXPECT_EQ(FindLast(bytes, Of("two"), true), 12u);
    EXPECT_EQ(Find(bytes, Of("three"), true), Scan::NotFound);
    EXPECT_EQ(FindLast(bytes, Of("three"), true), Scan::NotFound);
}

TEST(ScanBytes, FoldsAsciiLettersAndNothingElse) {
    EXPECT_EQ(Find(Of("xAbC"), Of("aBc"), false), 1u);
    EXPECT_EQ(Find(Of("xAbC"), Of("aBc"), true), Scan::NotFound);
    EXPECT_EQ(Find(Of("@[`{\xC4"), Of("`"), false), 2u);
    EXPECT_EQ(Find(Of("@[{"), Of("`"), false), Scan::NotFound);
    EXPECT_EQ(Find(Of("\xE4"), Of("\xC4"), false), Scan::NotFound);
    for (int byte = 0; byte < 256; ++byte) {
        for (int other = 0; other < 256; ++other) {
            const bool letters = (byte | 0x20) == (other | 0x20) && (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z';
            const Bytes text(40, static_cast<uint8_t>(byte));
            const Bytes pattern(1, static_cast<uint8_t>(other));
            ASSERT_EQ(Find(text, pattern, false) == 0, byte == other || letters) << byte << ' ' << other;
            ASSERT_EQ(FindLast(text, pattern, false) == 39, byte == other || letters) << byte << ' ' << other;
        }
    }
}

TEST(ScanBytes, APatternLongerThanTheTextIsNotThere) {
    EXPECT_EQ(Find(Of("ab"), Of("abc"), true), Scan::NotFound);
    EXPECT_EQ(FindLast(Of("ab"), Of("abc"), true), Scan::NotFound);
    EXPECT_EQ(Find({}, Of("a"), true), Scan::NotFound);
}

TEST(ScanBytes, EveryPlaceAndLengthIsFound) {
    for (size_t length = 1; length < 80; ++length) {
        for (size_t n = 1; n <= length && n < 40; n += 1 + n / 4) {
            for (size_t place = 0; place + n <= length; ++place) {
                Bytes text(length, 'x');
                Bytes pattern;
                for (size_t i = 0; i < n; ++i) pattern.push_back(static_cast<uint8_t>('a' + i % 20));
                std::copy(pattern.begin(), pattern.end(), text.begin() + static_cast<ptrdiff_t>(place));
                ASSERT_EQ(Find(text, pattern, true), place);
                ASSERT_EQ(FindLast(text, pattern, false), place);
            }
        }
    }
}

TEST(ScanBytes, RandomBytesMatchTheReference) {
    std::mt19937 random(7);
    for (int round = 0; round < 20000; ++round) {
        // Few different bytes, so that patterns nearly match in many places.
        const char* alphabets[] = {"ab", "aAbB", "aA@`", "x", "etaoinsrh ETAOINSRH"};
        const std::string alphabet = alphabets[random() % 5];
        Bytes text(random() % (random() % 4 ? 200 : 4000));
        for (uint8_t& byte : text) byte = static_cast<uint8_t>(alphabet[random() % alphabet.size()]);
        Bytes pattern(1 + random() % (random() % 4 ? 5 : 60));
        for (uint8_t& byte : pattern) byte = static_cast<uint8_t>(alphabet[random() % alphabet.size()]);
        if (pattern.size() <= text.size() && random() % 2) {
            const size_t place = random() % (text.size() - pattern.size() + 1);
            std::copy(pattern.begin(), pattern.end(), text.begin() + static_cast<ptrdiff_t>(place));
        }
        const bool matchCase = random() % 2 == 0;
        ASSERT_EQ(Find(text, pattern, matchCase),
                  Scan::Reference::FindBytes(text.data(), text.size(), pattern.data(), pattern.size(), matchCase));
        ASSERT_EQ(FindLast(text, pattern, matchCase),
                  Scan::Reference::FindLastBytes(text.data(), text.size(), pattern.data(), pattern.size(), matchCase));
    }
}
