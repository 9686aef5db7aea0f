#include "syntax/KeywordSet.h"

#include "base/Assert.h"

#include <algorithm>

namespace {

uint32_t CountWords(const Char* list) {
    uint32_t count = 0;
    for (bool inside = false; *list; ++list) {
        if (*list != u' ' && !inside) ++count;
        inside = *list != u' ';
    }
    return count;
}

bool SortsBefore(const KeywordSet::Entry& left, const KeywordSet::Entry& right) {
    const uint32_t leftBucket = KeywordSet::BucketOf(left.text[0]);
    const uint32_t rightBucket = KeywordSet::BucketOf(right.text[0]);
    if (leftBucket != rightBucket) return leftBucket < rightBucket;
    const int order = Text::Compare(left.text, right.text);
    // Equal words stay in the order of the list, which is the order of their addresses.
    return order != 0 ? order < 0 : left.text < right.text;
}

size_t LeadingWordLength(const Char* text) {
    size_t length = 0;
    while (Text::IsWordChar(text[length])) ++length;
    return length;
}

// The first of [low, high) whose character at `depth` is not below `c`; they agree up to `depth`.
const KeywordSet::Entry* FirstNotBelow(const KeywordSet::Entry* low, const KeywordSet::Entry* high, uint32_t depth,
                                       uint32_t c) {
    while (low < high) {
        const KeywordSet::Entry* middle = low + (high - low) / 2;
        if (middle->text[depth] < c)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

} // namespace

KeywordSet* KeywordSet::Make(const Char* list, bool caseSensitive) {
    const uint32_t wordCount = CountWords(list);
    if (wordCount == 0) return nullptr;
    auto* set = new KeywordSet(caseSensitive);
    if (!set) return nullptr;
    if (!set->TakeWords(list, wordCount)) {
        delete set;
        return nullptr;
    }
    set->SortIntoBuckets();
    return set;
}

KeywordSet::~KeywordSet() {
    Heap::Free(words);
    Heap::Free(entries);
}

bool KeywordSet::TakeWords(const Char* list, uint32_t wordCount) {
    const uint32_t length = Text::Length(list);
    words = Heap::AllocateArray<Char>(size_t{length} + 1);
    entries = Heap::AllocateArray<Entry>(wordCount);
    if (!words || !entries) return false;
    for (uint32_t i = 0; i < length; ++i) words[i] = list[i] == u' ' ? u'\0' : Fold(list[i]);
    for (uint32_t i = 0; i < length; ++i) {
        const uint32_t wordLength = Text::Length(words + i);
        if (wordLength != 0 && words[i] >= FirstPrintable) {
            entries[entryCount++] = {words + i, wordLength, KeyOf(words + i, LeadingWordLength(words + i))};
        }
        i += wordLength;
    }
    ORVANE_ASSERT(entryCount <= wordCount);
    return true;
}

void KeywordSet::SortIntoBuckets() {
    // Sorted once at the end rather than word by word: a list of a megabyte stays quick.
    std::sort(entries, entries + entryCount, SortsBefore);
    for (uint32_t i = 0; i < entryCount; ++i) {
        const Entry& entry = entries[i];
        const uint32_t index = BucketOf(entry.text[0]);
        ++buckets[index + 1].first;
        buckets[index].seconds |= uint64_t{1} << (entry.key & 63);
        buckets[index].wordLengths |= uint64_t{1} << LengthBit(entry.key >> 32);
        beginsBeyondAscii = beginsBeyondAscii || entry.text[0] > 127;
        for (uint32_t k = 1; k < entry.length; ++k) {
            const uint32_t inner = InnerIndex(entry.text[k]);
            held[inner / 64] |= uint64_t{1} << (inner % 64);
        }
    }
    for (uint32_t bucket = 0; bucket < BucketCount; ++bucket) buckets[bucket + 1].first += buckets[bucket].first;
    ORVANE_ASSERT(buckets[BucketCount].first == entryCount);
}

bool KeywordSet::CanBegin(Char c) const {
    const Char first = Fold(c);
    if (first < FirstPrintable) return false;
    auto [low, high] = InBucket(BucketOf(first));
    low = FirstNotBelow(low, high, 0, first);
    return low < high && low->text[0] == first;
}

// Length, last and second character of a word, in one number that one comparison settles.
uint64_t KeywordSet::KeyOf(const Char* at, size_t wordLength) const {
    const Char second = wordLength > 1 ? Fold(at[1]) : u'\0';
    const Char last = wordLength > 1 ? Fold(at[wordLength - 1]) : u'\0';
    return uint64_t{wordLength} << 32 | uint64_t{last} << 16 | second;
}

bool KeywordSet::MatchesAt(const Entry& entry, const Char* at, size_t available) const {
    const uint32_t length = entry.length;
    if (length > available || (length < available && Text::IsWordChar(at[length]))) return false;
    return caseSensitive ? Text::EqualCount(at, entry.text, length) : Text::EqualCountNoCase(at, entry.text, length);
}

uint32_t KeywordSet::Find(const Char* at, const Char* end, size_t wordLength) const {
    // Below, comparing one key each costs less than halving the range once more.
    constexpr ptrdiff_t Few = 16;
    const Char first = Fold(*at);
    if (first < FirstPrintable || !MayMatchAt(at, wordLength)) return 0;
    auto [low, high] = InBucket(BucketOf(first));
    const auto available = static_cast<size_t>(end - at);
    // Many words are narrowed down to those that agree with the text so far.
    for (uint32_t depth = 0; high - low > Few; ++depth) {
        // Words are sorted, so a word that ends here is the first of those that agree so far.
        if (depth != 0 && low->length == depth && MatchesAt(*low, at, available)) return depth;
        if (depth == available) return 0;
        const Char c = Fold(at[depth]);
        low = FirstNotBelow(low, high, depth, c);
        high = FirstNotBelow(low, high, depth, c + 1u);
    }
    // A word that differs in its length, its second or its last character is passed over without touching
    // its text; hardly any other is left.
    const uint64_t key = KeyOf(at, wordLength);
    while (low < high && (low->key != key || !MatchesAt(*low, at, available))) ++low;
    return low < high ? low->length : 0;
}
