#pragma once

#include "base/Text.h"
#include "base/Types.h"

// What a character can begin in the text of one engine, as bits.
namespace CharFlag {
constexpr uint8_t Word = 1;
constexpr uint8_t Blank = 2;
constexpr uint8_t Digit = 4;
constexpr uint8_t Quote = 8;
constexpr uint8_t Marker = 16;  // a comment start or the end marker may begin with it
constexpr uint8_t Keyword = 32; // a keyword may begin with it
// Flags other than those of keywords, and all that make a character worth a look.
constexpr uint8_t NotKeyword = Digit | Quote | Marker;
constexpr uint8_t Special = NotKeyword | Keyword;
} // namespace CharFlag

// The flags of every character. Beyond ASCII all characters share one set of flags, which may claim
// too much but never too little.
class CharacterTable {
public:
    static constexpr Char AsciiCount = 128;

    CharacterTable() {
        for (Char c = 0; c < AsciiCount; ++c) ascii[c] = Plain(c);
    }

    uint8_t Flags(Char c) const { return c < AsciiCount ? ascii[c] : beyond; }

    void Add(Char c, uint8_t flag, bool bothCases = false) {
        uint8_t& flags = c < AsciiCount ? ascii[c] : beyond;
        flags = static_cast<uint8_t>(flags | flag);
        if (bothCases && Text::IsAsciiLetter(c)) Add(static_cast<Char>(c ^ 0x20), flag);
    }

private:
    static uint8_t Plain(Char c) {
        return static_cast<uint8_t>(
            (Text::IsWordChar(c) ? CharFlag::Word : 0) | (Text::IsBlank(c) ? CharFlag::Blank : 0) |
            (Text::IsDigit(c) ? CharFlag::Digit : 0) | (c == u'"' || c == u'\'' ? CharFlag::Quote : 0));
    }

    uint8_t ascii[AsciiCount];
    uint8_t beyond = 0;
};
