#include "base/CombiningMarks.h"

#include <gtest/gtest.h>

#include <string>

namespace {

void ExpectAll(const std::u32string& characters, bool isMark) {
    for (const char32_t c : characters)
        EXPECT_EQ(CombiningMarks::IsMark(c), isMark) << std::hex << static_cast<uint32_t>(c);
}

} // namespace

TEST(CombiningMarks, MarksOfEveryScript) {
    ExpectAll(U"\u0300\u036F\u0483\u05B8\u064E\u0711\u093F\u09CD\u0BC6\u0E31\u0EB5\u0F71\u103B\u135D\u17D2\u180B"
              U"\u1AB0\u20DD\u3099\uA982\uABEC\uFB1E\uFE00\uFE0F\uFE20\uFE2F",
              true);
    ExpectAll(U"\U000101FD\U00011000\U00011347\U0001D165\U0001E8D0\U0001E944\U0001E94A\U000E0100\U000E01EF", true);
}

TEST(CombiningMarks, NothingElse) {
    ExpectAll(U"a~\u00E9\u00A8\u02FF\u0370\u0482\u048A\u05BE\u0904\u0E01\u0E33\u0E40\u200D\u20CF\u3042\u4E00\uAC00"
              U"\uFDFF\uFE10\uFE30\uFFFD\uFFFF",
              false);
    ExpectAll(U"\U00010000\U0001E94B\U0001F600\U0001F3FB\U0001FFFF\U00020000\U000E00FF\U000E01F0\U0010FFFF", false);
    for (uint32_t half = 0xD800; half < 0xE000; ++half) EXPECT_FALSE(CombiningMarks::IsMark(half));
}
