// The views of a TextBuffer, and what it tells them.

#include "document/TextBuffer.h"
#include "document/TextChange.h"

#include <algorithm>

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
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view->HasWindow()) node->view->Invalidate();
    }
    if (activeView) LoadEditLine(activeView->CaretLine());
}

void TextBuffer::RepaintLines(uint32_t first, uint32_t last) {
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view->HasWindow()) node->view->InvalidateLines(first, last);
    }
    if (!activeView) return;
    const uint32_t caretLine = activeView->CaretLine();
    if (std::min(first, last) <= caretLine && caretLine <= std::max(first, last)) LoadEditLine(caretLine);
}

void TextBuffer::TellTextChanged(uint32_t offset) {
    lastLineStart = None32;
    for (const ViewNode* node = views.head; node; node = node->next) node->view->TextChanged(offset);
}

void TextBuffer::TellEditLineChanged(uint32_t column, uint32_t removed, uint32_t inserted, const DocumentView* except) {
    const TextChange change = {editLineStart + column, removed, inserted, editLineNo, 0, 0};
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view != except) node->view->FollowChange(change);
    }
}

// A view that cannot scroll, without a window or with its redraw suspended, would keep a top line that is
// none any more.
void TextBuffer::MoveViewsToStart() {
    for (const ViewNode* node = views.head; node; node = node->next) {
        node->view->MoveCaret(0, 0);
        node->view->SetTopLine(0);
    }
}

void TextBuffer::SetLineCount(uint32_t count) {
    lineCount = count;
    for (const ViewNode* node = views.head; node; node = node->next) node->view->LineCountChanged();
}

void TextBuffer::ToggleBookmark(uint32_t line) {
    if (marks.ToggleBookmark(line)) RepaintLines(line, line);
}

void TextBuffer::ClearBookmarks() {
    marks.ClearBookmarks();
    RepaintAll();
}
