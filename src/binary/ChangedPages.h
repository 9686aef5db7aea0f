#pragma once

#include "base/Heap.h"
#include "base/List.h"
#include "base/Types.h"
#include "binary/FileWindow.h"

// The current content of one page of a file, different from the file's or once so.
struct ChangedPage : HeapObject {
    uint64_t index = 0;
    ChangedPage* next = nullptr;
    ChangedPage* previous = nullptr;
    ChangedPage* nextInBucket = nullptr;
    bool isInJournal = false; // as it is now
    uint8_t data[PageSize] = {};
};

// The changed pages of a document in the order they were first changed, with a hash table beside the list,
// so that finding a page takes the same time however many there are.
class ChangedPages {
public:
    ChangedPages() = default;
    ~ChangedPages() { Clear(); }
    ChangedPages(const ChangedPages&) = delete;
    ChangedPages& operator=(const ChangedPages&) = delete;

    ChangedPage* Head() const { return pages.head; }
    ChangedPage* Tail() const { return pages.tail; }
    ChangedPage* Find(uint64_t index) const;
    // Takes the page over and puts it at the end; there is none of its index yet.
    void Append(ChangedPage* page);
    // Frees the pages after `last` (all when it is null).
    void RemoveAfter(const ChangedPage* last);
    void Clear();
    size_t Count() const { return count; }

private:
    static constexpr uint32_t FirstBits = 6;
    struct Bucket {
        ChangedPage* first = nullptr; // further ones follow by nextInBucket
        uint64_t index = 0;           // of the first: mostly a page need not be touched to be found
    };

    size_t BucketCount() const { return size_t{1} << bucketBits; }
    // The multiplication spreads pages that lie a power of two apart.
    Bucket& BucketOf(uint64_t index) const { return buckets[index * 0x9E3779B97F4A7C15u >> (64 - bucketBits)]; }
    static void SetFirst(Bucket& bucket, ChangedPage* page);
    void PutIntoBucket(ChangedPage* page);
    void Grow();

    List<ChangedPage> pages;
    size_t count = 0;
    // Without memory for a larger table the smaller one stays in use.
    Bucket firstTable[size_t{1} << FirstBits];
    Bucket* buckets = firstTable;
    uint32_t bucketBits = FirstBits;
};
