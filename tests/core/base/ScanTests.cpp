#include "base/Scan.h"

#include "support/Random.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using namespace std::string_literals;

// Text in a block of its own that ends where the text ends, so that the sanitizers see every step
// outside; `shift` characters come before it, for every alignment to the vectors.
class Exact {
public:
    Exact(const std::u16string& text, size_t charactersBefore)
        : shift(charactersBefore), count(text.size()), block(new Char[charactersBefore + text.size()]) {
        for (size_t i = 0; i < shift; ++i) block[i] = i % 2 ? u'\n' : 0;
        std::copy(text.begin(), text.end(), block.get() + shift);
    }
    const Char* Text() const { return block.get() + shift; }
    size_t Count() const { return count; }

private:
    size_t shift;
    size_t count;
    std::unique_ptr<Char[]> block;
};

constexpr size_t LongestText = 200;

// Every length up to LongestText, several alignments each, with more and with fewer of `special`.
template <class Check> void ForRandomTexts(const std::u16string& special, Check check) {
    Random random(19);
    for (size_t length = 0; length <= LongestText; ++length) {
        for (int turn = 0; turn < 24; ++turn) {
            const unsigned spacing = turn % 3 == 0 ? 3 : turn % 3 == 1 ? 40 : 1000;
            std::u16string text;
            for (size_t i = 0; i < length; ++i)
                text.push_back(
                    random.Below(spacing) == 0
                        ? special[random.Below(special.size())]
                        : static_cast<Char>(random.Below(2) ? 'a' + random.Below(8) : 0x0A00 + random.Below(8)));
            check(Exact(text, static_cast<size_t>(turn) % 9));
            if (testing::Test::HasFatalFailure()) return;
        }
    }
}

} // namespace

TEST(Scan, CountLineFeedsMatchesTheReference) {
    ForRandomTexts(u"\n", [](const Exact& text) {
        ASSERT_EQ(Scan::CountLineFeeds(text.Text(), text.Count()),
                  Scan::Reference::CountLineFeeds(text.Text(), text.Count()));
    });
}

