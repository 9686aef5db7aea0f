#include "base/Text.h"
#include "document/TextBuffer.h"

bool LineEdit::SetUp(uint32_t atColumn, const Char* changed, uint32_t length, Char overwritten) {
    column = atColumn;
    replaced = overwritten;
    if (!SetUpEdit(document->editLineStart + atColumn, changed, length)) return false;
    if (replaced) growth = 0;
    return true;
}

bool LineEdit::Undo() {
    if (state == InEditLine) return ChangeEditLine(true);
    if (!ChangeCommitted(true)) return false;
    RestoreBefore();
    return true;
}

bool LineEdit::Redo() {
    if (state == InEditLine) return ChangeEditLine(false);
    if (!ChangeCommitted(false)) return false;
    ApplyAfter();
    return true;
}

TextChange LineEdit::ChangeOf(bool undone) const {
    TextChange change = TextEdit::ChangeOf(undone);
    if (replaced) change.removed = change.inserted = 1;
    return change;
}

bool LineEdit::Continues(Char typed, uint32_t atColumn) const {
    // What was removed or typed over has to stay apart: this record's undo could not bring it back.
    if (state != InEditLine || closed || isDelete || replaced || text.IsEmpty()) return false;
    return uint64_t{column} + text.Length() == atColumn &&
           Text::IsWordChar(typed) == Text::IsWordChar(text[text.Length() - 1]);
}

bool LineEdit::ChangeCommitted(bool back) {
    if (!replaced) return ChangeStore(back != (isDelete != 0));
    document->text[position] = back ? replaced : text[0];
    document->TellTextChanged(position);
    return true;
}

bool LineEdit::ChangeEditLine(bool back) {
    WString& line = document->editLine;
    const uint32_t lineNumber = document->editLineNo;
    bool reachesOn = document->EditLineAffectsFollowingLines();
    if (replaced) {
        line.Set(column, back ? replaced : text[0]);
    } else if (back != (isDelete != 0)) {
        line.Erase(column, count);
    } else if (!line.Insert(column, text.Text(), count)) {
        return false;
    }
    document->editDirty = 1;
    reachesOn = reachesOn || document->EditLineAffectsFollowingLines();
    if (reachesOn) document->TellTextChanged(document->editLineStart);

    if (isDelete) {
        document->TellEditLineChanged(column, back ? 0 : count, back ? count : 0, nullptr);
    } else {
        const uint32_t caretColumn = back ? column : column + text.Length();
        for (const ViewNode* node = document->views.head; node; node = node->next) {
            node->view->MoveCaret(node->view->CaretLine(), caretColumn);
        }
    }
    document->RepaintEdited(lineNumber, reachesOn);
    return true;
}
