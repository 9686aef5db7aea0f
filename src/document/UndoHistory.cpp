#include "document/UndoHistory.h"

#include "base/Assert.h"

#include <utility>

void UndoHistory::Push(UndoRecord* record) {
    ORVANE_ASSERT(record && !record->next && !record->IsMarker());
    record->next = undoHead;
    undoHead = record;
    // Within a group the redo list is only stashed: the group may yet be abandoned.
    if (openGroups && !stashedRedo) stashedRedo = std::exchange(redoHead, nullptr);
    Free(redoHead);
}

// Not by Push: a group in which nothing is done leaves what can be redone.
bool UndoHistory::PushMarker(UndoRecord::State state) {
    auto* marker = new GroupMarker(state);
    if (!marker) return false;
    marker->next = undoHead;
    undoHead = marker;
    return true;
}

bool UndoHistory::BeginGroup() {
    if (!PushMarker(UndoRecord::State::GroupBegin)) return false;
    ++openGroups;
    return true;
}

bool UndoHistory::EndGroup() {
    if (!PushMarker(UndoRecord::State::GroupEnd)) return false;
    if (openGroups && --openGroups == 0) Free(stashedRedo);
    return true;
}

// For abandoning only: the record goes to neither list, as if it had never been made.
UndoRecord* UndoHistory::TakeLatest() {
    UndoRecord* record = undoHead;
    if (record) undoHead = record->next;
    return record;
}

void UndoHistory::GroupAbandoned() {
    // Nothing is stashed when there was nothing to redo, or nothing was recorded in the group.
    if (!openGroups || --openGroups || !stashedRedo) return;
    Free(redoHead); // what was undone within the group
    redoHead = std::exchange(stashedRedo, nullptr);
}

void UndoHistory::JoinSteps(uint32_t after) {
    ORVANE_ASSERT(!openGroups);
    // Serials only grow, and no group was open at `after`: what is cut off here is never a part of one.
    UndoRecord** earlier = &undoHead;
    while (*earlier && (*earlier)->serial > after) earlier = &(*earlier)->next;
    if (earlier == &undoHead) return;
    auto* begin = new GroupMarker(UndoRecord::State::GroupBegin);
    const bool isSaved = IsSaved();
    if (!begin || !PushMarker(UndoRecord::State::GroupEnd)) {
        delete begin;
        return;
    }
    // The head is now the marker that ends the step, which is no other state of the text.
    if (isSaved) MarkSaved();
    begin->next = *earlier;
    *earlier = begin;
}

void UndoHistory::MoveHead(bool undone) {
    UndoRecord*& from = undone ? undoHead : redoHead;
    UndoRecord*& to = undone ? redoHead : undoHead;
    UndoRecord* record = from;
    ORVANE_ASSERT(record);
    from = record->next;
    record->next = to;
    to = record;
}

// Within a step the text may become longer than it is before or after it.
uint64_t UndoHistory::PeakOfStep(uint64_t length, bool undoing) const {
    uint64_t peak = length;
    int64_t depth = 0;
    for (const UndoRecord* record = undoing ? undoHead : redoHead; record; record = record->next) {
        if (record->state == UndoRecord::State::GroupBegin) {
            depth += undoing ? -1 : 1;
        } else if (record->state == UndoRecord::State::GroupEnd) {
            depth += undoing ? 1 : -1;
        } else {
            // What is negative wraps around, and the sum is right again: no text gets shorter than nothing.
            length += static_cast<uint64_t>(undoing ? -record->growth : record->growth);
            peak = length > peak ? length : peak;
        }
        if (depth == 0) break;
    }
    return peak;
}

void UndoHistory::MarkCommitted() {
    MarkCommitted(undoHead);
    MarkCommitted(redoHead);
    MarkCommitted(stashedRedo);
}

// Only the first records can be of the edit line: a change of the store has it committed.
void UndoHistory::MarkCommitted(UndoRecord* head) {
    for (UndoRecord* record = head; record && record->state != UndoRecord::State::InStore; record = record->next) {
        if (record->state == UndoRecord::State::InEditLine) record->state = UndoRecord::State::InStore;
    }
}

void UndoHistory::Clear() {
    Free(undoHead);
    Free(redoHead);
    Free(stashedRedo);
    openGroups = 0;
    savedSerial = 0;
}

void UndoHistory::Free(UndoRecord*& head) {
    while (UndoRecord* record = head) {
        head = record->next;
        delete record;
    }
}
