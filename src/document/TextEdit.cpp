#include "document/TextEdit.h"

#include "base/Scan.h"
#include "document/TextBuffer.h"

TextEdit::TextEdit(TextBuffer* owner, uint32_t initialState, bool deletes)
    : UndoRecord(initialState), document(owner), isDelete(deletes) {}

TextEdit::~TextEdit() {
    while (ViewState* further = views.next) {
        views.next = further->next;
        delete further;
    }
}

bool TextEdit::SetUpEdit(uint32_t offset, const Char* changed, uint32_t length) {
    if (!text.Assign(changed, length)) return false;
    position = offset;
    count = length;
    growth = isDelete ? -int64_t{length} : int64_t{length};
    newLines = static_cast<uint32_t>(Scan::CountLineFeeds(changed, length));
    return CaptureViews();
}

bool TextEdit::CaptureViews() {
    ViewState* viewState = &views;
    for (const ViewNode* node = document->FirstView(); node; node = node->next) {
        if (viewState->view) {
            viewState->next = new ViewState;
            viewState = viewState->next;
            if (!viewState) return false;
        }
        CaptureView(*viewState, node->view);
    }
    return true;
}

void TextEdit::CaptureView(ViewState& viewState, DocumentView* view) const {
    const uint64_t end = uint64_t{position} + count;
    viewState.view = view;
    viewState.anchorBefore = viewState.anchorAfter = view->SelectionAnchor();
    viewState.caretBefore = viewState.caretAfter = view->CaretOffset();
    viewState.topLineBefore = viewState.topLineAfter = view->TopLine();

    // The caret is compared with the end of the change, the anchor with its start: see docs/oddities.md.
    const bool before = viewState.anchorBefore < position && viewState.caretBefore < end;
    if (!before && viewState.anchorBefore >= end && viewState.caretBefore >= end) {
        viewState.anchorAfter = isDelete ? viewState.anchorBefore - count : viewState.anchorBefore + count;
        viewState.caretAfter = isDelete ? viewState.caretBefore - count : viewState.caretBefore + count;
    } else if (!before) {
        viewState.anchorAfter = viewState.caretAfter = isDelete ? position : static_cast<uint32_t>(end);
    }

    const uint32_t topStart = document->LineToOffset(viewState.topLineBefore);
    if (topStart < position) return;
    if (topStart < end) {
        uint32_t lineStart = 0;
        viewState.topLineAfter = document->OffsetToLine(position, lineStart);
    } else if (!isDelete) {
        viewState.topLineAfter += newLines;
    } else {
        viewState.topLineAfter -= newLines < viewState.topLineAfter ? newLines : viewState.topLineAfter;
    }
}

bool TextEdit::Undo() { return ChangeStore(!isDelete); }

bool TextEdit::Redo() { return ChangeStore(isDelete); }

bool TextEdit::ChangeStore(bool remove) {
    TextParts& parts = document->Parts();
    if (remove) {
        parts.store.Delete(position, count, newLines);
    } else if (!parts.store.Insert(position, text.Text(), count, newLines)) {
        return false;
    }
    uint32_t lineStart = 0;
    const uint32_t line = document->OffsetToLine(position, lineStart);
    change =
        remove ? TextChange{position, count, 0, line, newLines, 0} : TextChange{position, 0, count, line, 0, newLines};
    if (newLines == 0) return true;
    if (!remove) {
        parts.marks.LinesInserted(line, newLines);
    } else if (isDelete) {
        parts.marks.LinesDeleted(line, newLines);
    } else {
        parts.marks.LinesTakenBack(line, newLines);
    }
    return true;
}

void TextEdit::MoveViews(bool undone) {
    const uint32_t caret = isDelete ? position : position + count;
    for (const ViewState* viewState = &views; viewState; viewState = viewState->next) {
        if (!document->HasView(viewState->view)) continue;
        viewState->view->PlaceTopLine(undone ? viewState->topLineBefore : viewState->topLineAfter);
        viewState->view->PlaceSelection(undone ? viewState->anchorBefore : caret,
                                        undone ? viewState->caretBefore : caret);
    }
    MoveOtherViews();
}

bool TextEdit::Holds(const DocumentView* view) const {
    const ViewState* viewState = &views;
    while (viewState && viewState->view != view) viewState = viewState->next;
    return viewState != nullptr;
}

bool TextEdit::HasOtherViews() const {
    const ViewNode* node = document->FirstView();
    while (node && Holds(node->view)) node = node->next;
    return node != nullptr;
}

void TextEdit::MoveOtherViews() {
    for (const ViewNode* node = document->FirstView(); node; node = node->next) {
        if (!Holds(node->view)) node->view->FollowChange(change);
    }
}

bool InsertEdit::SetUp(uint32_t offset, const Char* inserted, uint32_t length) {
    return SetUpEdit(offset, inserted, length);
}

bool DeleteEdit::SetUp(uint32_t offset, uint32_t length) {
    return SetUpEdit(offset, document->Content() + offset, length);
}
