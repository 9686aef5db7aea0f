#pragma once

#include "document/Encoding.h"

#include <cstdint>
#include <string>

// Encodings by their plain rules, apart from the program's conversions.
namespace PlainEncoding {

inline std::string ToUtf8(const std::u16string& text) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        uint32_t point = text[i];
        if (point >= 0xD800 && point < 0xDC00 && i + 1 < text.size())
            point = 0x10000 + ((point - 0xD800) << 10) + (text[++i] - 0xDC00u);
        const auto put = [&](uint32_t byte) { bytes.push_back(static_cast<char>(byte)); };
        if (point < 0x80) {
            put(point);
        } else if (point < 0x800) {
            put(0xC0 | point >> 6);
            put(0x80 | (point & 0x3F));
        } else if (point < 0x10000) {
            put(0xE0 | point >> 12);
            put(0x80 | (point >> 6 & 0x3F));
            put(0x80 | (point & 0x3F));
        } else {
            put(0xF0 | point >> 18);
            put(0x80 | (point >> 12 & 0x3F));
            put(0x80 | (point >> 6 & 0x3F));
            put(0x80 | (point & 0x3F));
        }
    }
    return bytes;
}

// Of bytes that are valid.
inline std::u16string FromUtf8(const std::string& bytes) {
    std::u16string text;
    for (size_t i = 0; i < bytes.size();) {
        const auto lead = static_cast<uint8_t>(bytes[i++]);
        uint32_t point = lead < 0x80 ? lead : lead < 0xE0 ? lead & 0x1Fu : lead < 0xF0 ? lead & 0x0Fu : lead & 0x07u;
        for (; i < bytes.size() && (bytes[i] & 0xC0) == 0x80; ++i)
            point = point << 6 | (static_cast<uint8_t>(bytes[i]) & 0x3Fu);
        if (point > 0xFFFF) text.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
        text.push_back(static_cast<char16_t>(point > 0xFFFF ? 0xDC00 + (point & 0x3FF) : point));
    }
    return text;
}

// Two bytes a unit.
inline std::string LittleEndian(const std::u16string& text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}
inline std::string BigEndian(const std::u16string& text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit >> 8));
        bytes.push_back(static_cast<char>(unit & 0xFF));
    }
    return bytes;
}

// What a file with these characters holds; of Windows-1252 only those of Latin-1 and the euro.
inline std::string FileOf(const std::u16string& text, Encoding encoding) {
    switch (encoding) {
    case Encoding::Unicode:
        return "\xFF\xFE" + LittleEndian(text);
    case Encoding::UnicodeBigEndian:
        return "\xFE\xFF" + BigEndian(text);
    case Encoding::Utf8:
        return "\xEF\xBB\xBF" + ToUtf8(text);
    case Encoding::PlainUtf8:
        return ToUtf8(text);
    default:
        break;
    }
    std::string bytes;
    for (const char16_t c : text) bytes.push_back(static_cast<char>(c == u'\u20AC' ? 0x80 : c));
    return bytes;
}

} // namespace PlainEncoding
