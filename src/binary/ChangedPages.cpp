#include "binary/ChangedPages.h"

ChangedPage* ChangedPages::Find(uint64_t index) const {
    ChangedPage* page = BucketOf(index);
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
    ChangedPage*& bucket = BucketOf(page->index);
    page->nextInBucket = bucket;
    bucket = page;
}

void ChangedPages::Grow() {
    auto* table = Heap::AllocateArray<Bucket>(BucketCount() * 2);
    if (!table) return;
    if (buckets != firstTable) Heap::Free(buckets);
    buckets = table;
    ++bucketBits;
    for (ChangedPage* page = pages.head; page; page = page->next) PutIntoBucket(page);
}

void ChangedPages::RemoveBehind(const ChangedPage* last) {
    while (ChangedPage* page = pages.tail) {
        if (page == last) return;
        ChangedPage** link = &BucketOf(page->index);
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
    for (Bucket& bucket : firstTable) bucket = {};
    buckets = firstTable;
    bucketBits = FirstBits;
    count = 0;
}
