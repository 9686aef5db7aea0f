#include "binary/EditHistory.h"

void EditHistory::Add(ByteEdit* edit) {
    Free(redoHead);
    edit->serial = ++lastSerial;
    edit->next = undoHead;
    undoHead = edit;
}

void EditHistory::MoveToRedo() {
    ByteEdit* edit = undoHead;
    undoHead = edit->next;
    edit->next = redoHead;
    redoHead = edit;
}

void EditHistory::MoveToUndo() {
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
