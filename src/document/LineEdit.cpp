#include "document/LineEdit.h"

#include "base/Assert.h"
#include "base/Text.h"
#include "document/EditTarget.h"

bool LineEdit::SetUp(uint32_t atColumn, const Char* changed, uint32_t length, Char overwritten) {
    column = atColumn;
    replaced = overwritten;
    if (!SetUpEdit(target.content.EditLineStart() + atColumn, changed, length)) return false;
    if (replaced) growth = 0; // the character takes the place of another
    return true;
}

void LineEdit::Extend(Char character) {
    static_cast<void>(text.AppendChar(character)); // the caller has made room
    ++count;
    ++growth;
}

bool LineEdit::Continues(Char typed, uint32_t atColumn) const {
    ORVANE_ASSERT(state == State::InEditLine && !text.IsEmpty());
    // What was removed or typed over has to stay apart: this record's undo could not bring it back.
    if (typingHasEnded || isDelete || replaced) return false;
    // Words and what is between them are steps of their own.
    return uint64_t{column} + text.Length() == atColumn &&
           Text::IsWordChar(typed) == Text::IsWordChar(text[text.Length() - 1]);
}

bool LineEdit::ChangeInStore(bool undoing) {
    if (!replaced) return ChangeStore(undoing != isDelete);
    target.parts.store.SetCharacter(position, undoing ? replaced : text[0]);
    uint32_t lineStart = 0;
    change = {position, target.content.OffsetToLine(position, lineStart), {1, 0}, {1, 0}};
    return true;
}

bool LineEdit::ChangeEditLine(bool undoing) {
    EditLine& line = target.parts.editLine;
    const bool removes = undoing != isDelete;
    // Asked before and after: a comment that is closed by the change was open before it.
    const bool affectedBefore = target.content.EditLineAffectsFollowingLines();
    if (replaced) {
        line.Set(column, undoing ? replaced : text[0]);
    } else if (removes) {
        line.Erase({column, column + count});
    } else if (!line.Insert(column, text.Text(), count)) {
        return false;
    }
    change = TextChange();
    change.start = line.Start() + column;
    change.removed.characters = replaced ? 1 : removes ? count : 0;
    change.inserted.characters = replaced ? 1 : removes ? 0 : count;
    change.startLine = line.Number();
    change.inEditLine = true;
    change.affectsFollowingLines = affectedBefore || target.content.EditLineAffectsFollowingLines();
    return true;
}

// Typing puts every caret after the typed text, each in its own line. See docs/oddities.md.
void LineEdit::MoveViews(bool undone) {
    // Committed meanwhile: like any change of the store, and with the views as they were when it was typed.
    if (state != State::InEditLine) return TextEdit::MoveViews(undone);
    for (TextDocumentView* view : target.views) {
        if (isDelete) {
            view->FollowChange(change);
        } else {
            view->PlaceCaret({view->CaretLine(), undone ? column : column + text.Length()});
        }
    }
}
