#pragma once

#include "base/Types.h"

// What is selected in a view, by offsets: from the anchor to the caret, whichever comes first.
struct EditorSelection {
    uint64_t anchor = 0;
    uint64_t caret = 0;

    bool IsEmpty() const { return anchor == caret; }
    uint64_t Start() const { return anchor < caret ? anchor : caret; }
    uint64_t End() const { return anchor < caret ? caret : anchor; }
};
