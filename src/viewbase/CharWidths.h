#pragma once

#include "base/Surrogates.h"

// The widths of single characters in one font, as they are shown (see TextDirection). They are fetched 256 at a time
// when first asked for; after that a lookup is two loads. Pages are freed with the cache or when the source changes.
class CharWidths {
public:
    static constexpr uint32_t PageSize = 256;
    // Puts the pixel widths of the 256 characters from the code point `first` on into `widths`; each half of
    // a surrogate pair by itself. False when the font cannot say; the characters are then 0 wide until asked again.
    using Fetch = bool (*)(void* context, uint32_t first, int32_t* widths);

    CharWidths() = default;
    ~CharWidths() { Clear(); }
    CharWidths(const CharWidths&) = delete;
    CharWidths& operator=(const CharWidths&) = delete;

    // Forgets every width: the font has changed.
    void SetSource(Fetch newFetch, void* newContext);
    void Clear();

    int32_t Of(Char character) { return OfCodePoint(character); }
    // The two halves together, as they are drawn.
    int32_t OfPair(Char first, Char second) { return OfCodePoint(Surrogates::CodePoint(first, second)); }
    // What the first half counts of that, the second having the rest.
    static constexpr int32_t FirstShare(int32_t both) { return both - both / 2; }

    // The width of the printable ASCII characters, U+0020 to U+007E, in a font that makes them all alike;
    // else 0.
    int32_t PrintableWidth();
    // How many characters at the head of text[0, count) are printable ASCII and end no further than `room`
    // pixels from where the first one starts; always 0 in a font that makes them differ.
    uint32_t PrintableWithin(const Char* text, uint32_t count, int64_t room);

private:
    static constexpr uint32_t PageCount = 0x110000 / PageSize;

    int32_t OfCodePoint(uint32_t character) {
        const uint16_t* page = pages[character / PageSize];
        return page ? page[character % PageSize] : Load(character);
    }
    // Without memory for a page the width is fetched every time: slow, but the same picture.
    int32_t Load(uint32_t character);

    Fetch fetch = nullptr;
    void* context = nullptr;
    // All zeros at first: a global one would otherwise take up 34 KB of the program's file.
    uint16_t* pages[PageCount] = {};
    bool printableKnown = false;
    int32_t printable = 0;
};
