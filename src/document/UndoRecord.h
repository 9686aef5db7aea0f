#pragma once

#include "base/Heap.h"
#include "base/Types.h"
#include "base/WString.h"
#include "document/TextChange.h"

class DocumentView;
class TextBuffer;

// One change of a text document, or a marker around several. Records form singly linked lists, most
// recent first.
class UndoRecord : public HeapObject {
public:
    enum State : uint32_t {
        GroupBegin = 0,
        GroupEnd = 1,
        InStore = 2,    // the change lives in the store
        InEditLine = 3, // the change lives only in the edit line, not yet written back
    };

    virtual ~UndoRecord() = default;
    // False only without memory; nothing has changed then.
    virtual bool Undo() { return true; }
    virtual bool Redo() { return true; }

    bool IsMarker() const { return state == GroupBegin || state == GroupEnd; }

    uint32_t state;
    uint32_t serial; // process-wide, counted up for every record made
    UndoRecord* next = nullptr;
    int64_t growth = 0; // characters that the text gains by Redo and loses by Undo

protected:
    explicit UndoRecord(uint32_t initialState);
};

// Brackets the records of one step; groups may nest.
class GroupMarker final : public UndoRecord {
public:
    explicit GroupMarker(uint32_t markerState) : UndoRecord(markerState) {}
};

// Where a view stood before a change and where it goes after it.
struct ViewState : HeapObject {
    DocumentView* view = nullptr;
    uint32_t anchorBefore = 0;
    uint32_t caretBefore = 0;
    uint32_t topLineBefore = 0;
    uint32_t anchorAfter = 0;
    uint32_t caretAfter = 0;
    uint32_t topLineAfter = 0;
    ViewState* next = nullptr;
};

// An insertion into, or a deletion from, the store.
class TextEdit : public UndoRecord {
public:
    ~TextEdit() override;
    bool Undo() override;
    bool Redo() override;

    // What the last Undo or Redo did to the text.
    const TextChange& Change() const { return change; }
    // Once the change is made and recorded: puts the views where they belong after it, or after it was
    // `undone`.
    virtual void MoveViews(bool undone);

    TextBuffer* document;
    uint32_t isDelete;
    WString text; // inserted or removed
    uint32_t position = 0;
    uint32_t count = 0;
    uint32_t newLines = 0; // line feeds in `text` when the record was set up
    ViewState views;       // the first entry; further ones are chained and owned

protected:
    TextEdit(TextBuffer* owner, uint32_t initialState, bool deletes);
    // Takes down the text and the place, then every view. False without memory.
    bool SetUpEdit(uint32_t offset, const Char* changed, uint32_t length);
    // Puts `text` into the store, or takes it out again, and moves the bookmarks. Only an insertion can fail.
    bool ChangeStore(bool remove);
    // For views that the record knows nothing of, because they were made after it.
    void MoveOtherViews();

    TextChange change;

private:
    bool CaptureViews();
    void CaptureView(ViewState& viewState, DocumentView* view) const;
    bool Holds(const DocumentView* view) const;
};

class InsertEdit final : public TextEdit {
public:
    explicit InsertEdit(TextBuffer* owner) : TextEdit(owner, InStore, false) {}
    // Copies the text and captures the views; false without memory.
    bool SetUp(uint32_t offset, const Char* inserted, uint32_t length);
};

class DeleteEdit final : public TextEdit {
public:
    explicit DeleteEdit(TextBuffer* owner) : TextEdit(owner, InStore, true) {}
    bool SetUp(uint32_t offset, uint32_t length);
};

// Typing and deleting inside the edit line.
class LineEdit final : public TextEdit {
public:
    LineEdit(TextBuffer* owner, bool deletes) : TextEdit(owner, InEditLine, deletes) {}
    // The changed text is typed, or stands already, at `atColumn` of the edit line.
    bool SetUp(uint32_t atColumn, const Char* changed, uint32_t length, Char overwritten);
    bool Undo() override { return state == InEditLine ? ChangeEditLine(true) : ChangeCommitted(true); }
    bool Redo() override { return state == InEditLine ? ChangeEditLine(false) : ChangeCommitted(false); }
    // Whether a character typed at `atColumn` belongs to the same run of typing.
    bool Continues(Char typed, uint32_t atColumn) const;

    uint32_t column = 0;
    Char replaced = 0;   // what an overwriting keystroke replaced; 0 when it inserted
    bool closed = false; // takes no further characters

    void MoveViews(bool undone) override;

private:
    // Forwards, or `back`, where the change lives.
    bool ChangeCommitted(bool back);
    bool ChangeEditLine(bool back);
};
