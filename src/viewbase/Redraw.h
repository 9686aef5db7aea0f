#pragma once

#include "viewbase/EditorSurface.h"
#include "viewbase/ShownRows.h"

// What of a view is painted again. While redraw is suspended that is only noted, as is a caret that should be
// placed.
class Redraw {
public:
    explicit Redraw(EditorSurface& window) : surface(window) {}
    Redraw(const Redraw&) = delete;
    Redraw& operator=(const Redraw&) = delete;

    // Calls nest.
    void Suspend() { ++suspensions; }
    // Invalidates what was noted once the last suspension ends. True when the caret is to be placed then.
    [[nodiscard]] bool Resume();
    bool IsSuspended() const { return suspensions != 0; }

    void InvalidateAll();
    // The rows from one to the other, both included, in either order, as far as they are shown.
    void InvalidateRows(uint64_t first, uint64_t second, const ShownRows& shown);
    // True while redraw is suspended: the caret is to be placed when it is resumed.
    [[nodiscard]] bool DefersCaret();

private:
    EditorSurface& surface;
    uint32_t suspensions = 0;
    bool invalidateLater = false;
    bool placeCaretLater = false;
};
