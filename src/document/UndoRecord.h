#pragma once

#include "base/Heap.h"
#include "base/Types.h"

// One change of a text document, or a marker around several. Records form singly linked lists, most
// recent first.
class UndoRecord : public HeapObject {
public:
    // A marker, or where the change is.
    enum class State : uint32_t {
        GroupBegin = 0,
        GroupEnd = 1,
        InStore = 2,
        InEditLine = 3, // only there: the edit line is not written back
    };

    virtual ~UndoRecord() = default;
    // A record is made before its change, which the first Redo makes. Undo and Redo change the store and its bookmarks,
    // or only the edit line; a marker changes nothing. The caller notifies the views. False only without memory;
    // nothing has changed then.
    [[nodiscard]] virtual bool Undo() { return true; }
    [[nodiscard]] virtual bool Redo() { return true; }
    bool IsMarker() const { return state == State::GroupBegin || state == State::GroupEnd; }

    State state;
    uint32_t serial; // of StepSerial, given once: a record that grows keeps it
    UndoRecord* next = nullptr;
    int64_t growth = 0; // characters that the text gains by Redo and loses by Undo

protected:
    explicit UndoRecord(State initialState);
};

// Brackets the records of one step; groups may nest.
class GroupMarker final : public UndoRecord {
public:
    explicit GroupMarker(State markerState) : UndoRecord(markerState) {}
};
