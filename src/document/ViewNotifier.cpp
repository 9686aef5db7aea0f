#include "document/ViewNotifier.h"

#include "document/TextChange.h"

template <class Tell> void ViewNotifier::TellAll(Tell tell) {
    const Notifying telling(*this);
    for (TextDocumentView* view : views) tell(*view);
}

void ViewNotifier::TextEdited(const TextChange& change) {
    TellAll([&](TextDocumentView& view) { view.TextEdited(change); });
}

void ViewNotifier::ForgetAfter(uint32_t offset) {
    TellAll([offset](TextDocumentView& view) { view.ForgetAfter(offset); });
}

void ViewNotifier::LineCountChanged() {
    TellAll([](TextDocumentView& view) { view.LineCountChanged(); });
}

// The top line last: a view that cannot scroll, without a window or with its redraw suspended, would keep a top line
// past the end of the text.
void ViewNotifier::MoveToStart() {
    TellAll([](TextDocumentView& view) {
        view.PlaceCaret({});
        view.PlaceTopLine(0);
    });
}

void ViewNotifier::Follow(const TextChange& change, const DocumentView* except) {
    TellAll([&](TextDocumentView& view) {
        if (&view != except) view.FollowChange(change);
    });
}

// Not by TellAll: a view that matches its brackets writes back what is typed beside them.
void ViewNotifier::EditFinished() {
    ORVANE_ASSERT(!IsNotifying());
    for (TextDocumentView* view : views) view->EditFinished();
}

void ViewNotifier::Invalidate() {
    TellAll([](TextDocumentView& view) {
        if (view.HasWindow()) view.Invalidate();
    });
}

void ViewNotifier::InvalidateLines(LineRange lines) {
    TellAll([lines](TextDocumentView& view) {
        if (view.HasWindow()) view.InvalidateLines(lines);
    });
}

void ViewNotifier::InvalidateChange(const TextChange& change) {
    if (change.inEditLine && !change.affectsFollowingLines) {
        InvalidateLines({change.startLine, change.startLine});
    } else {
        Invalidate();
    }
}
