#pragma once

#include "base/Assert.h"
#include "base/List.h"
#include "document/DocumentView.h"

// Tells all views of a text document what has happened to it. While a Telling lives, nothing may edit.
class ViewNotifier {
public:
    explicit ViewNotifier(const List<ViewNode>& list) : views(list) {}
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

    void TextChanged(uint32_t offset) const;
    void LineCountChanged() const;
    void MoveToStart() const;
    // The views but `except` (null: all) keep their places in the text.
    void Follow(const TextChange& change, const DocumentView* except) const;
    void EditFinished() const;
    void Invalidate() const;
    void InvalidateLines(uint32_t first, uint32_t last) const;
    // Repaints what a change may have altered on the screen.
    void InvalidateChange(const TextChange& change) const;

private:
    const List<ViewNode>& views;
    bool telling = false;
};
