#pragma once

#include "base/Assert.h"
#include "document/TextDocumentView.h"

// Tells all views of a text document what has happened to it. While a Telling lives, nothing may edit.
class ViewNotifier {
public:
    explicit ViewNotifier(const TextViews& all) : views(all) {}
    ViewNotifier(const ViewNotifier&) = delete;
    ViewNotifier& operator=(const ViewNotifier&) = delete;

    class Telling {
    public:
        explicit Telling(ViewNotifier& owner) : notifier(owner) {
            ORVANE_ASSERT(!notifier.telling);
            notifier.telling = true;
        }
        ~Telling() { notifier.telling = false; }
        Telling(const Telling&) = delete;
        Telling& operator=(const Telling&) = delete;

    private:
        ViewNotifier& notifier;
    };
    bool IsTelling() const { return telling; }

    void TextEdited(const TextChange& change) const;
    void ForgetAfter(uint32_t offset) const;
    void LineCountChanged() const;
    void MoveToStart() const;
    // The views but `except` (null: all) keep their places in the text.
    void Follow(const TextChange& change, const DocumentView* except) const;
    void EditFinished() const;
    void Invalidate() const;
    void InvalidateLines(LineRange lines) const;
    // Repaints what a change may have altered on the screen.
    void InvalidateChange(const TextChange& change) const;

private:
    TextViews views;
    bool telling = false;
};
