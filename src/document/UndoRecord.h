#pragma once

#include "base/Heap.h"
#include "base/Types.h"
#include "base/WString.h"

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
    virtual bool Undo() { return true; }
    virtual bool Redo() { return true; }

    uint32_t state;
    uint32_t serial; // process-wide, counted up for every record made
    UndoRecord* next = nullptr;

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

    TextBuffer* document;
    uint32_t isDelete;
    WString text; // inserted or removed
    uint32_t position = 0;
    uint32_t count = 0;
    uint32_t newLines = 0; // line feeds in `text` when the record was set up
    ViewState views;       // the first entry; further ones are chained and owned

protected:
    TextEdit(TextBuffer* owner, uint32_t initialState, bool deletes);
    bool CaptureViews();
    void RestoreBefore();
    void ApplyAfter();
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
    bool SetUp(uint32_t atColumn, const Char* changed, uint32_t length, Char overwritten);
    bool Undo() override;
    bool Redo() override;

    uint32_t column = 0;
    Char replaced = 0; // what an overwriting keystroke replaced; 0 when it inserted
};
