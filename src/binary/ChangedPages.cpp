#include "binary/ChangedPages.h"

#include "base/Assert.h"

ChangedPage* ChangedPages::Find(uint64_t index) const {
    const Bucket& bucket = BucketOf(index);
    if (!bucket.first || bucket.index == index) return bucket.first;
    ChangedPage* page = bucket.first->nextInBucket;
    while (page && page->index != index) page = page->nextInBucket;
    return page;
}

void ChangedPages::Append(ChangedPage* page) {
    ORVANE_ASSERT(page && !Find(page->index));
    if (count >= BucketCount() / 2) Grow();
    pages.Append(page);
    PutIntoBucket(page);
    ++count;
}

void ChangedPages::PutIntoBucket(ChangedPage* page) {
    Bucket& bucket = BucketOf(page->index);
    page->nextInBucket = bucket.first;
    SetFirst(bucket, page);
}

void ChangedPages::SetFirst(Bucket& bucket, ChangedPage* page) {
    bucket.first = page;
    bucket.index = page ? page->index : 0;
}

void ChangedPages::Grow() {
    auto* table = Heap::AllocateArray<Bucket>(BucketCount() * 2);
    if (!table) return;
    if (buckets != firstTable) Heap::Free(buckets);
    buckets = table;
    ++bucketBits;
    for (ChangedPage* page = pages.head; page; page = page->next) PutIntoBucket(page);
}

void ChangedPages::RemoveAfter(const ChangedPage* last) {
    while (ChangedPage* page = pages.tail) {
        if (page == last) return;
        // The page put in last is the first of its bucket, also in a grown table.
        ORVANE_ASSERT(BucketOf(page->index).first == page);
        SetFirst(BucketOf(page->index), page->nextInBucket);
        pages.Remove(page);
        delete page;
        --count;
    }
    ORVANE_ASSERT(!last && count == 0);
}

void ChangedPages::Clear() {
    while (ChangedPage* page = pages.TakeHead()) delete page;
    if (buckets != firstTable) Heap::Free(buckets);
    for (Bucket& bucket : firstTable) bucket = {};
    buckets = firstTable;
    bucketBits = FirstBits;
    count = 0;
}
