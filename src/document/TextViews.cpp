// The views of a TextBuffer, and what it tells them.

#include "document/TextBuffer.h"

#include <algorithm>

namespace {

TextViewFactory viewFactory = nullptr;

} // namespace

void SetTextViewFactory(TextViewFactory factory) { viewFactory = factory; }

DocumentView* TextBuffer::CreateView(NativeWindow parent) {
    auto* node = viewFactory ? new ViewNode : nullptr;
    if (!node) return nullptr;
    node->view = viewFactory(*this, parent);
    if (!node->view) {
        delete node;
        return nullptr;
    }
    views.Append(node);
    return node->view;
}

DocumentView* TextBuffer::EnumViews(ViewNode* cursor, ViewNode*& next) const {
    const ViewNode* node = cursor ? cursor : views.head;
    next = node ? node->next : nullptr;
    return node ? node->view : nullptr;
}

bool TextBuffer::HasView(const DocumentView* view) const {
    const ViewNode* node = views.head;
    while (node && node->view != view) node = node->next;
    return node != nullptr;
}

void TextBuffer::ForgetView(DocumentView* view) {
    if (activeView == view) activeView = nullptr;
    ViewNode* node = views.head;
    while (node && node->view != view) node = node->next;
    if (!node) return;
    views.Remove(node);
    delete node;
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

void TextBuffer::SetLineCount(uint32_t count) {
    lineCount = count;
    for (const ViewNode* node = views.head; node; node = node->next) node->view->LineCountChanged();
}

void TextBuffer::NotifyModified() {
    if (views.head) views.head->view->DocumentChanged(this);
}

void TextBuffer::ToggleBookmark(uint32_t line) {
    if (marks.ToggleBookmark(line)) RepaintLines(line, line);
}

void TextBuffer::ClearBookmarks() {
    marks.ClearBookmarks();
    RepaintAll();
}