TEST(Scan, CountLineFeedsCountsPastTheRangeOfAByte) {
    for (const size_t count : {size_t{127 * 32}, size_t{128 * 32}, size_t{100'003}}) {
        const std::u16string text(count, u'\n');
        EXPECT_EQ(Scan::CountLineFeeds(text.data(), count), count);
    }
}

TEST(Scan, HalvesOfACharacterAreNoLineFeeds) {
    const std::u16string text(100, u'\u0A0A');
    const std::u16string other(100, u'\u0A00');
    EXPECT_EQ(Scan::CountLineFeeds(text.data(), 100), 0u);
    EXPECT_EQ(Scan::FindLineFeed(other.data(), 100), 100u);
}

TEST(Scan, FindLineFeedMatchesTheReference) {
    ForRandomTexts(u"\n", [](const Exact& text) {
        ASSERT_EQ(Scan::FindLineFeed(text.Text(), text.Count()),
                  Scan::Reference::FindLineFeed(text.Text(), text.Count()));
    });
    EXPECT_EQ(Scan::FindLineFeed(u"ab\n\n", 4), 2u);
}

TEST(Scan, FindUnprintableMatchesTheReference) {
    ForRandomTexts(u"\t \x7F~\u00A0\uFFFF", [](const Exact& text) {
        ASSERT_EQ(Scan::FindUnprintable(text.Text(), text.Count()),
                  Scan::Reference::FindUnprintable(text.Text(), text.Count()));
    });
    for (uint32_t unit = 0; unit < 0x10000; ++unit) {
        const std::u16string text(40, static_cast<Char>(unit));
        ASSERT_EQ(Scan::FindUnprintable(text.data(), 40), unit >= 0x20 && unit <= 0x7E ? 40u : 0u) << unit;
    }
}

TEST(Scan, FindLineStartMatchesTheReference) {
    ForRandomTexts(u"\n", [](const Exact& text) {
        ASSERT_EQ(Scan::FindLineStart(text.Text(), text.Count()),
                  Scan::Reference::FindLineStart(text.Text(), text.Count()));
    });
    EXPECT_EQ(Scan::FindLineStart(u"a\nb\ncd", 6), 4u);
    EXPECT_EQ(Scan::FindLineStart(u"a\nb\ncd", 4), 4u);
    EXPECT_EQ(Scan::FindLineStart(u"abc", 3), 0u);
}

TEST(Scan, SkipLinesMatchesTheReference) {
    ForRandomTexts(u"\n", [](const Exact& text) {
        for (const size_t lines : {size_t{0}, size_t{1}, size_t{2}, size_t{17}, LongestText + 1}) {
            size_t passed = 99;
            size_t expectedPassed = 0;
            const size_t expected = Scan::Reference::SkipLines(text.Text(), text.Count(), lines, expectedPassed);
            ASSERT_EQ(Scan::SkipLines(text.Text(), text.Count(), lines, passed), expected);
            ASSERT_EQ(passed, expectedPassed);
        }
    });
}

TEST(Scan, SkipLinesMatchesTheReferenceOverLongTexts) {
    Random random(23);
    for (int round = 0; round < 60; ++round) {
        std::u16string text(random.Below(30'000), u'x');
        const size_t spacing = round % 3 == 0 ? 5000 : 60;
        for (Char& c : text)
            if (random.Below(spacing) == 0) c = u'\n';
        const size_t all = Scan::Reference::CountLineFeeds(text.data(), text.size());
        for (const size_t lines : {size_t{0}, all / 2, all, all + 1, size_t{random.Below(all + 1)}}) {
            size_t passed = 0;
            size_t expectedPassed = 0;
            const size_t expected = Scan::Reference::SkipLines(text.data(), text.size(), lines, expectedPassed);
            ASSERT_EQ(Scan::SkipLines(text.data(), text.size(), lines, passed), expected) << lines;
            ASSERT_EQ(passed, expectedPassed);
        }
    }
}

TEST(Scan, SkipLinesBackMatchesTheReference) {
    Random random(43);
    for (int round = 0; round < 400; ++round) {
        std::u16string text(random.Below(round % 4 ? 300 : 30'000), u'x');
        const size_t spacing = round % 3 == 0 ? 2000 : round % 3 == 1 ? 60 : 3;
        for (Char& c : text)
            if (random.Below(spacing) == 0) c = u'\n';
        // A position that starts a line.
        const size_t from = Scan::FindLineStart(text.data(), random.Below(text.size() + 1));
        const size_t all = Scan::Reference::CountLineFeeds(text.data(), from);
        for (const size_t lines : {size_t{0}, size_t{1}, all / 2, all, all + 1, all + 2}) {
            size_t passed = 0;
            size_t expectedPassed = 0;
            const size_t expected = Scan::Reference::SkipLinesBack(text.data(), from, lines, expectedPassed);
            ASSERT_EQ(Scan::SkipLinesBack(text.data(), from, lines, passed), expected) << lines;
            ASSERT_EQ(passed, expectedPassed);
        }
    }
    size_t passed = 0;
    EXPECT_EQ(Scan::SkipLinesBack(u"a\nb\nc\n", 6, 2, passed), 2u);
    EXPECT_EQ(passed, 2u);
    EXPECT_EQ(Scan::SkipLinesBack(u"a\nb\nc\n", 6, 9, passed), 0u);
    EXPECT_EQ(passed, 3u);
}

TEST(Scan, FindZeroByteMatchesTheReference) {
    ForRandomTexts(std::u16string(1, u'\0'), [](const Exact& text) {
        const auto* bytes = reinterpret_cast<const uint8_t*>(text.Text());
        const size_t size = text.Count() * 2;
        ASSERT_EQ(Scan::FindZeroByte(bytes, size), Scan::Reference::FindZeroByte(bytes, size));
        if (size == 0) return;
        ASSERT_EQ(Scan::FindZeroByte(bytes + 1, size - 1), Scan::Reference::FindZeroByte(bytes + 1, size - 1));
    });
}

TEST(Scan, ABalanceIsFoundAsByTheReference) {
    for (const std::u16string& marks : {u"{}"s, u"{{{{}}}}}"s, u"{{}}\0"s}) {
        ForRandomTexts(marks, [](const Exact& text) {
            for (size_t from = 0; from < text.Count(); ++from) {
                if (text.Text()[from] == u'{') {
                    ASSERT_EQ(Scan::FindBalanceForward(text.Text(), text.Count(), from, u'{', u'}'),
                              Scan::Reference::FindBalanceForward(text.Text(), text.Count(), from, u'{', u'}'));
                } else if (text.Text()[from] == u'}') {
                    ASSERT_EQ(Scan::FindBalanceBackward(text.Text(), from, u'}', u'{'),
                              Scan::Reference::FindBalanceBackward(text.Text(), from, u'}', u'{'));
                }
            }
        });
    }
}

TEST(Scan, ABalanceIsFoundOverLongStretches) {
    const std::u16string text = u"{" + std::u16string(5000, u'{') + std::u16string(777, u'x') +
                                std::u16string(5000, u'}') + std::u16string(99, u'y') + u"}";
    EXPECT_EQ(Scan::FindBalanceForward(text.data(), text.size(), 0, u'{', u'}'), text.size() - 1);
    EXPECT_EQ(Scan::FindBalanceForward(text.data(), text.size(), 1, u'{', u'}'), text.size() - 101);
    EXPECT_EQ(Scan::FindBalanceForward(text.data(), text.size() - 1, 0, u'{', u'}'), Scan::NotFound);
    EXPECT_EQ(Scan::FindBalanceBackward(text.data(), text.size() - 1, u'}', u'{'), 0u);
    EXPECT_EQ(Scan::FindBalanceBackward(text.data() + 1, text.size() - 2, u'}', u'{'), Scan::NotFound);
}

TEST(Scan, WidenAsciiStopsAtTheFirstHighByte) {
    Random random(29);
    for (size_t length = 0; length <= LongestText; ++length) {
        for (int turn = 0; turn < 16; ++turn) {
            const auto bytes = std::make_unique<uint8_t[]>(length);
            for (size_t i = 0; i < length; ++i)
                bytes[i] = static_cast<uint8_t>(random.Below(100) ? random.Below(128) : 128 + random.Below(128));
            const auto out = std::make_unique<Char[]>(length);
            const auto expected = std::make_unique<Char[]>(length);
            const size_t taken = Scan::WidenAscii(bytes.get(), length, out.get());
            ASSERT_EQ(taken, Scan::Reference::WidenAscii(bytes.get(), length, expected.get()));
            ASSERT_EQ(std::memcmp(out.get(), expected.get(), taken * sizeof(Char)), 0);
        }
    }
}

TEST(Scan, NarrowAsciiStopsAtTheFirstOtherCharacter) {
    Random random(31);
    for (const Char other : {u'\x80', u'\xFF', u'\u0100', u'\u4100', u'\u8041', u'\uFF41'}) {
        for (size_t length = 0; length <= 100; ++length) {
            std::u16string text(length, u' ');
            for (Char& c : text) c = static_cast<Char>(random.Below(60) ? random.Below(128) : other);
            const Exact input(text, length % 9);
            const auto out = std::make_unique<uint8_t[]>(length);
            const auto expected = std::make_unique<uint8_t[]>(length);
            const size_t taken = Scan::NarrowAscii(input.Text(), length, out.get());
            ASSERT_EQ(taken, Scan::Reference::NarrowAscii(input.Text(), length, expected.get()));
            ASSERT_EQ(std::memcmp(out.get(), expected.get(), taken), 0);
        }
    }
}

TEST(Scan, SwapBytesExchangesTheTwoBytesOfEveryUnit) {
    ForRandomTexts(u"\u1234\uFFFE\u00FF", [](const Exact& text) {
        std::u16string out(text.Count(), 0);
        std::u16string expected(text.Count(), 0);
        Scan::SwapBytes(text.Text(), text.Count(), out.data());
        Scan::Reference::SwapBytes(text.Text(), text.Count(), expected.data());
        ASSERT_EQ(out, expected);
        Scan::SwapBytes(out.data(), out.size(), out.data()); // in place
        ASSERT_EQ(out, std::u16string(text.Text(), text.Count()));
    });
    Char unit = u'\u1234';
    Scan::SwapBytes(&unit, 1, &unit);
    EXPECT_EQ(unit, u'\u3412');
}
