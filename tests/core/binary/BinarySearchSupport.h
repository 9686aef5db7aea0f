#pragma once

#include "BinarySupport.h"

#include <algorithm>
#include <optional>

// What a search is asked for beside its pattern.
struct Search {
    uint64_t from = 0;
    uint64_t end = UINT64_MAX;
    bool matchCase = true;
    bool backward = false;
    bool hexPattern = false;
};

struct Match {
    uint64_t offset;
    uint32_t length;
    bool wrapped;

    bool operator==(const Match&) const = default;
};

inline void PrintTo(const Match& match, std::ostream* stream) {
    *stream << match.offset << " length " << match.length << (match.wrapped ? " wrapped" : "");
}

inline std::optional<Match> Find(BinaryDocument& document, const std::u16string& pattern, const Search& search) {
    WString text;
    EXPECT_TRUE(text.Assign(pattern.data(), static_cast<int64_t>(pattern.size())));
    ByteHit hit;
    const ByteQuery query = {search.from, search.end, search.matchCase, search.backward, search.hexPattern};
    if (!document.FindBytes(text, query, hit)) return std::nullopt;
    return Match{hit.offset, hit.length, hit.wrapped};
}

inline bool Same(char left, char right, bool matchCase) {
    const auto fold = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return left == right || (!matchCase && fold(left) == fold(right));
}

inline bool OccursAt(const std::string& content, uint64_t offset, const std::string& pattern, bool matchCase) {
    if (offset + pattern.size() > content.size()) return false;
    for (size_t i = 0; i < pattern.size(); ++i)
        if (!Same(content[offset + i], pattern[i], matchCase)) return false;
    return true;
}

// Position by position, twice around.
inline std::optional<Match> NaiveFind(const std::string& content, const std::string& pattern, const Search& search) {
    const auto length = static_cast<uint32_t>(pattern.size());
    const uint64_t end = std::min<uint64_t>(search.end, content.size());
    const uint64_t from = std::min<uint64_t>(search.from, content.size());
    if (pattern.empty()) return std::nullopt;
    for (const bool wrapped : {false, true}) {
        if (search.backward) {
            for (uint64_t at = wrapped ? content.size() : from; at-- > 0;)
                if (OccursAt(content, at, pattern, search.matchCase)) return Match{at, length, wrapped};
        } else {
            for (uint64_t at = wrapped ? 0 : from; at < end; ++at)
                if (OccursAt(content, at, pattern, search.matchCase)) return Match{at, length, wrapped};
        }
    }
    return std::nullopt;
}

inline std::u16string Wide(const std::string& text) { return {text.begin(), text.end()}; }

inline std::u16string HexOf(const std::string& bytes) {
    std::u16string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += u"0123456789ABCDEF"[byte >> 4];
        text += u"0123456789abcdef"[byte & 15];
    }
    return text;
}
