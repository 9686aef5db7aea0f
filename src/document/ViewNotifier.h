#pragma once

#include "base/Assert.h"
#include "document/TextDocumentView.h"

// Tells all views of a text document what has happened to it; TextDocumentView says what each notification means.
// Nothing may edit while one of them is told, but for EditFinished.
class ViewNotifier {
public:
    explicit ViewNotifier(const TextViews& all) : views(all) {}
    ViewNotifier(const ViewNotifier&) = delete;
    ViewNotifier& operator=(const ViewNotifier&) = delete;

    // While one lives, nothing may edit either: for several of the operations below, and what is told in between to
    // single views. They nest.
    class Notifying {
    public:
        explicit Notifying(ViewNotifier& owner) : notifier(owner) { ++notifier.notifying; }
        ~Notifying() { --notifier.notifying; }
        Notifying(const Notifying&) = delete;
        Notifying& operator=(const Notifying&) = delete;

    private:
        ViewNotifier& notifier;
    };
    bool IsNotifying() const { return notifying != 0; }

    void TextEdited(const TextChange& change);
    void ForgetAfter(uint32_t offset);
    void LineCountChanged();
    void MoveToStart();
    // FollowChange to all views but `except` (null: all).
    void Follow(const TextChange& change, const DocumentView* except);
    // Only views with a window are told to repaint.
    void Invalidate();
    void InvalidateLines(LineRange lines);
    // What a change may have altered on the screen: the edit line, or everything.
    void InvalidateChange(const TextChange& change);
    void EditFinished();

private:
    template <class Tell> void TellAll(Tell tell);

    TextViews views;
    uint32_t notifying = 0; // how many Notifying live
};
