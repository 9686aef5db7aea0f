#include "binary/HexPattern.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/FailureInjection.h"

namespace {

using Bytes = std::vector<uint8_t>;

Bytes Parsed(const std::u16string& text, HexPattern::Result expected = HexPattern::Result::Bytes) {
    Array<uint8_t> bytes;
    EXPECT_TRUE(bytes.Append(9));
    EXPECT_EQ(HexPattern::Parse(text.data(), static_cast<uint32_t>(text.size()), bytes), expected);
    return {bytes.Items(), bytes.Items() + bytes.Count()};
}

void ExpectInvalid(const std::u16string& text) { EXPECT_EQ(Parsed(text, HexPattern::Result::Invalid), Bytes()); }

} // namespace

TEST(HexPattern, PairsWithOrWithoutBlanks) {
    const Bytes expected = {0x01, 0xAB, 0xCD};
    EXPECT_EQ(Parsed(u"01ABCD"), expected);
    EXPECT_EQ(Parsed(u"01 AB CD"), expected);
    EXPECT_EQ(Parsed(u"01ab  cD"), expected);
    EXPECT_EQ(Parsed(u"  01\tAbCd \t"), expected);
}

TEST(HexPattern, EveryByteInBothCases) {
    for (int byte = 0; byte < 256; ++byte) {
        for (const char* digits : {"0123456789abcdef", "0123456789ABCDEF"}) {
            const std::u16string text = {static_cast<char16_t>(digits[byte / 16]),
                                         static_cast<char16_t>(digits[byte % 16])};
            EXPECT_EQ(Parsed(text), Bytes(1, static_cast<uint8_t>(byte)));
        }
    }
}

TEST(HexPattern, AnOddDigitIsInvalid) {
    ExpectInvalid(u"1");
    ExpectInvalid(u"012");
    ExpectInvalid(u"01 2");
    ExpectInvalid(u"0 12");
    ExpectInvalid(u"1 2");
}

TEST(HexPattern, AnyOtherCharacterIsInvalid) {
    ExpectInvalid(u"0g");
    ExpectInvalid(u"g0");
    ExpectInvalid(u"01,02");
    ExpectInvalid(u"0x01");
    ExpectInvalid(u"01\n02");
    ExpectInvalid(u"01\r\n");
    ExpectInvalid(std::u16string(u"01\0", 3));
    ExpectInvalid(u"\uFF11\uFF12"); // digits of another width
    ExpectInvalid(u"@A");
    ExpectInvalid(u"/0");
    ExpectInvalid(u":0");
    ExpectInvalid(u"`0");
}

TEST(HexPattern, ATextWithoutDigitsHasNoBytes) {
    EXPECT_EQ(Parsed(u""), Bytes());
    EXPECT_EQ(Parsed(u"  \t"), Bytes());
}

TEST(HexPattern, EveryAllocationFailsInTurn) {
    EXPECT_GE(FailEachAllocation([] {
                  Array<uint8_t> bytes;
                  const auto result = HexPattern::Parse(u"0123456789", 10, bytes);
                  if (result == HexPattern::Result::Bytes) return bytes.Count() == 5;
                  EXPECT_EQ(result, HexPattern::Result::OutOfMemory);
                  EXPECT_EQ(bytes.Count(), 0u);
                  return false;
              }),
              1u);
}
