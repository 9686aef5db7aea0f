#include "binary/EditHistory.h"

#include "base/Assert.h"
#include "document/StepSerial.h"

void EditHistory::Add(ByteEdit* edit) {
    ORVANE_ASSERT(edit);
    Free(redoHead);
    edit->serial = StepSerial::Next();
    edit->next = undoHead;
    undoHead = edit;
}

void EditHistory::JoinSteps(uint32_t after) {
    for (ByteEdit* edit = undoHead; edit && edit->next && edit->next->serial > after; edit = edit->next)
        edit->joined = true;
}

void EditHistory::MoveToRedo() {
    ORVANE_ASSERT(undoHead);
    ByteEdit* edit = undoHead;
    undoHead = edit->next;
    edit->next = redoHead;
    redoHead = edit;
}

void EditHistory::MoveToUndo() {
    ORVANE_ASSERT(redoHead);
    ByteEdit* edit = redoHead;
    redoHead = edit->next;
    edit->next = undoHead;
    undoHead = edit;
}

void EditHistory::Clear() {
    Free(undoHead);
    Free(redoHead);
    savedSerial = 0;
}

void EditHistory::Free(ByteEdit*& head) {
    while (ByteEdit* edit = head) {
        head = edit->next;
        delete edit;
    }
}
