#include "view/HeldRanges.h"

HeldRanges::~HeldRanges() {
    while (Entry* each = entries.TakeHead()) each->owner = nullptr;
}

void HeldRanges::Add(Entry& entry) {
    entry.owner = this;
    entries.Append(&entry);
}

void HeldRanges::Follow(const TextChange& change) {
    for (Entry* each = entries.head; each; each = each->next) each->range.Follow(change);
}
