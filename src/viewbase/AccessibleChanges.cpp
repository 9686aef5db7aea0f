#include "viewbase/AccessibleChanges.h"

AccessibleEvents AccessibleChanges::Take(const AccessibleState& now) {
    AccessibleEvents events;
    events.focus = shown;
    events.name = !shown && now.name != told.name; // that of another document is read with the focus
    events.text = now.edits != told.edits;
    events.value = events.text || now.line != told.line;
    events.selection = shown || now.anchor != told.anchor || now.caret != told.caret;
    Skip(now);
    return events;
}

void AccessibleChanges::Skip(const AccessibleState& now) {
    told = now;
    shown = false;
}
