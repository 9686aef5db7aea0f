#pragma once

#include "document/LineCache.h"
#include "document/TextPosition.h"

// The text of a document: one flat array of UTF-16 in which line feed is the only line break, followed by a
// NUL that is not counted. It may be absent, as before a load or after a failed one; it then has one line and
// no characters.
class TextStore {
public:
    // A text is shorter than this many characters, so that every offset and the length fit 32 bits.
    static constexpr uint32_t LengthLimit = UINT32_MAX;

    TextStore() = default;
    ~TextStore() { Release(); }
    TextStore(const TextStore&) = delete;
    TextStore& operator=(const TextStore&) = delete;

    const Char* Text() const { return text; } // null while absent
    uint32_t Length() const { return length; }
    uint32_t LineCount() const { return lineCount; }
    // Characters that the array has room for, its terminator included. Exactly what was needed last.
    uint32_t Capacity() const { return capacity; }
    const LineCache& Cache() const { return lineCache; }

    // Makes the text absent.
    void Release();
    // Makes the text empty in place, giving its room back; an absent one stays absent.
    void Empty();
    // Takes over an array from the heap with room for `newCapacity` characters, which ends with a NUL after those that
    // `whole` counts.
    void Take(Char* newText, uint32_t newCapacity, TextExtent whole);
    // Room for `characters` and their terminator. False without memory; nothing has changed then.
    [[nodiscard]] bool EnsureCapacity(uint64_t characters);

    // Changes in one place. The caller has counted the line feeds. Only what makes the text longer can fail, without
    // memory; nothing has changed then.
    [[nodiscard]] bool Insert(uint32_t offset, const Char* inserted, TextExtent extent);
    void Delete(uint32_t offset, TextExtent extent);
    // Another text for these characters, which are the rest of a line and may reach to just after the terminator.
    // The number of lines stays.
    [[nodiscard]] bool ReplaceLine(TextRange old, const Char* newText, uint32_t newCount);
    // Neither the old nor the new character is a line feed.
    void SetCharacter(uint32_t offset, Char character) { text[offset] = character; }

    // Changes by writing into Data(), in room that EnsureCapacity has made before, after which the store is told what
    // there is now: a text rewritten in many places, or characters after the end of the old one.
    Char* Data() { return text; }
    void Rewritten(TextExtent whole);
    void Appended(TextExtent added);

    // Lines; looking them up fills the cache. A line past the end yields the start of the last one, an offset past the
    // end counts as the end.
    uint32_t LineToOffset(uint32_t line);
    uint32_t OffsetToLine(uint32_t offset, uint32_t& lineStart);
    // Characters from `start` up to the line feed or the terminator; `isLast` when it was the latter.
    uint32_t LineLength(uint32_t start, bool& isLast) const;
    // Remembered until the text changes otherwise than by appending.
    uint32_t LastLineStart();
    // Where the text ends.
    TextPosition End() { return {lineCount - 1, length - LastLineStart()}; }

private:
    Char* text = nullptr;
    uint32_t capacity = 0;
    uint32_t length = 0;
    uint32_t lineCount = 1;
    // Known while the text is only appended to, so that its end need not be looked for.
    uint32_t lastLineStart = NoOffset;
    LineCache lineCache;
};
