#include "document/ViewNotifier.h"

#include "document/TextChange.h"

void ViewNotifier::TextChanged(uint32_t offset) const {
    for (const ViewNode* node = views.head; node; node = node->next) node->view->TextChanged(offset);
}

void ViewNotifier::LineCountChanged() const {
    for (const ViewNode* node = views.head; node; node = node->next) node->view->LineCountChanged();
}

// A view that cannot scroll, without a window or with its redraw suspended, would keep a top line past
// the end of the text.
void ViewNotifier::MoveToStart() const {
    for (const ViewNode* node = views.head; node; node = node->next) {
        node->view->PlaceCaret(0, 0);
        node->view->PlaceTopLine(0);
    }
}

void ViewNotifier::Follow(const TextChange& change, const DocumentView* except) const {
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view != except) node->view->FollowChange(change);
    }
}

void ViewNotifier::EditFinished() const {
    for (const ViewNode* node = views.head; node; node = node->next) node->view->EditFinished();
}

void ViewNotifier::Invalidate() const {
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view->HasWindow()) node->view->Invalidate();
    }
}

void ViewNotifier::InvalidateLines(uint32_t first, uint32_t last) const {
    for (const ViewNode* node = views.head; node; node = node->next) {
        if (node->view->HasWindow()) node->view->InvalidateLines(first, last);
    }
}

void ViewNotifier::InvalidateChange(const TextChange& change) const {
    if (change.inEditLine && !change.affectsFollowingLines) {
        InvalidateLines(change.startLine, change.startLine);
    } else {
        Invalidate();
    }
}
