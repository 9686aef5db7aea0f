// Files in UTF-8 with the additional setting on: how they are recognised, read, kept and saved.

#include "LoadSaveSupport.h"
#include "base/Surrogates.h"
#include "support/FailureInjection.h"
#include "support/PlainEncoding.h"
#include "support/Random.h"
#include "support/SparseFile.h"
#include "support/WithAdditional.h"

namespace {

constexpr size_t Piece = 65536; // what is read at a time

using PlainEncoding::FileOf;
using PlainEncoding::ToUtf8;

struct Utf8Load : testing::Test {
    Utf8Load() { on->Utf8 = 1; }

    static void ExpectUtf8(const std::string& bytes, const std::u16string& text) {
        LoadedDocument document(bytes);
        EXPECT_EQ(EncodingOf(*document), Encoding::PlainUtf8);
        EXPECT_TRUE(document.Store() == text);
        EXPECT_FALSE(document->LosesBytes());
        EXPECT_EQ(document->GetLineCount(), LinesOf(text));
        EXPECT_EQ(TextBufferProbe::Capacity(*document), text.size() + 1);
        if (bytes.find('\r') == bytes.npos) {
            EXPECT_TRUE(document.Saved(Encoding::Keep, LineEnding::Unix) == bytes);
        }
    }
    static void ExpectAnsi(const std::string& bytes) {
        LoadedDocument document(bytes);
        EXPECT_EQ(EncodingOf(*document), Encoding::Ansi);
        EXPECT_TRUE(document.Store() == WithLineFeeds(Decoded(CodePage::Ansi, bytes)));
        EXPECT_EQ(document->GetLineCount(), LinesOf(document.Store()));
        EXPECT_EQ(TextBufferProbe::Capacity(*document), document->Length() + 1);
    }

    const WithAdditional on;
};

const std::string invalid[] = {"\x80",         "\xC3",         "\xE2\x82",         "\xF0\x9F\x98", "\xC0\xAF",
                               "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF",         "\xE2\x28\xA1"};

// How many bytes of UTF-8 a valid sequence at `at` has; 0 for none.
size_t SequenceAt(const std::string& bytes, size_t at) {
    const auto byte = [&](size_t i) { return at + i < bytes.size() ? static_cast<uint8_t>(bytes[at + i]) : 0u; };
    const auto follows = [&](size_t i) { return (byte(i) & 0xC0) == 0x80; };
    const uint32_t first = byte(0);
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first < 0xE0) return follows(1) ? 2 : 0;
    if (first >= 0xE0 && first < 0xF0) {
        const bool isUsed = (first != 0xE0 || byte(1) >= 0xA0) && (first != 0xED || byte(1) < 0xA0);
        return isUsed && follows(1) && follows(2) ? 3 : 0;
    }
    const bool isUsed = (first != 0xF0 || byte(1) >= 0x90) && (first != 0xF4 || byte(1) < 0x90);
    return first >= 0xF0 && first < 0xF5 && isUsed && follows(1) && follows(2) && follows(3) ? 4 : 0;
}

// Decoded byte by byte, by the definition of UTF-8, with one replacement character for all bytes in a row that are not
// part of it: how many there are is the system's choice.
std::u16string PlainlyDecoded(const std::string& bytes) {
    std::u16string text;
    for (size_t at = 0; at < bytes.size();) {
        const size_t count = SequenceAt(bytes, at);
        uint32_t code = count == 0   ? 0xFFFDu
                        : count == 1 ? static_cast<uint8_t>(bytes[at])
                                     : static_cast<uint8_t>(bytes[at]) & (0xFFu >> (count + 1));
        for (size_t i = 1; i < count; ++i) code = code << 6 | (static_cast<uint8_t>(bytes[at + i]) & 0x3Fu);
        at += count ? count : 1;
        if (code >= 0x10000)
            text += {Surrogates::FirstOf(code), Surrogates::SecondOf(code)};
        else if (code != 0xFFFD || text.empty() || text.back() != u'\uFFFD')
            text += static_cast<Char>(code);
    }
    return text;
}

std::u16string WithSingleReplacements(const std::u16string& text) {
    std::u16string out;
    for (const Char c : text)
        if (c != u'\uFFFD' || out.empty() || out.back() != c) out += c;
    return out;
}

} // namespace

