#include "base/RoundTrip.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

constexpr size_t Piece = 4096; // characters that are converted at once

bool Keeps(CodePage page, const std::u16string& text) { return KeepsText(page, text.data(), text.size()); }

// The bytes are in a block of just their size, so that the sanitizers see what is read beyond them.
bool Gives(CodePage page, const std::u16string& text, const std::string& bytes) {
    const std::unique_ptr<uint8_t[]> block(new uint8_t[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), block.get());
    return GivesBytes(page, text.data(), text.size(), block.get(), bytes.size());
}

bool LooksLike(const std::u16string& text) { return LooksLikeUtf8(CodePage::Windows1252, text.data(), text.size()); }

} // namespace

TEST(KeepsText, TellsWhatDoesNotComeBack) {
    EXPECT_TRUE(Keeps(CodePage::Windows1252, u""));
    EXPECT_TRUE(Keeps(CodePage::Windows1252, u"a\u00E9\n"));
    for (const std::u16string& lost :
         {std::u16string(u"\u0107"), std::u16string(u"\u4E00"), std::u16string(1, Char{0xD800})}) {
        for (const size_t before : {0u, 4094u, 4095u, 4096u, 10000u}) {
            const std::u16string text = std::u16string(before, u'x') + lost + u"y";
            EXPECT_FALSE(Keeps(CodePage::Windows1252, text)) << before;
        }
    }
}

// Those before have been compared by then, and the buffers hold what they have left.
TEST(KeepsText, LooksAtEachPieceByItself) {
    std::u16string text;
    for (size_t i = 0; i < 3 * Piece; ++i) text += static_cast<Char>(0xC0 + i % 60);
    EXPECT_TRUE(Keeps(CodePage::Windows1252, text));
    for (const size_t at : {size_t{0}, Piece - 1, Piece, 2 * Piece, text.size() - 1}) {
        std::u16string lost = text;
        lost[at] = u'\u0107';
        EXPECT_FALSE(Keeps(CodePage::Windows1252, lost)) << at;
    }
}

TEST(KeepsText, DoesNotSplitPairsOfSurrogates) {
    for (size_t before = 4090; before < 4100; ++before) {
        std::u16string text(before, u'x');
        for (int i = 0; i < 5000; ++i) text += u"\U0001F600";
        EXPECT_TRUE(Keeps(CodePage::Utf8, text)) << before;
        text += Char{0xDE00};
        EXPECT_FALSE(Keeps(CodePage::Utf8, text)) << before;
    }
}

TEST(GivesBytes, OnlyTheVeryBytes) {
    EXPECT_TRUE(Gives(CodePage::Windows1252, u"", ""));
    EXPECT_FALSE(Gives(CodePage::Windows1252, u"", "a"));
    EXPECT_TRUE(Gives(CodePage::Windows1252, u"a\u00E9", "a\xE9"));
    EXPECT_TRUE(Gives(CodePage::Utf8, u"a\u00E9", "a\xC3\xA9"));
    EXPECT_FALSE(Gives(CodePage::Windows1252, u"a\u00E9", "a\xC3\xA9"));
    EXPECT_FALSE(Gives(CodePage::Windows1252, u"a\u00E9", "a"));
    EXPECT_FALSE(Gives(CodePage::Windows1252, u"a\u00E9", "a\xE9\xE9"));
    EXPECT_FALSE(Gives(CodePage::Windows1252, u"a\u00E9", "a\xEA"));
}

TEST(GivesBytes, LooksAtEachPieceByItself) {
    std::u16string text;
    std::string bytes;
    for (size_t i = 0; i < 3 * Piece; ++i) {
        text += static_cast<Char>(0xC0 + i % 60);
        bytes += static_cast<char>(0xC0 + i % 60);
    }
    EXPECT_TRUE(Gives(CodePage::Windows1252, text, bytes));
    EXPECT_FALSE(Gives(CodePage::Windows1252, text, bytes + "x"));
    for (const size_t at : {size_t{0}, Piece - 1, Piece, 2 * Piece, text.size() - 1}) {
        EXPECT_FALSE(Gives(CodePage::Windows1252, text, bytes.substr(0, at))) << at;
        std::string other = bytes;
        other[at] = 'x';
        EXPECT_FALSE(Gives(CodePage::Windows1252, text, other)) << at;
    }
}

TEST(LooksLikeUtf8, SequencesThroughoutAndAtLeastOne) {
    EXPECT_FALSE(LooksLike(u""));
    EXPECT_FALSE(LooksLike(u"plain"));
    EXPECT_FALSE(LooksLike(std::u16string(2 * Piece, u'x')));
    EXPECT_TRUE(LooksLike(u"\u00C3\u00A9"));
    EXPECT_TRUE(LooksLike(u"a\u00C3\u00A9" + std::u16string(2 * Piece, u'x')));
    EXPECT_FALSE(LooksLike(u"\u00C3\u00A9\u00E9"));
    EXPECT_FALSE(LooksLike(u"\u00E9\u00C3\u00A9"));
    EXPECT_FALSE(LooksLike(u"\u00C3"));
    EXPECT_FALSE(LooksLike(u"\u00E9\u00E9\u00E9\u00E9"));
    // The best fit of the one is a plain c, and the other is a plain byte.
    EXPECT_FALSE(LooksLike(u"\u0107\u007F"));
}

// A sequence may begin in one piece and end in the next, where the text of the one before must be gone.
TEST(LooksLikeUtf8, SequencesGoOnFromPieceToPiece) {
    const std::u16string sequence = u"\u00F0\u0178\u02DC\u20AC"; // four bytes
    for (size_t before = Piece - 5; before <= Piece + 1; ++before) {
        const std::u16string start = std::u16string(before, u'x') + sequence;
        const std::u16string more(Piece, u'y');
        EXPECT_TRUE(LooksLike(start)) << before;
        EXPECT_TRUE(LooksLike(start + more + sequence)) << before;
        EXPECT_FALSE(LooksLike(start.substr(0, start.size() - 1))) << before;
        EXPECT_FALSE(LooksLike(start.substr(0, start.size() - 1) + more)) << before;
        EXPECT_FALSE(LooksLike(start + u"\u00A9" + more)) << before;
    }
}

TEST(LooksLikeUtf8, APageThatIsUtf8IsTakenForNothingElse) {
    const std::u16string text = u"a\u00E9";
    EXPECT_FALSE(LooksLikeUtf8(CodePage::Utf8, text.data(), text.size()));
}

TEST(KeepsEveryByte, APageOfSingleBytesDoes) {
    EXPECT_TRUE(KeepsEveryByte(CodePage::Windows1252));
    EXPECT_FALSE(KeepsEveryByte(CodePage::Utf8));
}
