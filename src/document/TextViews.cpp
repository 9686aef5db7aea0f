// The views of a TextBuffer, and what it tells them.

#include "document/TextBuffer.h"
#include "document/TextChange.h"

#include <algorithm>
#include <utility>

namespace {

TextViewFactory viewFactory = nullptr;

} // namespace

void SetTextViewFactory(TextViewFactory factory) { viewFactory = factory; }

DocumentView* TextBuffer::CreateView(NativeWindow parent) {
    if (!viewFactory) return nullptr;
    return AddView([this, parent] { return viewFactory(*this, parent); });
}

void TextBuffer::ViewAttached(DocumentView* view) {
    activeView = view;
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view->HasFocus()) activeView = node->view;
    }
}

void TextBuffer::ForgetView(DocumentView* view) {
    if (activeView == view) activeView = nullptr;
    DocumentBase::ForgetView(view);
}

void TextBuffer::RepaintAll() {
    InvalidateViews();
    if (activeView) LoadEditLine(activeView->CaretLine());
}

void TextBuffer::RepaintLines(uint32_t first, uint32_t last) {
    InvalidateLines(first, last);
    if (!activeView) return;
    const uint32_t caretLine = activeView->CaretLine();
    if (std::min(first, last) <= caretLine && caretLine <= std::max(first, last)) LoadEditLine(caretLine);
}

void TextBuffer::InvalidateViews() {
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view->HasWindow()) node->view->Invalidate();
    }
}

void TextBuffer::InvalidateLines(uint32_t first, uint32_t last) {
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view->HasWindow()) node->view->InvalidateLines(first, last);
    }
}

void TextBuffer::SetLineCount(uint32_t count) {
    lineCount = count;
    for (const ViewNode* node = views.head; node; node = node->next) node->view->LineCountChanged();
}

void TextBuffer::TellTextChanged(uint32_t offset) {
    for (const ViewNode* node = views.head; node; node = node->next) node->view->TextChanged(offset);
}

void TextBuffer::TellViews(UndoRecord& record, bool undone) {
    if (record.IsMarker()) return;
    auto& edit = static_cast<TextEdit&>(record);
    const Telling guard(*this);
    TellChange(edit.Change());
    edit.MoveViews(undone);
    RepaintChange(edit.Change());
}

void TextBuffer::TellChange(const TextChange& change) {
    edited = true;
    if (!change.inEditLine) {
        TellTextChanged(change.start);
        SetLineCount(lineCount);
    } else if (change.affectsFollowingLines) {
        TellTextChanged(editLineStart);
    }
}

void TextBuffer::RepaintChange(const TextChange& change) {
    if (change.inEditLine && !change.affectsFollowingLines) {
        InvalidateLines(change.startLine, change.startLine);
    } else {
        InvalidateViews();
    }
}

// A view that cannot scroll, without a window or with its redraw suspended, would keep a top line that is
// none any more.
void TextBuffer::MoveViewsToStart() {
    const Telling guard(*this);
    edited = operations != 0;
    TellTextChanged(0);
    SetLineCount(lineCount);
    for (const ViewNode* node = views.head; node; node = node->next) {
        node->view->PlaceCaret(0, 0);
        node->view->PlaceTopLine(0);
    }
}

// The one place where the edit line comes back after an edit. A line that is being typed in stays open.
void TextBuffer::FinishOperation() {
    if (!std::exchange(edited, false)) return;
    if (activeView && editLineNo == None32) LoadEditLine(activeView->CaretLine());
    for (const ViewNode* node = views.head; node; node = node->next) node->view->EditFinished();
}

void TextBuffer::ToggleBookmark(uint32_t line) {
    if (marks.ToggleBookmark(line)) RepaintLines(line, line);
}

void TextBuffer::ClearBookmarks() {
    marks.ClearBookmarks();
    RepaintAll();
}
