#pragma once

#include "document/UndoRecord.h"

// The undo and the redo list of a document, most recent record first. It owns the records and knows which
// belong together and whether the document is as it was saved; it performs none of them.
class UndoHistory {
public:
    UndoHistory() = default;
    ~UndoHistory() { Clear(); }
    UndoHistory(const UndoHistory&) = delete;
    UndoHistory& operator=(const UndoHistory&) = delete;

    UndoRecord* UndoHead() const { return undoHead; }
    UndoRecord* RedoHead() const { return redoHead; }

    // Takes over a record that was performed. What could be redone is gone; within a group only once it ends.
    void Push(UndoRecord* record);
    // False without memory.
    [[nodiscard]] bool BeginGroup();
    [[nodiscard]] bool EndGroup();
    // Abandoning a group, instead of EndGroup. TakeLatest hands out its records, latest first, up to the marker that
    // began it; the caller undoes and frees them. GroupAbandoned ends it: with no group left open, what could be redone
    // before its first change can be redone again.
    UndoRecord* TakeLatest();
    void GroupAbandoned();
    // What was recorded after the serial `after`, outside of groups, is one step from now on. Without memory the steps
    // stay what they are.
    void JoinSteps(uint32_t after);
    // Frees what could be redone.
    void ForgetRedo() { Free(redoHead); }
    // The latest record, undone, becomes the first that can be redone, or vice versa.
    void MoveHead(bool undone);
    // The pending changes at the head of every list are in the store now.
    void MarkCommitted();
    // The greatest length on the way through the next step, of a text that is `length` long now.
    uint64_t PeakOfStep(uint64_t length, bool undoing) const;
    void Clear();

    void MarkSaved() { savedSerial = HeadSerial(); }
    // No state of the text is that of a file until it is saved.
    void MarkUnsaved() { savedSerial = UINT32_MAX; }
    bool IsSaved() const { return HeadSerial() == savedSerial; }

private:
    uint32_t HeadSerial() const { return undoHead ? undoHead->serial : 0; }
    bool PushMarker(UndoRecord::State state);
    static void MarkCommitted(UndoRecord* head);
    static void Free(UndoRecord*& head);

    UndoRecord* undoHead = nullptr;
    UndoRecord* redoHead = nullptr;
    UndoRecord* stashedRedo = nullptr; // the redo list while a group that has changed something is open
    uint32_t openGroups = 0;
    // Serial of the undo head at the last load or save, 0 for an empty list. A serial is never reused, unlike
    // the address of a freed record.
    uint32_t savedSerial = 0;
};
