#pragma once

#include "base/Assert.h"
#include "base/Types.h"

// Growable, NUL-terminated UTF-16 string. All members zero is the empty string. Operations that may
// allocate return false on failure and leave the string unchanged. Not copied implicitly: copying
// can fail, so it is spelled Assign.
class WString {
public:
    // A longer string is refused like one without memory, so that every length is below UINT32_MAX.
    static constexpr uint32_t MaxCharacters = UINT32_MAX - 1;

    WString() = default;
    ~WString() { Release(); }
    WString(const WString&) = delete;
    WString& operator=(const WString&) = delete;
    WString(WString&& other) noexcept;
    WString& operator=(WString&& other) noexcept;

    // Never null: an empty string without a buffer reads as a lone NUL.
    const Char* Text() const { return buffer ? buffer : u""; }
    // The buffer itself, for writing in place; null when nothing was ever reserved.
    Char* Data() { return buffer; }
    uint32_t Length() const { return length; }
    uint32_t Capacity() const { return capacity; }
    bool IsEmpty() const { return length == 0; }
    // The terminator may be read as well.
    Char operator[](uint32_t index) const {
        ORVANE_ASSERT(index <= length);
        return Text()[index];
    }

    // Room for `characters` with their terminator. Growing takes the larger of twice the capacity
    // and the size needed.
    [[nodiscard]] bool Reserve(uint32_t characters);
    // Replaces the content by `count` characters of `text`; all up to the terminator when negative.
    // Here and in Append and Insert `text` may be inside this string, and null is empty text.
    [[nodiscard]] bool Assign(const Char* text, int64_t count = -1);
    [[nodiscard]] bool Assign(const WString& other) { return Assign(other.Text(), other.Length()); }
    [[nodiscard]] bool AppendChar(Char character);
    // A negative count means up to the terminator; a count of 0 succeeds and does nothing.
    [[nodiscard]] bool Append(const Char* text, int64_t count = -1);
    [[nodiscard]] bool Append(const WString& other) { return Append(other.Text(), other.Length()); }
    // Appends the decimal digits of `value`.
    [[nodiscard]] bool AppendNumber(uint32_t value);
    // Inserts before `position` (at most Length()).
    [[nodiscard]] bool Insert(uint32_t position, const Char* text, uint32_t count);
    // Removes `count` characters at `position`, clipped to the end. Never allocates.
    void Erase(uint32_t position, uint32_t count);
    void Set(uint32_t position, Char character) {
        ORVANE_ASSERT(position < length);
        buffer[position] = character;
    }
    // Cuts the string to `count` characters (no more than it has), keeping its buffer.
    void Truncate(uint32_t count);
    void ReplaceAll(Char from, Char to);
    // Drops one leading and one trailing double quote, each only if present.
    void StripQuotes();
    // Empties the string and keeps its buffer.
    void Clear() { Truncate(0); }
    // Frees the buffer; the string is then empty.
    void Release();

private:
    // Every change goes through here: replaces `removed` characters at `position` by `count` of `text`
    // in a buffer with room for `needed` (at least the new length) and the terminator.
    [[nodiscard]] bool Splice(uint32_t position, uint32_t removed, const Char* text, uint64_t count, uint64_t needed);

    Char* buffer = nullptr;
    uint32_t capacity = 0; // characters, terminator included
    uint32_t length = 0;   // terminator not counted
};
