#pragma once

#include "app/DocumentList.h"
#include "document/Document.h"
#include "viewbase/win32/View.h"

// Calls `action` with every view of every document.
template <class Action> void ForEachView(const DocumentList& documents, Action action) {
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next) {
        ViewNode* next = nullptr;
        do {
            DocumentView* const view = node->document->EnumViews(next, next);
            if (view) action(*view->AsView());
        } while (next);
    }
}
