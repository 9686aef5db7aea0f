#include "document/Document.h"

#include "base/Platform.h"

#include <utility>

bool DocumentBase::SetPath(const Char* name) {
    WString full;
    if (!Platform::FullPath(name, full)) return false;
    path = std::move(full);
    return true;
}

DocumentView* DocumentBase::EnumViews(ViewNode* cursor, ViewNode*& next) const {
    const ViewNode* node = cursor ? cursor : views.head;
    next = node ? node->next : nullptr;
    return node ? node->view : nullptr;
}

ViewNode* DocumentBase::FindView(const DocumentView* view) const {
    ViewNode* node = views.head;
    while (node && node->view != view) node = node->next;
    return node;
}

void DocumentBase::ForgetView(DocumentView* view) {
    ViewNode* node = FindView(view);
    if (!node) return;
    views.Remove(node);
    delete node;
}

void DocumentBase::DestroyViews() {
    while (ViewNode* node = views.head) {
        DocumentView* view = node->view;
        ForgetView(view); // first: a view on its way out is asked nothing more
        view->Destroy();
    }
}

void DocumentBase::NotifyModified() {
    if (views.head) views.head->view->DocumentChanged(this);
}
