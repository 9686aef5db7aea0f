#include "LoadSaveSupport.h"

#include <random>

namespace {

constexpr Encoding Encodings[] = {Encoding::Ansi, Encoding::Unicode, Encoding::UnicodeBigEndian, Encoding::Utf8};
constexpr LineEnding Styles[] = {LineEnding::Unix, LineEnding::Dos};

// What a text becomes by being saved and loaded again.
struct Reloaded {
    std::u16string text;
    Encoding encoding;
    LineEnding style;
};

Reloaded SaveAndLoad(const std::u16string& text, Encoding encoding, LineEnding style) {
    ScratchFolder folder;
    const std::u16string path = folder.Path("file.txt");
    TextDocument saved(text);
    EXPECT_TRUE(saved->Save(path.c_str(), encoding, style));
    TextDocument loaded;
    EXPECT_TRUE(loaded->Load(path.c_str(), false));
    return {loaded.Store(), EncodingOf(*loaded), loaded->GetLineEnding()};
}

} // namespace

TEST(EncodingNames, AreOfferedInOrder) {
    TextDocument document;
    auto current = Encoding::Keep;
    const Char* const* names = nullptr;
    ASSERT_TRUE(document->GetEncoding(current, names));
    EXPECT_EQ(current, Encoding::Ansi);
    const std::u16string expected[] = {u"ANSI", u"Unicode", u"Unicode Big Endian", u"UTF8", u"UTF8 without signature"};
    for (uint32_t i = 0; i < EncodingCount; ++i) EXPECT_EQ(names[i], expected[i]);
}

TEST(RoundTrip, AsciiSurvivesEveryEncodingAndStyle) {
    const std::u16string text = u"first\n\n  second\tline\nlast without a break";
    for (const Encoding encoding : Encodings) {
        for (const LineEnding style : Styles) {
            const Reloaded reloaded = SaveAndLoad(text, encoding, style);
            EXPECT_EQ(reloaded.text, text);
            EXPECT_EQ(reloaded.encoding, encoding);
            EXPECT_EQ(reloaded.style, style);
        }
    }
}

TEST(RoundTrip, ATextWithoutABreakLoadsAsDos) {
    for (const Encoding encoding : Encodings)
        EXPECT_EQ(SaveAndLoad(u"line", encoding, LineEnding::Unix).style, LineEnding::Dos);
}

TEST(RoundTrip, EveryByteSurvivesInAnsi) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\r') bytes.push_back(static_cast<char>(byte));
    LoadedDocument document(bytes);
    EXPECT_EQ(document->Length(), bytes.size());
    EXPECT_EQ(document.Saved(), bytes);
    // The same before, between and after others.
    for (int byte = 1; byte < 256; ++byte) {
        if (byte == '\r' || byte == '\n') continue;
        const std::string around = "x" + std::string(1, static_cast<char>(byte)) + "\r\n";
        EXPECT_EQ(LoadedDocument(around).Saved(), around) << byte;
    }
}

TEST(RoundTrip, EveryUnitSurvivesInUtf16) {
    std::u16string text;
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit)
        if (unit != u'\r') text.push_back(static_cast<char16_t>(unit));
    for (const Encoding encoding : {Encoding::Unicode, Encoding::UnicodeBigEndian})
        for (const LineEnding style : Styles) EXPECT_EQ(SaveAndLoad(text, encoding, style).text, text);
}

TEST(RoundTrip, ASignatureThatIsTextSurvivesInUtf16) {
    for (const Encoding encoding : {Encoding::Unicode, Encoding::UnicodeBigEndian}) {
        TextDocument document(u"\uFEFFab");
        ScratchFolder folder;
        ASSERT_TRUE(document->Save(folder.Path("file.txt").c_str(), encoding, LineEnding::Unix));
        ASSERT_TRUE(document->Load(folder.Path("file.txt").c_str(), false));
        EXPECT_EQ(document.Text(), u"\uFEFFab");
    }
}

TEST(RoundTrip, Utf8ComesBackThroughTheAnsiPage) {
    const std::u16string text = u"na\u00EFve \u20AC\n";
    const Reloaded reloaded = SaveAndLoad(text, Encoding::Utf8, LineEnding::Unix);
    EXPECT_EQ(reloaded.encoding, Encoding::Utf8);
    EXPECT_EQ(reloaded.text, Decoded(CodePage::Ansi, Encoded(CodePage::Utf8, text)));
}

TEST(RoundTrip, RandomTextsOfEveryLengthAroundTheChunkBorders) {
    std::mt19937 random(5);
    for (int round = 0; round < 60; ++round) {
        const size_t length = 32768 * (1 + random() % 3) - 5 + random() % 10;
        const auto breaks = static_cast<unsigned>(1 + random() % 80);
        std::u16string text;
        while (text.size() < length)
            text.push_back(random() % breaks == 0 ? u'\n' : static_cast<char16_t>(0x20 + random() % 0x5F));
        const Encoding encoding = Encodings[random() % 4];
        const LineEnding style = Styles[random() % 2];
        const Reloaded reloaded = SaveAndLoad(text, encoding, style);
        ASSERT_EQ(reloaded.text, text) << round;
        ASSERT_EQ(reloaded.style, style) << round;
        ASSERT_EQ(reloaded.encoding, encoding) << round;
    }
}
