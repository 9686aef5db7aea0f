#include "support/Random.h"
#include "syntax/CharSearchSet.h"
#include "syntax/CharacterClass.h"
#include "syntax/TokenStartScanner.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

// Characters that share a byte with word characters and stops are among them.
constexpr std::u16string_view Letters = u"azAZ09_#@[`{/:\" '\t\n\u00E1\u2F2F\u6161\u0061\uFFFF\u8061\u0100";

std::vector<Char> RandomText(Random& random, size_t length, uint32_t rare) {
    std::vector<Char> text(length);
    for (Char& c : text) c = random.OneIn(rare) ? Letters[random.Below(Letters.size())] : u'.';
    return text;
}

void ExpectMap(const TokenStartScanner& scanner, const std::vector<Char>& text, bool allStops,
               std::u16string_view stops) {
    TokenMap map;
    scanner.Map(text.data(), text.data() + text.size(), allStops, map);
    const size_t count = std::min<size_t>(text.size(), TokenStartScanner::Span);
    ASSERT_EQ(map.start, text.data());
    ASSERT_EQ(map.end, text.data() + count);
    for (size_t i = 0; i < 64; ++i) {
        const bool isWord = i < count && Text::IsWordChar(text[i]);
        const bool isStop = i < count && !isWord && (allStops || stops.find(text[i]) != stops.npos);
        ASSERT_EQ(map.words >> i & 1, isWord) << i << " of " << count;
        ASSERT_EQ(map.stops >> i & 1, isStop) << i << " of " << count;
    }
}

} // namespace

TEST(CharSearchSet, FindsTheFirstMember) {
    Random random(51);
    for (int round = 0; round < 3000; ++round) {
        CharSearchSet stops;
        std::u16string members;
        for (uint32_t n = random.Below(6); n > 0; --n) {
            const Char c = Letters[random.Below(Letters.size())];
            const bool bothCases = random.OneIn(2);
            stops.Add(c, bothCases);
            members += c;
            if (bothCases && Text::IsAsciiLetter(c)) members += static_cast<Char>(c ^ 0x20);
        }
        const std::vector<Char> text = RandomText(random, random.Below(70), 8);
        const size_t expected = std::min(std::u16string(text.begin(), text.end()).find_first_of(members), text.size());
        const Char* found = stops.Find(text.data(), text.data() + text.size());
        ASSERT_EQ(static_cast<size_t>(found - text.data()), expected);
    }
}

TEST(CharSearchSet, HoldsAsManyAsAnEngineCanAskFor) {
    CharSearchSet stops;
    stops.Add(u'"');
    stops.Add(u'\'');
    for (Char c : {u'a', u'b', u'c', u'd', u'e', u'f'}) stops.Add(c, true);
    for (Char c : {u'a', u'A', u'f', u'F', u'"', u'\''}) EXPECT_TRUE(stops.Contains(c));
    EXPECT_FALSE(stops.Contains(u'g'));
    stops.Clear();
    EXPECT_FALSE(stops.Contains(u'a'));
}

TEST(TokenStartScanner, MapsWordsAndStops) {
    Random random(52);
    TokenStartScanner scanner;
    for (Char c : {u'"', u'\'', u'/'}) scanner.AddStop(c);
    for (int round = 0; round < 4000; ++round) {
        ExpectMap(scanner, RandomText(random, random.Below(90), 1 + random.Below(3)), random.OneIn(4), u"\"'/");
    }
}

TEST(TokenStartScanner, EveryCharacterIsDistinguished) {
    TokenStartScanner scanner;
    scanner.AddStop(u'"');
    scanner.AddStop(u'/');
    for (uint32_t c = 0; c <= 0xFFFF; ++c)
        ExpectMap(scanner, std::vector<Char>(1 + c % 20, static_cast<Char>(c)), false, u"\"/");
}

TEST(TokenStartScanner, TooManyStopsStopEverywhere) {
    TokenStartScanner scanner;
    for (Char c : {u'"', u'\'', u'/', u'@', u'['}) scanner.AddStop(c);
    Random random(53);
    for (int round = 0; round < 200; ++round) ExpectMap(scanner, RandomText(random, random.Below(90), 1), true, u"");
    TokenMap map;
    const Char text[] = u".:a";
    scanner.Map(text, text + 3, false, map);
    EXPECT_EQ(map.stops, 3u);
    TokenStartScanner everywhere;
    everywhere.StopEverywhere();
    everywhere.Map(text, text + 3, false, map);
    EXPECT_EQ(map.stops, 3u);
    EXPECT_EQ(map.words, 4u);
}

TEST(CharacterTable, KnowsTheClasses) {
    CharacterTable table;
    EXPECT_EQ(table.Flags(u'a'), CharFlag::Word);
    EXPECT_EQ(table.Flags(u'#'), CharFlag::Word);
    EXPECT_EQ(table.Flags(u'7'), CharFlag::Word | CharFlag::Digit);
    EXPECT_EQ(table.Flags(u'\t'), CharFlag::Blank);
    EXPECT_EQ(table.Flags(u'\''), CharFlag::Quote);
    EXPECT_EQ(table.Flags(u'\n'), 0);
    EXPECT_EQ(table.Flags(0xFF41), 0);
    table.Add(u'r', CharFlag::Marker, true);
    EXPECT_EQ(table.Flags(u'R'), CharFlag::Word | CharFlag::Marker);
    table.Add(0x00E4, CharFlag::Keyword);
    EXPECT_EQ(table.Flags(0x00F6), CharFlag::Keyword);
}
