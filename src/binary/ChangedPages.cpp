#include "binary/ChangedPages.h"

ChangedPage* ChangedPages::Find(uint64_t index) const {
    ChangedPage* page = Bucket(index);
    while (page && page->index != index) page = page->nextInBucket;
    return page;
}

void ChangedPages::Append(ChangedPage* page) {
    if (count >= BucketCount()) Grow();
    pages.Append(page);
    PutIntoBucket(page);
    ++count;
}

void ChangedPages::PutIntoBucket(ChangedPage* page) {
    ChangedPage*& bucket = Bucket(page->index);
    page->nextInBucket = bucket;
    bucket = page;
}

void ChangedPages::Grow() {
    auto** table = Heap::AllocateArray<ChangedPage*>(BucketCount() * 2);
    if (!table) return;
    if (buckets != firstTable) Heap::Free(buckets);
    buckets = table;
    ++bucketBits;
    for (ChangedPage* page = pages.head; page; page = page->next) PutIntoBucket(page);
}

void ChangedPages::RemoveBehind(const ChangedPage* last) {
    while (pages.tail != last) {
        ChangedPage* page = pages.tail;
        ChangedPage** link = &Bucket(page->index);
        while (*link != page) link = &(*link)->nextInBucket;
        *link = page->nextInBucket;
        pages.Remove(page);
        delete page;
        --count;
    }
}

void ChangedPages::Clear() {
    while (ChangedPage* page = pages.TakeHead()) delete page;
    if (buckets != firstTable) Heap::Free(buckets);
    for (ChangedPage*& bucket : firstTable) bucket = nullptr;
    buckets = firstTable;
    bucketBits = FirstBits;
    count = 0;
}
