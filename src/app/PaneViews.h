#pragma once

#include "app/Pane.h"

class Document;

// The panes as seen by those who show documents in them. PaneWindows implements it; tests use a fake.
// The active pane is the one that has, or last had, the keyboard focus; its view is the active view.
class PaneViews {
public:
    virtual Pane* Active() const = 0; // null without one
    virtual void SetActive(Pane* pane) = 0;
    virtual Pane* First() const = 0;
    // The next pane in order of creation; after the last one comes the first.
    virtual Pane* Next(const Pane& pane) const = 0;
    // Null when no pane shows the view.
    virtual Pane* PaneOf(const View* view) const = 0;
    // Null for a pane without a view.
    virtual Document* DocumentIn(const Pane& pane) const = 0;

    // The first pane, covering everything; null on failure.
    virtual Pane* AddFirst() = 0;
    // Splits `pane`; the new half shows `view`. False on failure and when the halves would have no room for
    // a character; that changes nothing.
    [[nodiscard]] virtual bool Split(Pane& pane, bool vertical, View& view) = 0;
    // Gives a pane's area to its neighbours, of which the first becomes active and gets the focus (the
    // first pane of all when none could take the area). Not for the only pane.
    virtual void Close(Pane& pane) = 0;
    // Releases every view and destroys every pane; no pane is active then.
    virtual void CloseAll() = 0;

    // Shows `view` in the pane, releasing the one that it showed.
    virtual void SetView(Pane& pane, View& view) = 0;
    // Moves the caret of the pane's view to a 0-based line.
    virtual void GoToLine(const Pane& pane, uint32_t line) = 0;
    // Gives the pane the keyboard focus, unless it has it already.
    virtual void Focus(const Pane& pane) = 0;
    virtual void FocusFrame() = 0;

protected:
    ~PaneViews() = default;
};
