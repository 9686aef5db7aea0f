#pragma once

#include "base/Assert.h"
#include "document/TextDocumentView.h"

// Tells all views of a text document what has happened to it; TextDocumentView says what each telling means. While a
// Notifying lives, nothing may edit.
class ViewNotifier {
public:
    explicit ViewNotifier(const TextViews& all) : views(all) {}
    ViewNotifier(const ViewNotifier&) = delete;
    ViewNotifier& operator=(const ViewNotifier&) = delete;

    class Notifying {
    public:
        explicit Notifying(ViewNotifier& owner) : notifier(owner) {
            ORVANE_ASSERT(!notifier.notifying);
            notifier.notifying = true;
        }
        ~Notifying() { notifier.notifying = false; }
        Notifying(const Notifying&) = delete;
        Notifying& operator=(const Notifying&) = delete;

    private:
        ViewNotifier& notifier;
    };
    bool IsNotifying() const { return notifying; }

    void TextEdited(const TextChange& change) const;
    void ForgetAfter(uint32_t offset) const;
    void LineCountChanged() const;
    void MoveToStart() const;
    // FollowChange to all views but `except` (null: all).
    void Follow(const TextChange& change, const DocumentView* except) const;
    // Only views with a window are told to repaint.
    void Invalidate() const;
    void InvalidateLines(LineRange lines) const;
    // What a change may have altered on the screen: the edit line, or everything.
    void InvalidateChange(const TextChange& change) const;
    void EditFinished() const;

private:
    TextViews views;
    bool notifying = false;
};
