#pragma once

#include "base/Types.h"

class TextBuffer;

// Calls PollOutput on the documents that commands run into; made by whoever has a message loop.
class PollTimer {
public:
    // From now on every `milliseconds`, which replaces what was set for the document before. False leaves
    // it as it was.
    [[nodiscard]] virtual bool Set(TextBuffer& document, uint32_t milliseconds) = 0;
    virtual void Stop(TextBuffer& document) = 0;

protected:
    ~PollTimer() = default;
};
