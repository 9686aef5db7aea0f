#pragma once

#include "base/Types.h"

class TextBuffer;

// What has PollOutput called on the documents that commands run into; made by whoever has a message loop.
struct PollTimer {
    // From now on every `milliseconds`, which replaces what was set for the document before. False leaves
    // it as it was.
    bool (*set)(TextBuffer& document, uint32_t milliseconds);
    void (*stop)(TextBuffer& document);
};
