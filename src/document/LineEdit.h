#pragma once

#include "document/TextEdit.h"

// Characters typed into the edit line, or deleted from it. While the line is pending the change is in its copy only
// (State::InEditLine); when the line is committed, UndoHistory turns the record into one of the store, and from then on
// it is undone and done again there. A run of typing is one record, which grows by a character a key.
class LineEdit final : public TextEdit {
public:
    LineEdit(EditTarget& changed, bool deletes) : TextEdit(changed, State::InEditLine, deletes) {}
    // `changed` is what is typed at `atColumn` of the edit line, or what is to be deleted there: `length` characters
    // without a line feed. One character may take the place of another, `overwritten`; 0 for none. False without
    // memory.
    [[nodiscard]] bool SetUp(uint32_t atColumn, const Char* changed, uint32_t length, Char overwritten);

    bool Undo() override { return state == State::InEditLine ? ChangeEditLine(true) : ChangeCommitted(true); }
    bool Redo() override { return state == State::InEditLine ? ChangeEditLine(false) : ChangeCommitted(false); }
    void MoveViews(bool undone) override;

    // The next key of a run, in this order; EditPipeline::ExtendTyping has the edit line changed before Extend.
    // Of a pending record: whether a character typed at `atColumn` goes on with its word, or with what is between two.
    bool Continues(Char typed, uint32_t atColumn) const;
    // For so many characters. Only this can fail, without memory.
    [[nodiscard]] bool MakeRoom(uint32_t characters) { return text.Reserve(text.Length() + characters); }
    void Extend(Char character);
    // From now on nothing continues the record.
    void EndRun() { runHasEnded = true; }

private:
    // Make the change, or take it `back`: in the store, or in the edit line.
    bool ChangeCommitted(bool back);
    bool ChangeEditLine(bool back);

    uint32_t column = 0; // of the edit line, where `text` begins
    Char replaced = 0;   // what a typed character took the place of; 0 for none
    bool runHasEnded = false;
};
