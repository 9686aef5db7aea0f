#include "base/WString.h"

#include "base/Heap.h"
#include "base/Text.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

// Copying nothing from a null pointer is undefined for the library's own function.
void Copy(Char* to, const Char* from, size_t count) {
    if (count) std::memmove(to, from, count * sizeof(Char));
}

uint64_t CountOf(const Char* text, int64_t count) {
    if (count >= 0) return static_cast<uint64_t>(count);
    return text ? Text::Length(text) : 0;
}

} // namespace

WString::WString(WString&& other) noexcept
    : buffer(std::exchange(other.buffer, nullptr)), capacity(std::exchange(other.capacity, 0)),
      length(std::exchange(other.length, 0)) {}

WString& WString::operator=(WString&& other) noexcept {
    if (this == &other) return *this;
    Release();
    std::swap(buffer, other.buffer);
    std::swap(capacity, other.capacity);
    std::swap(length, other.length);
    return *this;
}

bool WString::Reserve(uint32_t characters) { return Splice(length, 0, nullptr, 0, characters); }

bool WString::Assign(const Char* text, int64_t count) {
    const uint64_t taken = CountOf(text, count);
    return Splice(0, length, text, taken, taken);
}

bool WString::AppendChar(Char character) {
    if (length + 1 >= capacity) return Append(&character, 1);
    buffer[length] = character;
    buffer[++length] = 0;
    return true;
}

bool WString::Append(const Char* text, int64_t count) {
    const uint64_t added = CountOf(text, count);
    return added == 0 || Splice(length, 0, text, added, length + added);
}

bool WString::AppendNumber(uint32_t value) {
    Char digits[10];
    uint32_t first = 10;
    do {
        digits[--first] = static_cast<Char>(u'0' + value % 10);
        value /= 10;
    } while (value);
    return Append(digits + first, 10 - first);
}

bool WString::Insert(uint32_t position, const Char* text, uint32_t count) {
    return count == 0 || Splice(position, 0, text, count, uint64_t{length} + count);
}

bool WString::Splice(uint32_t position, uint32_t removed, const Char* text, uint64_t count, uint64_t needed) {
    ORVANE_ASSERT(position <= length && removed <= length - position);
    const uint64_t newLength = uint64_t{length} - removed + count;
    if (needed > MaxCharacters || newLength > MaxCharacters) return false;
    if (needed == 0 && !buffer) return true;

    const bool grows = !buffer || needed + 1 > capacity;
    const bool isOwnText = text >= buffer && text < buffer + capacity;
    // Text of our own that would move under our hands is read from the old block instead. With `removed` above 0 it
    // only comes from Assign, which leaves no tail: nothing moves before it is copied.
    const bool needsBlock = grows || (isOwnText && position < length && removed == 0);
    const uint32_t tail = length - position - removed;
    uint32_t newCapacity = capacity;
    Char* target = buffer;
    if (needsBlock) {
        if (grows)
            newCapacity = static_cast<uint32_t>(
                std::min<uint64_t>(std::max(uint64_t{capacity} * 2, needed + 1), uint64_t{MaxCharacters} + 1));
        target = Heap::AllocateArray<Char>(newCapacity);
        if (!target) return false;
        Copy(target, buffer, position);
    }
    Copy(target + position + count, buffer + position + removed, tail);
    Copy(target + position, text, count);
    target[newLength] = 0;
    if (needsBlock) Heap::Free(buffer);
    buffer = target;
    capacity = newCapacity;
    length = static_cast<uint32_t>(newLength);
    return true;
}

void WString::Erase(uint32_t position, uint32_t count) {
    if (position >= length) return;
    count = std::min(count, length - position);
    Copy(buffer + position, buffer + position + count, length - position - count);
    Truncate(length - count);
}

void WString::Truncate(uint32_t count) {
    if (count >= length) return;
    length = count;
    buffer[count] = 0;
}

void WString::ReplaceAll(Char from, Char to) { std::replace(buffer, buffer + length, from, to); }

void WString::StripQuotes() {
    if (length && buffer[length - 1] == u'"') Truncate(length - 1);
    if (length && buffer[0] == u'"') Erase(0, 1);
}

void WString::Release() {
    Heap::Free(buffer);
    buffer = nullptr;
    capacity = length = 0;
}
