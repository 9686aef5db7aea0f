#pragma once

#include "viewbase/AccessibleElement.h"

// What a screen reader is told at once. Several changes of a kind are one.
struct AccessibleEvents {
    bool focus = false;     // another document has come under the focus
    bool text = false;      // it was edited
    bool value = false;     // the value is another one
    bool name = false;      // the document is called otherwise
    bool selection = false; // the caret or the selection has moved

    bool operator==(const AccessibleEvents&) const = default;
};

// Remembers what a screen reader has been told of a view, so that it hears of a change once, and of many as of one.
class AccessibleChanges {
public:
    // Another document is shown under the focus. It is told together with what is read of it then.
    void DocumentShown() { shown = true; }
    // What is to be told now, which counts as told.
    AccessibleEvents Take(const AccessibleState& now);
    // As it is now, nothing is to be told.
    void Skip(const AccessibleState& now);

private:
    AccessibleState told;
    bool shown = false;
};
