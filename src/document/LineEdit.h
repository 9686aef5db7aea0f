#pragma once

#include "document/TextEdit.h"

// Typing and deleting inside the edit line.
class LineEdit final : public TextEdit {
public:
    LineEdit(EditTarget& changed, bool deletes) : TextEdit(changed, State::InEditLine, deletes) {}
    // The changed text is typed, or is already there, at `atColumn` of the edit line.
    bool SetUp(uint32_t atColumn, const Char* changed, uint32_t length, Char overwritten);
    bool Undo() override { return state == State::InEditLine ? ChangeEditLine(true) : ChangeCommitted(true); }
    bool Redo() override { return state == State::InEditLine ? ChangeEditLine(false) : ChangeCommitted(false); }
    // Room for another character, and that character typed after the others.
    bool MakeRoom() { return text.Reserve(text.Length() + 1); }
    void Extend(Char character);
    // Whether a character typed at `atColumn` belongs to the same run of typing, which is pending still.
    bool Continues(Char typed, uint32_t atColumn) const;
    // Nothing typed later belongs to it.
    void EndRun() { runHasEnded = true; }

    void MoveViews(bool undone) override;

private:
    // Forwards, or `back`, where the change lives.
    bool ChangeCommitted(bool back);
    bool ChangeEditLine(bool back);

    uint32_t column = 0;
    Char replaced = 0; // what an overwriting keystroke replaced; 0 when it inserted
    bool runHasEnded = false;
};
