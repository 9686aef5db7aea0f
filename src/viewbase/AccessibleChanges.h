#pragma once

#include "viewbase/AccessibleElement.h"

// The events to raise together; several changes of one kind are one event.
struct AccessibleEvents {
    bool focus = false;     // another document has come under the focus
    bool text = false;      // it was edited
    bool value = false;     // the value has changed
    bool name = false;      // the document's name has changed
    bool selection = false; // the caret or the selection has moved

    bool operator==(const AccessibleEvents&) const = default;
};

// Remembers what a screen reader has been told of a view, so that it hears of a change once, and of many as of one.
class AccessibleChanges {
public:
    // The focused window now shows another document, which is reported as a change of focus.
    void DocumentShown() { shown = true; }
    // The events that are due; marks them as raised.
    AccessibleEvents Take(const AccessibleState& now);
    // Takes `now` as known, without an event.
    void Skip(const AccessibleState& now);

private:
    AccessibleState told;
    bool shown = false;
};
