#include "AnsiPage.h"
#include "LoadSaveSupport.h"
#include "base/RoundTrip.h"
#include "support/Random.h"
#include "support/WithAdditional.h"

// What loading a file and saving it again does to its bytes: docs/guarantees.md has the table.

namespace {

// As one break of a line each, of single bytes or of units in either order.
std::string WithPlainBreaks(const std::string& bytes) {
    std::string out;
    for (size_t i = 0; i < bytes.size(); ++i) {
        out.push_back(bytes[i] == '\r' ? '\n' : bytes[i]);
        if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
    }
    return out;
}

struct Outcome {
    std::string saved;
    bool losesBytes;
};
Outcome SaveUnedited(const std::string& bytes) {
    LoadedDocument document(bytes);
    const bool losesBytes = document->LosesBytes();
    return {document.Saved().value_or("(not saved)"), losesBytes};
}

void ExpectIdentical(const std::string& bytes) {
    const Outcome outcome = SaveUnedited(bytes);
    EXPECT_EQ(outcome.saved, bytes);
    EXPECT_FALSE(outcome.losesBytes);
}

void ExpectAsked(const std::string& bytes, const std::string& saved) {
    const Outcome outcome = SaveUnedited(bytes);
    EXPECT_EQ(outcome.saved, saved);
    EXPECT_TRUE(outcome.losesBytes);
}

bool IsWindows1252() {
    const uint8_t euro = 0x80; // of some pages of two bytes as well
    const uint8_t umlaut = 0xE4;
    Char c = 0;
    Char d = 0;
    return ToUtf16(CodePage::Ansi, &euro, 1, &c, 1) == 1 && c == 0x20AC &&
           ToUtf16(CodePage::Ansi, &umlaut, 1, &d, 1) == 1 && d == 0x00E4;
}

// The question that is asked is right for whatever bytes: it is asked when they would change, and only then.
void ExpectAskedOnlyWhereBytesChange(uint32_t seed) {
    std::mt19937 random(seed);
    for (int round = 0; round < 150; ++round) {
        // Often only letters and what begins characters of several bytes; a few NULs, breaks and signatures.
        const uint32_t kind = random() % 4;
        std::string bytes = kind == 3 ? "\xEF\xBB\xBF" : "";
        const size_t length = random() % 3 == 0 ? 5000 + random() % 5000 : random() % 20;
        while (bytes.size() < length) {
            const auto byte = static_cast<char>(random());
            const bool isPlain = (byte & 0x80) == 0;
            if (kind == 0 || !isPlain) bytes.push_back(byte == 0 && random() % 200 ? 'x' : byte);
            if (kind && isPlain) bytes.push_back(random() % 20 ? static_cast<char>('@' + byte % 60) : '\n');
        }
        const Outcome outcome = SaveUnedited(bytes);
        EXPECT_EQ(WithPlainBreaks(outcome.saved) != WithPlainBreaks(bytes), outcome.losesBytes)
            << "kind " << kind << ", " << bytes.size() << " bytes, round " << round;
    }
}

} // namespace

TEST(UneditedFile, PlainTextOfEachStyleIsIdentical) {
    for (const char* text : {"", "one line", "a\nb\n", "a\r\nb\r\n", "\n", "\r\n", "\t\x01\x7F"}) ExpectIdentical(text);
}

TEST(UneditedFile, Utf16IsIdenticalInBothByteOrders) {
    const std::u16string text = u"a\u4E2D\r\n\U0001F600\xD83D x\u2028\uFEFF";
    ExpectIdentical("\xFF\xFE" + LittleEndian(text));
    ExpectIdentical("\xFE\xFF" + BigEndian(text));
    ExpectIdentical("\xFF\xFE");
}

TEST(UneditedFile, Utf8WithASignatureIsIdenticalInPlainLetters) { ExpectIdentical("\xEF\xBB\xBFplain\n"); }

TEST(UneditedFile, MixedBreaksAndLoneReturnsBecomeDosWithoutAQuestion) {
    for (const auto& [bytes, saved] : {std::pair<std::string, std::string>{"a\nb\r\n", "a\r\nb\r\n"},
                                       {"a\rb", "a\r\nb"},
                                       {"\xFF\xFE" + LittleEndian(u"a\rb"), "\xFF\xFE" + LittleEndian(u"a\r\nb")}}) {
        const Outcome outcome = SaveUnedited(bytes);
        EXPECT_EQ(outcome.saved, saved);
        EXPECT_FALSE(outcome.losesBytes);
    }
}

TEST(UneditedFile, NulsAreAskedAbout) {
    ExpectAsked(Bytes("a\0b"), "a b");
    ExpectAsked(Bytes("\xEF\xBB\xBF\0"), "\xEF\xBB\xBF ");
    ExpectAsked("\xFF\xFE" + LittleEndian(std::u16string(u"a\0b", 3)), "\xFF\xFE" + LittleEndian(u"a"));
    ExpectAsked("\xFE\xFF" + BigEndian(std::u16string(u"a\0", 2)), "\xFE\xFF" + BigEndian(u"a"));
}