TEST_F(Utf8Load, AFileWithTheSignatureIsDecoded) {
    LoadedDocument document("\xEF\xBB\xBFna\xC3\xAFve \xF0\x9F\x98\x80\n");
    EXPECT_EQ(EncodingOf(*document), Encoding::Utf8);
    EXPECT_EQ(document.Store(), u"na\u00EFve \U0001F600\n");
    EXPECT_FALSE(document->LosesBytes());
    EXPECT_EQ(document.Saved(), "\xEF\xBB\xBFna\xC3\xAFve \xF0\x9F\x98\x80\n");
}

TEST_F(Utf8Load, AFileWithoutOneThatIsValidIsDecodedAndSavedWithoutOne) {
    ExpectUtf8("na\xC3\xAFve \xE2\x82\xAC \xF0\x9F\x98\x80\n", u"na\u00EFve \u20AC \U0001F600\n");
    ExpectUtf8("\xC3\xA9", u"\u00E9");
    ExpectUtf8("a\xC2\x85z", u"a\u0085z");
}

TEST_F(Utf8Load, PlainAsciiIsAnsi) {
    ExpectAnsi("plain\r\ntext\n");
    ExpectAnsi("");
    ExpectAnsi(std::string(3 * Piece, 'x'));
}

TEST_F(Utf8Load, WithTheSettingOffNothingIsGuessed) {
    on->Utf8 = 0;
    ExpectAnsi("na\xC3\xAFve");
    LoadedDocument document("\xEF\xBB\xBFna\xC3\xAFve");
    EXPECT_EQ(document.Store(), Decoded(CodePage::Ansi, "na\xC3\xAFve"));
    EXPECT_TRUE(document->LosesBytes());
}

TEST_F(Utf8Load, OneInvalidByteMakesItAnsi) {
    for (const std::string& bytes : invalid) {
        ExpectAnsi(bytes);
        ExpectAnsi("na\xC3\xAFve " + bytes + " text\r\nmore");
        ExpectAnsi("na\xC3\xAFve " + bytes);
    }
}

TEST_F(Utf8Load, AFileThatTurnsInvalidInItsLastByteIsReadAgain) {
    for (const size_t size : {Piece - 1, Piece, Piece + 1, 3 * Piece, 3 * Piece + 17}) {
        std::string bytes = "plain\r\nfirst\n\xC3\xA9\r\n";
        while (bytes.size() < size) bytes += bytes.size() % 7 ? "a" : "\r\n";
        bytes.resize(size);
        bytes.back() = '\xFF';
        ExpectAnsi(bytes);
        // Also when it begins with pieces of ASCII.
        ExpectAnsi(std::string(2 * Piece + 5, '\n') + bytes);
        // A sequence that the end cuts off.
        bytes.back() = '\xC3';
        ExpectAnsi(bytes);
    }
}

TEST_F(Utf8Load, SequencesAreWholeAtEveryBorderOfAPiece) {
    for (const std::string& letter :
         {std::string("\xC3\xA9"), std::string("\xE2\x82\xAC"), std::string("\xF0\x9F\x98\x80"), std::string("\r\n")}) {
        const std::u16string wide = Decoded(CodePage::Utf8, letter);
        for (size_t back = 0; back <= letter.size(); ++back) {
            for (const size_t border : {Piece, 2 * Piece}) {
                const std::string before = "\xC3\xA9" + std::string(border - back - 2, 'x');
                std::u16string text = u"\u00E9" + std::u16string(border - back - 2, u'x') + wide + u"end";
                ExpectUtf8(before + letter + "end", WithLineFeeds(text));
                text.resize(text.size() - 3);
                ExpectUtf8(before + letter, WithLineFeeds(text));
            }
        }
    }
}

TEST_F(Utf8Load, SequencesMayFollowOneAnotherWithoutABorder) {
    for (size_t shift = 0; shift < 4; ++shift) {
        std::string bytes(shift, 'x');
        std::u16string text(shift, u'x');
        for (size_t i = 0; i < Piece; ++i) {
            bytes += "\xE4\xB8\xAD\xF0\x9F\x98\x80";
            text += u"\u4E2D\U0001F600";
        }
        ExpectUtf8(bytes, text);
    }
}

