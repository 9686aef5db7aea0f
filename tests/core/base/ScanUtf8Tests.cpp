#include "base/ScanUtf8.h"

#include "base/Utf8.h"
#include "support/Random.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using namespace std::string_literals;

// Bytes in a block of their own that ends where they end, so that the sanitizers see every step outside.
class ExactBytes {
public:
    explicit ExactBytes(const std::string& bytes) : count(bytes.size()), block(new uint8_t[bytes.size()]) {
        for (size_t i = 0; i < count; ++i) block[i] = static_cast<uint8_t>(bytes[i]);
    }
    const uint8_t* Bytes() const { return block.get(); }
    size_t Count() const { return count; }

private:
    size_t count;
    std::unique_ptr<uint8_t[]> block;
};

size_t Valid(const std::string& bytes) {
    const ExactBytes exact(bytes);
    const size_t valid = Scan::ValidUtf8(exact.Bytes(), exact.Count());
    EXPECT_EQ(valid, Scan::Reference::ValidUtf8(exact.Bytes(), exact.Count()));
    return valid;
}

// A sequence of that many bytes with any bits in it, valid or not.
std::string Sequence(uint32_t value, size_t length) {
    if (length == 1) return {static_cast<char>(value & 0x7F)};
    std::string bytes(length, '\0');
    for (size_t i = length - 1; i > 0; --i, value >>= 6) bytes[i] = static_cast<char>(0x80 | (value & 0x3F));
    static constexpr uint32_t Leads[] = {0, 0, 0xC0, 0xE0, 0xF0};
    bytes[0] = static_cast<char>(Leads[length] | value);
    return bytes;
}

std::string EncodedPoint(uint32_t point) {
    return Sequence(point, point < 0x80 ? 1 : point < 0x800 ? 2 : point < 0x10000 ? 3 : 4);
}

uint32_t RandomPoint(Random& random) {
    static constexpr uint32_t Ends[] = {0x80, 0x800, 0x10000, 0x110000};
    const uint32_t point = random.Below(Ends[random.Below(4)]);
    return point >= 0xD800 && point < 0xE000 ? 0x20AC : point;
}

// What each place of a step and of its border is tried with.
constexpr size_t Places = 140;

const std::string invalid[] = {
    "\x80",             // a byte that follows nothing
    "\xBF\xBF",         //
    "\xC0\xAF",         // overlong
    "\xC1\xBF",         //
    "\xE0\x80\xAF",     //
    "\xE0\x9F\xBF",     //
    "\xF0\x80\x80\xAF", //
    "\xF0\x8F\xBF\xBF", //
    "\xED\xA0\x80",     // surrogates
    "\xED\xBF\xBF",     //
    "\xED\xA0\xBD\xED\xB8\x80",
    "\xF4\x90\x80\x80", // above U+10FFFF
    "\xF5\x80\x80\x80", //
    "\xF8\x88\x80\x80\x80",
    "\xFF",
    "\xFE",
    "\xC3x", // cut short by the next character
    "\xE2\x82x",
    "\xE2x\x82",
    "\xF0\x9F\x98x",
    "\xC3\xC3\xA9",
    "\xE2\x82\xE2\x82\xAC",
};

} // namespace

TEST(ValidUtf8, TakesAllOfWhatIsValid) {
    EXPECT_EQ(Valid(""), 0u);
    EXPECT_EQ(Valid("plain"), 5u);
    EXPECT_EQ(Valid("\0\x7F"s), 2u);
    for (const std::string& bytes : {"\xC2\x80"s, "\xDF\xBF"s, "\xE0\xA0\x80"s, "\xED\x9F\xBF"s, "\xEE\x80\x80"s,
                                     "\xEF\xBF\xBF"s, "\xF0\x90\x80\x80"s, "\xF4\x8F\xBF\xBF"s, "\xEF\xBB\xBF"s}) {
        for (size_t before = 0; before < Places; ++before) {
            const std::string all = std::string(before, 'x') + bytes + std::string(Places - before, 'y');
            ASSERT_EQ(Valid(all), all.size()) << before;
            ASSERT_EQ(Valid(std::string(before, 'x') + bytes), before + bytes.size()) << before;
        }
    }
}

TEST(ValidUtf8, StopsAtWhatIsInvalidWhereverItIs) {
    for (const std::string& bytes : invalid) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        for (size_t before = 0; before < Places; ++before) {
            ASSERT_EQ(Valid(std::string(before, 'x') + bytes + std::string(Places, 'y')), before);
            std::string letters;
            while (letters.size() < before) letters += "\xE2\x82\xAC";
            ASSERT_EQ(Valid(letters + bytes + std::string(Places, 'y')), letters.size());
        }
    }
}

