#pragma once

#include "base/WString.h"
#include "document/TextChange.h"
#include "document/UndoRecord.h"

class TextDocumentView;
struct EditTarget;

// Where a view was before a change and where it goes after it.
struct ViewState : HeapObject {
    TextDocumentView* view = nullptr;
    TextSelection before;
    TextSelection after;
    uint32_t topLineBefore = 0;
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

    EditTarget& target; // outlives the record
    bool isDelete;
    WString text; // inserted or removed
    uint32_t position = 0;
    uint32_t count = 0;
    uint32_t lineFeeds = 0; // line feeds in `text` when the record was set up
    ViewState viewStates;   // the first entry; further ones are chained and owned

protected:
    TextEdit(EditTarget& changed, State initialState, bool deletes);
    // Records the text and the place, then every view. False without memory.
    bool SetUpEdit(uint32_t offset, const Char* changed, uint32_t length);
    // Puts `text` into the store, or takes it out again, and moves the bookmarks. Only an insertion can fail.
    bool ChangeStore(bool remove);
    // For views that the record knows nothing of, because they were made after it.
    bool HasOtherViews() const;
    void MoveOtherViews();

    TextChange change;

private:
    bool CaptureViews();
    void CaptureView(ViewState& viewState, TextDocumentView* view) const;
    bool Holds(const TextDocumentView* view) const;
};

class InsertEdit final : public TextEdit {
public:
    explicit InsertEdit(EditTarget& changed) : TextEdit(changed, State::InStore, false) {}
    // Copies the text and captures the views; false without memory.
    bool SetUp(uint32_t offset, const Char* inserted, uint32_t length);
};

class DeleteEdit final : public TextEdit {
public:
    explicit DeleteEdit(EditTarget& changed) : TextEdit(changed, State::InStore, true) {}
    bool SetUp(TextRange range);
};