TEST_F(Utf8Load, InvalidBytesAtTheBorderOfAPieceAreFound) {
    for (const std::string& bytes : invalid)
        for (size_t back = 0; back <= bytes.size(); ++back)
            ExpectAnsi("\xC3\xA9" + std::string(Piece - back - 2, 'x') + bytes + "end");
}

TEST_F(Utf8Load, ZeroBytesAreSpacesAndAskedAbout) {
    LoadedDocument plain(Bytes("\xC3\xA9\0b\0"));
    EXPECT_EQ(EncodingOf(*plain), Encoding::PlainUtf8);
    EXPECT_EQ(plain.Store(), u"\u00E9 b ");
    EXPECT_TRUE(plain->LosesBytes());
    LoadedDocument marked(Bytes("\xEF\xBB\xBF\0\xC3\xA9"));
    EXPECT_EQ(marked.Store(), u" \u00E9");
    EXPECT_TRUE(marked->LosesBytes());
}

TEST_F(Utf8Load, WhatIsInvalidAfterASignatureIsReplacedAndAskedAbout) {
    for (const std::string& bytes : invalid) {
        const std::string file = "ab\r\n\xC3\xA9" + bytes + "z\n\xC3\xA9";
        LoadedDocument document("\xEF\xBB\xBF" + file);
        EXPECT_EQ(EncodingOf(*document), Encoding::Utf8);
        EXPECT_EQ(document.Store(), WithLineFeeds(Decoded(CodePage::Utf8, file)));
        EXPECT_NE(document.Store().find(u'\uFFFD'), std::u16string::npos);
        EXPECT_TRUE(document->LosesBytes());
    }
    // What is replaced already has bytes of its own.
    EXPECT_FALSE(LoadedDocument("\xEF\xBB\xBF\xEF\xBF\xBD")->LosesBytes());
}

TEST_F(Utf8Load, WhatIsInvalidAtTheBorderOfAPieceAfterASignatureIsReplacedAlone) {
    for (const std::string& bytes : invalid) {
        for (const size_t border : {Piece, 2 * Piece}) {
            for (size_t back = 0; back <= bytes.size() + 1; ++back) {
                const std::string file = "\xC3\xA9" + std::string(border - back - 5, 'x') + bytes +
                                         "\xE4\xB8\xAD\xF0\x9F\x98\x80z\n" + std::string(Piece, 'y') + "\xC3\xA9";
                LoadedDocument document("\xEF\xBB\xBF" + file);
                EXPECT_TRUE(WithSingleReplacements(document.Store()) == PlainlyDecoded(file)) << border - back;
                EXPECT_TRUE(document->LosesBytes());
                EXPECT_EQ(document->GetLineCount(), 2u);
            }
        }
    }
}

TEST_F(Utf8Load, MoreBytesThanATextMayHaveAreRefused) {
    const ScratchFolder folder;
    const std::u16string path = folder.Write("file.txt", "\xC3\xA9");
    if (!ResizeSparsely(folder.File("file.txt"), UINT32_MAX)) GTEST_SKIP() << "no room for a sparse file";
    TextDocument document(u"before");
    EXPECT_FALSE(document->Load(path.c_str(), false));
    ExpectNoStore(*document);
}

TEST_F(Utf8Load, RandomTextsEqualTheirConversionAtOnce) {
    Random random(77);
    for (int round = 0; round < 120; ++round) {
        const size_t length = random.OneIn(3) ? Piece - 40 + random.Below(80) : random.Below(3 * Piece);
        const uint32_t plain = 1 + random.Below(60);
        std::u16string text = random.OneIn(2) ? u"\u0142" : u"x";
        while (text.size() < length) {
            static constexpr const Char* Others[] = {u"\u00E9", u"\u20AC", u"\U0001F600", u"\r\n", u"\r", u"\n"};
            if (random.Below(plain))
                text += static_cast<Char>(u'a' + random.Below(26));
            else
                text += Others[random.Below(6)];
        }
        std::string bytes = ToUtf8(text);
        const bool isUtf8 = bytes.size() != text.size();
        if (random.OneIn(3)) {
            const size_t at = random.Below(static_cast<uint32_t>(bytes.size()));
            bytes[at] = '\xFF';
            ExpectAnsi(bytes);
        } else if (isUtf8) {
            ExpectUtf8(bytes, WithLineFeeds(text));
            LoadedDocument document(bytes);
            EXPECT_EQ(document->GetLineEnding(), StyleOf(text));
        }
        ASSERT_FALSE(HasFailure()) << round;
    }
}

