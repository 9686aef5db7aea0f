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

    [[nodiscard]] bool Undo() override {
        return state == State::InEditLine ? ChangeEditLine(true) : ChangeInStore(true);
    }
    [[nodiscard]] bool Redo() override {
        return state == State::InEditLine ? ChangeEditLine(false) : ChangeInStore(false);
    }
    void MoveViews(bool undone) override;

    // A run of typing is extended in this order: Continues, MakeRoom, the change of the edit line (by
    // EditPipeline::ExtendTyping), Extend.
    //
    // Whether a character typed at `atColumn` extends this pending record: the same word, or the same gap between
    // words.
    bool Continues(Char typed, uint32_t atColumn) const;
    // For `count` characters. Only this can fail, without memory.
    [[nodiscard]] bool MakeRoom(uint32_t characters) { return text.Reserve(text.Length() + characters); }
    void Extend(Char character);
    // From now on nothing continues the record.
    void EndTyping() { typingHasEnded = true; }

private:
    // Make the change, or undo it: in the store, or in the edit line.
    [[nodiscard]] bool ChangeInStore(bool undoing);
    [[nodiscard]] bool ChangeEditLine(bool undoing);

    uint32_t column = 0; // where `text` begins in the edit line
    Char replaced = 0;   // what a typed character took the place of; 0 for none
    bool typingHasEnded = false;
};
