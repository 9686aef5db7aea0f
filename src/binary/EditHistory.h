#pragma once

#include "binary/ByteEdit.h"

// The edits of a binary document that can be undone and redone, and which of them are in the file.
class EditHistory {
public:
    EditHistory() = default;
    ~EditHistory() { Clear(); }
    EditHistory(const EditHistory&) = delete;
    EditHistory& operator=(const EditHistory&) = delete;

    // The next edit to undo or redo; null without one.
    ByteEdit* Undoable() const { return undoHead; }
    ByteEdit* Redoable() const { return redoHead; }
    // Takes an edit over that was just made. What was undone before can no longer be redone.
    void Add(ByteEdit* edit);
    // The edits after the serial `after` are one step from now on.
    void JoinSteps(uint32_t after);
    // Whether what could be undone and what could be redone next belong to the same step.
    bool IsInsideStep() const { return redoHead && redoHead->joined; }
    // The next edit was undone, or made again.
    void MoveToRedo();
    void MoveToUndo();
    void Clear();

    // Whether the document is another one than was saved last.
    bool IsModified() const { return HeadSerial() != savedSerial; }
    void MarkSaved() { savedSerial = HeadSerial(); }
    // The file is what no state of the document is, whatever is undone, until it is saved.
    void MarkPartlySaved() { savedSerial = NoSerial; }

private:
    static constexpr uint32_t NoSerial = UINT32_MAX; // of no edit, nor of an empty list

    uint32_t HeadSerial() const { return undoHead ? undoHead->serial : 0; }
    static void Free(ByteEdit*& head);

    ByteEdit* undoHead = nullptr; // most recent first, as below
    ByteEdit* redoHead = nullptr;
    // Of the undo head at the last save, 0 for an empty list. A serial is never used again, unlike the address of
    // a freed edit.
    uint32_t savedSerial = 0;
};
