#pragma once

#include "base/CodePage.h"
#include "document/TextBuffer.h"
#include "support/NoRecoveryFolder.h"
#include "support/PlainEncoding.h"
#include "support/ScratchFolder.h"
#include "support/TextDocument.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

// A file's bytes from literals with NULs in them.
template <size_t n> std::string Bytes(const char (&literal)[n]) { return std::string(literal, n - 1); }

// Names for assertions.
inline Encoding EncodingOf(const TextBuffer& document) {
    auto current = Encoding::Keep;
    const Char* const* names = nullptr;
    EXPECT_TRUE(document.GetEncoding(current, names));
    return current;
}

using PlainEncoding::BigEndian;
using PlainEncoding::LittleEndian;

// What the page makes of the bytes, converted at once.
inline std::u16string Decoded(CodePage page, const std::string& bytes) {
    std::u16string text(bytes.size(), u'\0');
    const auto* data = reinterpret_cast<const uint8_t*>(bytes.data());
    text.resize(ToUtf16(page, data, bytes.size(), text.data(), text.size()));
    return text;
}
inline std::string Encoded(CodePage page, const std::u16string& text) {
    std::string bytes(MaxBytes(page, text.size()), '\0');
    auto* data = reinterpret_cast<uint8_t*>(bytes.data());
    bytes.resize(FromUtf16(page, text.data(), text.size(), data, bytes.size()));
    return bytes;
}

// Line breaks by the plain rule: CR LF and CR become LF.
inline std::u16string WithLineFeeds(const std::u16string& text) {
    std::u16string out;
    for (size_t i = 0; i < text.size(); ++i) {
        out.push_back(text[i] == u'\r' ? u'\n' : text[i]);
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    }
    return out;
}
inline std::u16string WithReturns(const std::u16string& text) {
    std::u16string out;
    for (const char16_t c : text) {
        if (c == u'\n') out.push_back(u'\r');
        out.push_back(c);
    }
    return out;
}

inline uint32_t LinesOf(const std::u16string& text) {
    uint32_t lines = 1;
    for (const char16_t c : text) lines += c == u'\n';
    return lines;
}

// The style by the plain rule, over a text with its breaks as they are in the file.
inline LineEnding StyleOf(const std::u16string& text) {
    bool feeds = false;
    bool returns = false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\n') feeds = true;
        if (text[i] != u'\r') continue;
        returns = true;
        if (i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    }
    if (feeds) return returns ? LineEnding::Mixed : LineEnding::Unix;
    return LineEnding::Dos;
}

// A document with the content of a file of these bytes.
class LoadedDocument : public TextDocument {
public:
    explicit LoadedDocument(const std::string& bytes) {
        EXPECT_TRUE((*this)->Load(folder.Write("file.txt", bytes).c_str(), false));
    }
    // What saving it somewhere else writes; nothing when that fails. Without a copy, which takes time.
    std::optional<std::string> Saved(Encoding encoding = Encoding::Keep, LineEnding style = LineEnding::Keep) {
        const NoRecoveryFolder withoutCopy;
        if (!(*this)->Save(folder.Path("saved.txt").c_str(), encoding, style)) return std::nullopt;
        return folder.Read("saved.txt");
    }

    ScratchFolder folder;
};

inline void ExpectNoStore(const TextBuffer& document) {
    EXPECT_EQ(document.Content(), nullptr);
    EXPECT_EQ(document.Length(), 0u);
    EXPECT_EQ(document.GetLineCount(), 1u);
    EXPECT_EQ(EncodingOf(document), Encoding::Ansi);
}
