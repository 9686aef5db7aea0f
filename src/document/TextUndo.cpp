// The undo and redo lists of a TextBuffer.

#include "document/TextBuffer.h"

#include <utility>

bool TextBuffer::PerformAndPush(UndoRecord* record) {
    const Operation operation(*this);
    if (!record->Redo()) {
        delete record;
        return false;
    }
    record->next = undoHead;
    undoHead = record;
    // Within a group the redo list is only stashed: the group may yet be abandoned.
    if (openGroups && !stashedRedo) stashedRedo = std::exchange(redoHead, nullptr);
    FreeRecords(redoHead);
    TellViews(*record, false);
    NotifyModified();
    return true;
}

bool TextBuffer::PushMarker(uint32_t state) {
    auto* marker = new GroupMarker(state);
    if (!marker) return false;
    marker->next = undoHead;
    undoHead = marker;
    return true;
}

bool TextBuffer::BeginGroup() {
    if (readOnly) return true;
    if (!PushMarker(UndoRecord::GroupBegin)) return false;
    ++openGroups;
    return true;
}

bool TextBuffer::EndGroup() {
    if (readOnly) return true;
    if (!PushMarker(UndoRecord::GroupEnd)) return false;
    if (openGroups && --openGroups == 0) FreeRecords(stashedRedo);
    return true;
}

void TextBuffer::AbandonGroup() {
    const Operation operation(*this);
    for (uint32_t depth = 1; depth && undoHead;) {
        UndoRecord* record = undoHead;
        if (record->state == UndoRecord::GroupBegin) --depth;
        if (record->state == UndoRecord::GroupEnd) ++depth;
        if (record->state == UndoRecord::InStore) {
            // Whatever was typed after this record is taken back by now, so that neither this nor the
            // change below asks for more room than the text has had.
            CommitEdit();
            DropEditLine();
        }
        record->Undo();
        undoHead = record->next;
        TellViews(*record, true);
        delete record;
    }
    if (openGroups && --openGroups == 0 && stashedRedo) {
        FreeRecords(redoHead);
        redoHead = std::exchange(stashedRedo, nullptr);
    }
    NotifyModified();
}

void TextBuffer::EndTyping() {
    if (undoHead && undoHead->state == UndoRecord::InEditLine) static_cast<LineEdit*>(undoHead)->closed = true;
}

bool TextBuffer::Undo() { return Step(undoHead, redoHead, true); }

bool TextBuffer::Redo() { return Step(redoHead, undoHead, false); }

bool TextBuffer::Step(UndoRecord*& from, UndoRecord*& to, bool undoing) {
    const Operation operation(*this);
    // Without memory to write the edit line back, what was typed in it last can still be taken back there.
    const bool committed = CommitEdit();
    if (!committed && !(from && from->state == UndoRecord::InEditLine)) return false;
    // The room for all of a step is made before its first change, so that no later one can fail.
    if (committed && !EnsureCapacity(PeakOfStep(from, undoing))) return false;

    const uint32_t opens = undoing ? UndoRecord::GroupEnd : UndoRecord::GroupBegin;
    const uint32_t closes = undoing ? UndoRecord::GroupBegin : UndoRecord::GroupEnd;
    int64_t depth = 0;
    while (UndoRecord* record = from) {
        if (record->state != UndoRecord::InEditLine) DropEditLine();
        if (record->state == opens) ++depth;
        if (record->state == closes) --depth;
        if (!(undoing ? record->Undo() : record->Redo())) return false;
        from = record->next;
        record->next = to;
        to = record;
        TellViews(*record, undoing);
        if (depth == 0) break;
    }
    NotifyModified();
    return true;
}

// The greatest length that the text has on the way through the step at `head`.
uint64_t TextBuffer::PeakOfStep(const UndoRecord* head, bool undoing) const {
    uint64_t now = length;
    uint64_t peak = now;
    int64_t depth = 0;
    for (const UndoRecord* record = head; record; record = record->next) {
        if (record->state == UndoRecord::GroupBegin) {
            depth += undoing ? -1 : 1;
        } else if (record->state == UndoRecord::GroupEnd) {
            depth += undoing ? 1 : -1;
        } else {
            now += static_cast<uint64_t>(undoing ? -record->growth : record->growth);
            peak = now > peak ? now : peak;
        }
        if (depth == 0) break;
    }
    return peak;
}

void TextBuffer::MarkCommitted(UndoRecord* head) {
    for (UndoRecord* record = head; record && record->state != UndoRecord::InStore; record = record->next) {
        if (record->state == UndoRecord::InEditLine) record->state = UndoRecord::InStore;
    }
}

void TextBuffer::ForgetUndo() {
    FreeRecords(undoHead);
    FreeRecords(redoHead);
    FreeRecords(stashedRedo);
    openGroups = 0;
    savedUndoHead = 0;
}

void TextBuffer::FreeRecords(UndoRecord*& head) {
    while (UndoRecord* record = head) {
        head = record->next;
        delete record;
    }
}
