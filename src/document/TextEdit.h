#pragma once

#include "base/WString.h"
#include "document/TextChange.h"
#include "document/UndoRecord.h"

class TextDocumentView;
struct EditTarget;

// Where one view of the text was when a change was recorded, and where the change moves it.
struct ViewState : HeapObject {
    TextDocumentView* view = nullptr; // may be gone by now: used only while it is still a view of the document
    TextSelection before;
    TextSelection after; // recorded only (docs/oddities.md): TextEdit::MoveViews puts the caret at the change
    uint32_t topLineBefore = 0;
    uint32_t topLineAfter = 0;
    ViewState* next = nullptr;
};

// A record that changes the text: what came or went, at which place, and where the views were. As it is here, it is one
// insertion into the store or one deletion from it; LineEdit and BulkEdit replace what differs.
//
// TextBuffer makes a record and calls the SetUp of its class, while the text is still the old one. EditPipeline then
// calls Redo, which makes the change; gives the record to UndoHistory, which owns it from then on; tells the views
// Change(); and calls MoveViews. Every step back or forth is again Undo or Redo, Change() and MoveViews.
class TextEdit : public UndoRecord {
public:
    ~TextEdit() override;
    [[nodiscard]] bool Undo() override;
    [[nodiscard]] bool Redo() override;
    // What the last Undo or Redo did to the text.
    const TextChange& Change() const { return change; }
    // Puts the views where they belong after the change, or after it was `undone`.
    virtual void MoveViews(bool undone);

    EditTarget& target; // outlives the record
    bool isDelete;
    // What was inserted or removed, and the offset in the store where that was. In an edit line that is not written
    // back, the offset is where the text will be once it is.
    WString text;
    uint32_t position = 0;
    uint32_t count = 0;     // characters of `text`
    uint32_t lineFeeds = 0; // in `text`
    ViewState viewStates;   // the first view's; those of further views are chained and owned

protected:
    TextEdit(EditTarget& changed, State initialState, bool deletes);
    // The part of SetUp that all have: copies the text, and captures the views. False without memory.
    [[nodiscard]] bool SetUpEdit(uint32_t offset, const Char* changed, uint32_t length);
    // Puts `text` into the store, or takes it out, and moves the bookmarks. Only putting it in can fail.
    [[nodiscard]] bool ChangeStore(bool remove);
    // Views that were made after the record, which it knows nothing of: they stay at their places in the text.
    bool HasOtherViews() const;
    void MoveOtherViews();

    TextChange change;

private:
    [[nodiscard]] bool CaptureViews();
    void CaptureView(ViewState& viewState, TextDocumentView* view) const;
    bool Holds(const TextDocumentView* view) const;
};

// Text that is put into the store in one place.
class InsertEdit final : public TextEdit {
public:
    explicit InsertEdit(EditTarget& changed) : TextEdit(changed, State::InStore, false) {}
    // `offset` is at most the store's length. False without memory, here and below.
    [[nodiscard]] bool SetUp(uint32_t offset, const Char* inserted, uint32_t length);
};

// Text that is taken out of the store in one place.
class DeleteEdit final : public TextEdit {
public:
    explicit DeleteEdit(EditTarget& changed) : TextEdit(changed, State::InStore, true) {}
    // `range` is inside the store.
    [[nodiscard]] bool SetUp(TextRange range);
};