TEST(ValidUtf8, ASequenceThatTheEndCutsOffIsNotWhole) {
    for (const std::string& bytes : {"\xC3\xA9"s, "\xE2\x82\xAC"s, "\xF0\x9F\x98\x80"s})
        for (size_t before = 0; before < Places; ++before)
            for (size_t taken = 1; taken < bytes.size(); ++taken)
                ASSERT_EQ(Valid(std::string(before, 'x') + bytes.substr(0, taken)), before);
}

TEST(ValidUtf8, KnowsEverySequenceOfUpToThreeBytes) {
    for (uint32_t first = 0; first < 0x100; ++first) {
        for (uint32_t second = 0; second < 0x100; ++second) {
            for (const uint32_t third : {0x00u, 0x41u, 0x7Fu, 0x80u, 0x90u, 0xA0u, 0xBFu, 0xC0u, 0xE0u, 0xF0u, 0xFFu}) {
                uint8_t bytes[64];
                std::fill(bytes, bytes + 64, uint8_t{'x'});
                bytes[20] = static_cast<uint8_t>(first);
                bytes[21] = static_cast<uint8_t>(second);
                bytes[22] = static_cast<uint8_t>(third);
                ASSERT_EQ(Scan::ValidUtf8(bytes, 64), Scan::Reference::ValidUtf8(bytes, 64))
                    << first << ' ' << second << ' ' << third;
            }
        }
    }
}

TEST(ValidUtf8, AgreesWithTheConversionThatMarksWhatIsInvalid) {
    // The reference against another reading of the rules: it accepts just what converts without a replacement.
    for (uint32_t value = 0; value < 0x400000; value += value < 0x11000 ? 1 : 61) {
        for (size_t length = 1; length <= 4; ++length) {
            const std::string bytes = Sequence(value, length);
            const auto* const data = reinterpret_cast<const uint8_t*>(bytes.data());
            Char units[4];
            const size_t count = Utf8::ToUtf16(data, bytes.size(), units, 4);
            const bool isValid = units[0] != 0xFFFD || (length == 3 && (value & 0xFFFF) == 0xFFFD);
            ASSERT_EQ(Scan::Reference::ValidUtf8(data, bytes.size()) == bytes.size(), isValid && count <= 2)
                << value << ' ' << length;
        }
    }
}

TEST(ValidUtf8, MatchesTheReferenceOnRandomBytes) {
    Random random(8);
    for (int round = 0; round < 40000; ++round) {
        std::string bytes;
        const size_t length = random.Below(220);
        const uint32_t plain = 1 + random.Below(12);
        while (bytes.size() < length) bytes += random.Below(plain) ? "a" : EncodedPoint(RandomPoint(random));
        if (random.OneIn(3)) bytes.resize(length); // perhaps within a sequence
        if (!bytes.empty() && random.OneIn(2)) bytes[random.Below(bytes.size())] = static_cast<char>(random.Below(256));
        if (!bytes.empty() && random.OneIn(4)) bytes.erase(random.Below(bytes.size()), 1);
        Valid(bytes);
        ASSERT_FALSE(testing::Test::HasFailure()) << testing::PrintToString(bytes);
    }
}

TEST(WidenUtf8, EqualsTheConversionWithItsLineBreaksNormalised) {
    Random random(9);
    for (int round = 0; round < 20000; ++round) {
        std::string bytes;
        const size_t length = random.Below(200);
        const uint32_t plain = 1 + random.Below(20);
        while (bytes.size() < length) {
            if (random.Below(plain)) {
                bytes += "ab \r\n\r\n\0"s[random.Below(8)];
            } else {
                bytes += EncodedPoint(RandomPoint(random));
            }
        }
        const ExactBytes exact(bytes);
        std::u16string all(bytes.size(), u'\0');
        all.resize(Utf8::ToUtf16(exact.Bytes(), exact.Count(), all.data(), all.size()));
        for (Char& c : all)
            if (c == 0) c = u' ';
        std::u16string wanted(all.size(), u'\0');
        Scan::BreakCounts wantedBreaks;
        wanted.resize(Scan::Reference::CopyWithLineFeeds(all.data(), all.size(), wanted.data(), wantedBreaks).written);

        const std::unique_ptr<Char[]> out(new Char[bytes.size()]);
        Scan::BreakCounts breaks;
        const Scan::Copied copied = Scan::WidenUtf8(exact.Bytes(), exact.Count(), out.get(), breaks);
        ASSERT_EQ(copied.taken, bytes.size());
        ASSERT_EQ(std::u16string(out.get(), copied.written), wanted);
        ASSERT_EQ(breaks.lineFeeds, wantedBreaks.lineFeeds);
        ASSERT_EQ(breaks.returns, wantedBreaks.returns);
    }
}
