#pragma once

#include "document/PollTimer.h"

// Nothing is polled but by the test.
class IdlePollTimer final : public PollTimer {
public:
    bool Set(TextBuffer&, uint32_t) override { return true; }
    void Stop(TextBuffer&) override {}
};
