#include "document/TextEdit.h"

#include "base/Scan.h"
#include "document/EditTarget.h"

TextEdit::TextEdit(EditTarget& changed, State initialState, bool deletes)
    : UndoRecord(initialState), target(changed), isDelete(deletes) {}

TextEdit::~TextEdit() {
    while (ViewState* further = viewStates.next) {
        viewStates.next = further->next;
        delete further;
    }
}

bool TextEdit::SetUpEdit(uint32_t offset, const Char* changed, uint32_t length) {
    if (!text.Assign(changed, length)) return false;
    position = offset;
    count = length;
    growth = isDelete ? -int64_t{length} : int64_t{length};
    lineFeeds = static_cast<uint32_t>(Scan::CountLineFeeds(changed, length));
    return CaptureViews();
}

bool TextEdit::CaptureViews() {
    ViewState* viewState = &viewStates;
    for (TextDocumentView* view : target.views) {
        // The first is a part of the record: with one view, as nearly always, nothing is allocated.
        if (viewState->view) {
            viewState->next = new ViewState;
            viewState = viewState->next;
            if (!viewState) return false;
        }
        CaptureView(*viewState, view);
    }
    return true;
}

void TextEdit::CaptureView(ViewState& viewState, TextDocumentView* view) const {
    const uint64_t end = uint64_t{position} + count;
    viewState.view = view;
    viewState.before = viewState.after = view->Selection();
    viewState.topLineBefore = viewState.topLineAfter = view->TopLine();

    // The caret is compared with the end of the change, the anchor with its start: see docs/oddities.md.
    const TextSelection selection = viewState.before;
    const bool before = selection.anchor < position && selection.caret < end;
    if (!before && selection.anchor >= end && selection.caret >= end) {
        viewState.after = isDelete ? TextSelection{selection.anchor - count, selection.caret - count}
                                   : TextSelection{selection.anchor + count, selection.caret + count};
    } else if (!before) {
        viewState.after.anchor = viewState.after.caret = isDelete ? position : static_cast<uint32_t>(end);
    }

    // A window that begins after the change goes on showing what it shows; one that begins inside it has nothing left
    // to hold on to but the change itself.
    const uint32_t topStart = target.content.LineToOffset(viewState.topLineBefore);
    if (topStart < position) return;
    if (topStart < end) {
        uint32_t lineStart = 0;
        viewState.topLineAfter = target.content.OffsetToLine(position, lineStart);
    } else if (!isDelete) {
        viewState.topLineAfter += lineFeeds;
    } else {
        viewState.topLineAfter -= lineFeeds < viewState.topLineAfter ? lineFeeds : viewState.topLineAfter;
    }
}

bool TextEdit::Undo() { return ChangeStore(!isDelete); }

bool TextEdit::Redo() { return ChangeStore(isDelete); }

bool TextEdit::ChangeStore(bool remove) {
    TextParts& parts = target.parts;
    const TextExtent extent = {count, lineFeeds};
    if (remove) {
        parts.store.Delete(position, extent);
    } else if (!parts.store.Insert(position, text.Text(), extent)) {
        return false;
    }
    // The same before and after the change, which leaves alone what is before `position`.
    uint32_t lineStart = 0;
    const uint32_t line = target.content.OffsetToLine(position, lineStart);
    change = remove ? TextChange{position, line, extent, {}} : TextChange{position, line, {}, extent};
    if (lineFeeds == 0) return true;
    if (!remove) {
        parts.marks.LinesInserted({line, lineFeeds});
    } else if (isDelete) {
        parts.marks.LinesDeleted({line, lineFeeds});
    } else {
        parts.marks.LinesTakenBack({line, lineFeeds});
    }
    return true;
}

// Puts the caret of every view that the record knows at the change. See docs/oddities.md.
void TextEdit::MoveViews(bool undone) {
    const uint32_t caret = isDelete ? position : position + count;
    for (const ViewState* viewState = &viewStates; viewState; viewState = viewState->next) {
        // The record may be older than a view, and outlive another: only the pointer is left of that.
        if (!target.views.Holds(viewState->view)) continue;
        // The top line first: placing the selection scrolls the caret into view from there.
        viewState->view->PlaceTopLine(undone ? viewState->topLineBefore : viewState->topLineAfter);
        viewState->view->PlaceSelection(undone ? viewState->before : TextSelection{caret, caret});
    }
    MoveOtherViews();
}

bool TextEdit::Holds(const TextDocumentView* view) const {
    const ViewState* viewState = &viewStates;
    while (viewState && viewState->view != view) viewState = viewState->next;
    return viewState != nullptr;
}

bool TextEdit::HasOtherViews() const {
    for (const TextDocumentView* view : target.views) {
        if (!Holds(view)) return true;
    }
    return false;
}

void TextEdit::MoveOtherViews() {
    for (TextDocumentView* view : target.views) {
        if (!Holds(view)) view->FollowChange(change);
    }
}

bool InsertEdit::SetUp(uint32_t offset, const Char* inserted, uint32_t length) {
    return SetUpEdit(offset, inserted, length);
}

bool DeleteEdit::SetUp(TextRange range) {
    return SetUpEdit(range.start, target.content.Content() + range.start, range.Length());
}
