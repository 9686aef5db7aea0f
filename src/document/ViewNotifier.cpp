#include "document/ViewNotifier.h"

#include "document/TextChange.h"

void ViewNotifier::TextEdited(const TextChange& change) const {
    for (TextDocumentView* view : views) view->TextEdited(change);
}

void ViewNotifier::ForgetAfter(uint32_t offset) const {
    for (TextDocumentView* view : views) view->ForgetAfter(offset);
}

void ViewNotifier::LineCountChanged() const {
    for (TextDocumentView* view : views) view->LineCountChanged();
}

// A view that cannot scroll, without a window or with its redraw suspended, would keep a top line past
// the end of the text.
void ViewNotifier::MoveToStart() const {
    for (TextDocumentView* view : views) {
        view->PlaceCaret({});
        view->PlaceTopLine(0);
    }
}

void ViewNotifier::Follow(const TextChange& change, const DocumentView* except) const {
    for (TextDocumentView* view : views) {
        if (view != except) view->FollowChange(change);
    }
}

void ViewNotifier::EditFinished() const {
    for (TextDocumentView* view : views) view->EditFinished();
}

void ViewNotifier::Invalidate() const {
    for (TextDocumentView* view : views) {
        if (view->HasWindow()) view->Invalidate();
    }
}

void ViewNotifier::InvalidateLines(LineRange lines) const {
    for (TextDocumentView* view : views) {
        if (view->HasWindow()) view->InvalidateLines(lines);
    }
}

void ViewNotifier::InvalidateChange(const TextChange& change) const {
    if (change.inEditLine && !change.affectsFollowingLines) {
        InvalidateLines({change.startLine, change.startLine});
    } else {
        Invalidate();
    }
}
