#pragma once

#include "base/Heap.h"
#include "base/Text.h"
#include "base/Types.h"

// The keywords of one engine, hashed by their first character. It owns its words.
class KeywordSet : public HeapObject {
public:
    static constexpr uint32_t BucketCount = 91;
    static constexpr Char FirstPrintable = 33; // the least character that a word can begin with

    struct Entry {
        const Char* text; // terminated; in lower case unless the set is case-sensitive
        uint32_t length;
        // Of the word characters that the keyword begins with: how many there are, the second one and the last one. A
        // text whose key differs cannot match.
        uint64_t key;
    };

    // Takes the words of a list separated by spaces. A word that begins with a blank or a control
    // character is left out. Returns null when the list has no words or memory runs out.
    static KeywordSet* Make(const Char* list, bool caseSensitive);
    ~KeywordSet();
    KeywordSet(const KeywordSet&) = delete;
    KeywordSet& operator=(const KeywordSet&) = delete;

    // The length of the keyword at `at` (which is below `end`) and is not followed by a
    // word character; of several the shortest. 0 when there is none. `wordLength` is the number of word
    // characters in a row from `at` on.
    uint32_t Find(const Char* at, const Char* end, size_t wordLength) const;
    // The quick answer that most words get; when it is false, Find returns 0.
    bool MayMatchAt(const Char* at, size_t wordLength) const {
        const Bucket& bucket = buckets[BucketOf(Fold(*at))];
        const Char second = wordLength > 1 ? Fold(at[1]) : u'\0';
        return bucket.seconds >> (second & 63) & bucket.wordLengths >> LengthBit(wordLength) & 1;
    }
    // Whether some keyword begins with `c`.
    bool CanBegin(Char c) const;
    // Whether some keyword begins with a character that is not ASCII.
    bool CanBeginBeyondAscii() const { return beginsBeyondAscii; }
    // Whether some keyword holds `c` after its first character, letter case ignored. All characters
    // beyond ASCII are one.
    bool HoldsAfterFirst(Char c) const { return held[InnerIndex(c) / 64] >> (InnerIndex(c) % 64) & 1; }

    // The entries [low, high) of one bucket, in ascending order.
    struct Range {
        const Entry* low;
        const Entry* high;
    };
    Range InBucket(uint32_t bucket) const {
        return {entries + buckets[bucket].first, entries + buckets[bucket + 1].first};
    }
    // The bucket of a word by its first character (33 or more), already folded when the set folds.
    static uint32_t BucketOf(Char first) { return (first - 32u) % BucketCount; }

private:
    struct Bucket {
        uint32_t first = 0; // index of its first entry; it ends where the next bucket begins
        // For every word in it, the bits of the beginning's second character and of its length.
        uint64_t seconds = 0;
        uint64_t wordLengths = 0;
    };

    explicit KeywordSet(bool isCaseSensitive) : caseSensitive(isCaseSensitive) {}
    static uint32_t InnerIndex(Char c) { return c < 128 ? Text::FoldCase(c) : 128; }
    bool TakeWords(const Char* list, uint32_t wordCount);
    void SortIntoBuckets();
    Char Fold(Char c) const { return caseSensitive ? c : Text::FoldCase(c); }
    static uint32_t LengthBit(size_t wordLength) { return wordLength < 63 ? static_cast<uint32_t>(wordLength) : 63; }
    uint64_t KeyOf(const Char* at, size_t wordLength) const;
    bool MatchesAt(const Entry& entry, const Char* at, size_t available) const;

    bool caseSensitive;
    bool beginsBeyondAscii = false;
    uint64_t held[3] = {}; // a bit for every InnerIndex
    Char* words = nullptr; // one block, every word terminated
    Entry* entries = nullptr;
    uint32_t entryCount = 0;
    Bucket buckets[BucketCount + 1];
};
