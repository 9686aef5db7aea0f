#include "binary/HexText.h"

#include "base/WString.h"
#include "support/FailureInjection.h"

#include <string>

namespace {

std::u16string Offset(uint64_t offset) {
    WString text;
    EXPECT_TRUE(HexText::AppendOffset(text, offset));
    return text.Text();
}

// All ones for a text that is no offset.
uint64_t Parsed(const std::u16string& text) {
    uint64_t offset = 12345;
    if (HexText::ParseOffset(text.data(), static_cast<uint32_t>(text.size()), offset)) return offset;
    EXPECT_EQ(offset, 12345u);
    return UINT64_MAX;
}

} // namespace

TEST(HexText, OffsetsHaveTenUpperCaseDigitsAtLeast) {
    EXPECT_EQ(Offset(0), u"0000000000");
    EXPECT_EQ(Offset(0xabcdef), u"0000ABCDEF");
    EXPECT_EQ(Offset(0x123456789A), u"123456789A");
    EXPECT_EQ(Offset(0x10123456789), u"10123456789");
    EXPECT_EQ(Offset(UINT64_MAX), u"FFFFFFFFFFFFFFFF");
}

TEST(HexText, AppendingWithoutMemoryLeavesTheText) {
    const uint64_t failures = FailEachAllocation([] {
        WString text;
        const bool done = HexText::AppendOffset(text, 1);
        EXPECT_EQ(text.Length(), done ? 10u : 0u);
        return done;
    });
    EXPECT_GE(failures, 1u);
}

TEST(HexText, DigitsOfZeroAreNone) {
    EXPECT_EQ(HexText::CountDigits(0), 0u);
    EXPECT_EQ(HexText::CountDigits(1), 1u);
    EXPECT_EQ(HexText::CountDigits(15), 1u);
    EXPECT_EQ(HexText::CountDigits(16), 2u);
    EXPECT_EQ(HexText::CountDigits(uint64_t{1} << 40), 11u);
    EXPECT_EQ(HexText::CountDigits(UINT64_MAX), 16u);
}

TEST(HexText, OffsetsAreReadInEitherCaseWithPrefixAndBlanks) {
    EXPECT_EQ(Parsed(u"0"), 0u);
    EXPECT_EQ(Parsed(u"1F"), 0x1Fu);
    EXPECT_EQ(Parsed(u"aBcD"), 0xABCDu);
    EXPECT_EQ(Parsed(u"0x20"), 0x20u);
    EXPECT_EQ(Parsed(u"0X20"), 0x20u);
    EXPECT_EQ(Parsed(u" \t0000000010 "), 0x10u);
    EXPECT_EQ(Parsed(u"123456789AB"), 0x123456789ABu);
}

TEST(HexText, OtherTextsAreNoOffsets) {
    for (const char16_t* text : {u"", u" ", u"0x", u"x", u"12g", u"1 2", u"-1", u"0x0x1", u"1.0"})
        EXPECT_EQ(Parsed(text), UINT64_MAX) << testing::PrintToString(std::u16string(text));
}

TEST(HexText, OffsetsOfMoreThan64BitsAreTheLargest) {
    uint64_t offset = 0;
    const std::u16string texts[] = {u"10000000000000000", u"FFFFFFFFFFFFFFFFF", std::u16string(100, u'7')};
    for (const std::u16string& text : texts) {
        EXPECT_TRUE(HexText::ParseOffset(text.data(), static_cast<uint32_t>(text.size()), offset));
        EXPECT_EQ(offset, UINT64_MAX);
    }
    EXPECT_EQ(Parsed(u"00000000000000000000000000012"), 0x12u);
}

TEST(HexText, PrintableBytesShowAsThemselvesOthersAsDots) {
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_EQ(HexText::ShownAs(static_cast<uint8_t>(byte)), byte >= 32 && byte <= 126 ? byte : u'.') << byte;
}