TEST_F(Utf8Load, EveryEncodingGoesToEveryOtherAndIsSavedTheSameTwice) {
    constexpr Encoding All[] = {Encoding::Ansi, Encoding::Unicode, Encoding::UnicodeBigEndian, Encoding::Utf8,
                                Encoding::PlainUtf8};
    const std::u16string latin = u"na\u00EFve \u20AC 100\nsecond\n";
    const std::u16string all = latin + u"\u0142\u4E2D \U0001F600\uFEFF\u0085\n";
    for (const Encoding from : All) {
        for (const Encoding to : All) {
            const bool isAnsi = from == Encoding::Ansi || to == Encoding::Ansi;
            const std::u16string text = isAnsi ? latin : all;
            LoadedDocument first(FileOf(text, from));
            ASSERT_EQ(EncodingOf(*first), from);
            ASSERT_EQ(first.Store(), text);
            EXPECT_EQ(first.Saved(to), FileOf(text, to));
            EXPECT_EQ(first.Saved(), FileOf(text, to)) << "again, in the encoding that it has now";
            LoadedDocument second(FileOf(text, to));
            EXPECT_EQ(EncodingOf(*second), to);
            EXPECT_EQ(second.Store(), text);
            EXPECT_EQ(second.Saved(Encoding::Keep, LineEnding::Dos), FileOf(WithReturns(text), to));
        }
    }
}

// Longer than what is read or written at once, with characters of every length at every border.
TEST_F(Utf8Load, LongTextsGoFromEveryEncodingToEveryOther) {
    constexpr Encoding All[] = {Encoding::Unicode, Encoding::UnicodeBigEndian, Encoding::Utf8, Encoding::PlainUtf8};
    Random random(1504);
    for (int round = 0; round < 30; ++round) {
        const size_t length = Piece - 20 + random.Below(Piece + 40);
        std::u16string text = u"\u00E9";
        while (text.size() < length) {
            static constexpr const Char* Others[] = {u"\u00E9", u"\u20AC", u"\U0001F600", u"\n", u"\uFFFD", u"\u0080"};
            if (random.OneIn(3))
                text += Others[random.Below(6)];
            else
                text += static_cast<Char>(u' ' + random.Below(95));
        }
        const Encoding from = random.Pick(All);
        const Encoding to = random.Pick(All);
        LoadedDocument document(FileOf(text, from));
        ASSERT_TRUE(document.Store() == text) << round;
        ASSERT_TRUE(document.Saved(to, LineEnding::Unix) == FileOf(text, to)) << round;
        ASSERT_TRUE(document.Saved() == FileOf(text, to)) << round;
        ASSERT_TRUE(document.Saved(Encoding::Keep, LineEnding::Dos) == FileOf(WithReturns(text), to)) << round;
    }
}

TEST_F(Utf8Load, EveryAllocationAndFileCallFailsInTurn) {
    std::string bytes = "\xC3\xA9" + std::string(2 * Piece, 'x');
    for (const char last : {'y', '\xFF'}) { // the second is read again from the start
        bytes.back() = last;
        ScratchFolder folder;
        const std::u16string path = folder.Write("file.txt", bytes);
        const std::u16string expected = LoadedDocument(bytes).Store();
        const auto load = [&] {
            auto pause = std::make_unique<FailurePause>();
            TextDocument document(u"before\nit");
            pause.reset();
            const bool loaded = document->Load(path.c_str(), false);
            const FailurePause checking;
            if (loaded) {
                EXPECT_TRUE(document.Store() == expected);
            } else {
                ExpectNoStore(*document);
            }
            return loaded;
        };
        EXPECT_GT(FailEachAllocation(load), 3u);
        EXPECT_EQ(FailEachFileCall(load), last == 'y' ? 6u : 10u)
            << "opened, sized, dated, read; sought and read again";
    }
}
