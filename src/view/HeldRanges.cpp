#include "view/HeldRanges.h"

HeldRanges::~HeldRanges() {
    while (HeldRange* each = held.TakeHead()) each->owner = nullptr;
}

void HeldRanges::Follow(const TextChange& change) {
    for (HeldRange* each = held.head; each; each = each->next) each->range.Follow(change);
}