TEST(UneditedFile, HalfAUnitIsAskedAbout) {
    ExpectAsked("\xFF\xFE" + LittleEndian(u"ab") + "c", "\xFF\xFE" + LittleEndian(u"ab"));
}

TEST(UneditedFile, EveryByteOfWindows1252IsIdentical) {
    if (!IsWindows1252()) GTEST_SKIP() << "the system's page is another one";
    std::string bytes;
    for (int c = 1; c < 256; ++c)
        if (c != '\r' && c != '\n') bytes.push_back(static_cast<char>(c));
    ExpectIdentical(bytes);
    // A file in UTF-8 without a signature is such bytes.
    ExpectIdentical("\xC3\xA4\xE6\xBC\xA2\n");
    // With one it is read like them, but written as UTF-8.
    ExpectAsked("\xEF\xBB\xBF\xC3\xA4", "\xEF\xBB\xBF\xC3\x83\xC2\xA4");
}

TEST(UneditedFile, WhereUtf8IsTheSystemsPageIllegalBytesAreAskedAbout) {
    const Utf8IsAnsi page;
    ExpectIdentical("\xC3\xA4\xE6\xBC\xA2\r\n");
    ExpectIdentical("\xEF\xBB\xBF\xC3\xA4");
    ExpectAsked("a\xFFz", "a\xEF\xBF\xBDz");
    ExpectAsked("\xC3", "\xEF\xBF\xBD");
    ExpectAskedOnlyWhereBytesChange(3);
}

// In Japanese, Chinese and Korean; ./test runs this in each.
TEST(UneditedFile, TextInAPageOfTwoBytesIsIdentical) {
    bool isSuchAPage = false;
    for (const auto& [bytes, text] :
         {std::pair<std::string, std::u16string>{"\x93\xFA\x96\x7B\x8C\xEA", u"\u65E5\u672C\u8A9E"},
          {"\xBA\xBA\xD7\xD6", u"\u6C49\u5B57"},
          {"\xC7\xD1\xB1\xDB", u"\uD55C\uAE00"}}) {
        if (LoadedDocument(bytes).Store() != text) continue;
        isSuchAPage = true;
        std::string all;
        for (int i = 0; i < 5000; ++i) all += bytes + (i % 7 ? "x" : "\r\n");
        ExpectIdentical(all);
    }
    if (!isSuchAPage) GTEST_SKIP() << "the system's page is another one";
}

// Under whatever page the system has: the tests are run in several.
TEST(UneditedFile, ItIsAskedExactlyWhereBytesWouldChange) { ExpectAskedOnlyWhereBytesChange(1); }

TEST(UneditedFile, Utf8IsIdenticalWhenThatIsSet) {
    const WithAdditional on;
    on->Utf8 = 1;
    ExpectIdentical("\xC3\xA4\xE6\xBC\xA2 \xF0\x9F\x98\x80\n");
    ExpectIdentical("\xEF\xBB\xBF\xC3\xA4\xE6\xBC\xA2 \xF0\x9F\x98\x80\n");
    ExpectIdentical("\xC3\xA4\xFF\n");
}

TEST(UneditedFile, WithUtf8SetItIsAskedExactlyThenAsWell) {
    const WithAdditional on;
    on->Utf8 = 1;
    ExpectAsked("\xEF\xBB\xBF\xC3\xA4\xFF", "\xEF\xBB\xBF\xC3\xA4\xEF\xBF\xBD");
    ExpectAskedOnlyWhereBytesChange(2);
}

TEST(UneditedFile, AReloadLooksAgain) {
    LoadedDocument document("plain");
    EXPECT_FALSE(document->LosesBytes());
    document.folder.Write("file.txt", Bytes("a\0b"));
    ASSERT_TRUE(document->Reload());
    EXPECT_TRUE(document->LosesBytes());
    document.folder.Write("file.txt", "plain");
    ASSERT_TRUE(document->Reload());
    EXPECT_FALSE(document->LosesBytes());
}

TEST(UneditedFile, AfterASaveTheFileHoldsTheText) {
    LoadedDocument document(Bytes("a\0b"));
    EXPECT_FALSE(document->Save(u"", Encoding::Keep, LineEnding::Keep));
    EXPECT_TRUE(document->LosesBytes());
    ASSERT_TRUE(document.Saved());
    EXPECT_FALSE(document->LosesBytes());
}

// As some pages of real systems do.
TEST(KeepsEveryByte, APageThatLosesSomeDoesNot) {
    EXPECT_TRUE(KeepsEveryByte(CodePage::Windows1252));
    const RefusingAnsiPage page;
    EXPECT_FALSE(KeepsEveryByte(CodePage::Windows1252));
}

TEST(KeepsEveryByte, EachByteIsAsked) {
    for (int byte = 1; byte < 256; ++byte) {
        if (byte == '?') continue; // which is what the others become
        const LosingAnsiPage page(static_cast<uint8_t>(byte));
        EXPECT_FALSE(KeepsEveryByte(CodePage::Windows1252)) << byte;
    }
    EXPECT_TRUE(KeepsEveryByte(CodePage::Windows1252));
}
