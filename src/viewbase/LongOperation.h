#pragma once

#include "document/SearchProgress.h"

class EditorSurface;

// A search or replacement that may take long. After half a second it shows the wait cursor and how far
// it has come; from then on Escape cancels it, which `findState` remembers.
class LongOperation final : public SearchProgress {
public:
    explicit LongOperation(EditorSurface& window);
    ~LongOperation();
    LongOperation(const LongOperation&) = delete;
    LongOperation& operator=(const LongOperation&) = delete;

    // Whether one is on the stack: what it works with must not go away.
    static bool IsRunning() { return running > 0; }

    bool Continue(uint64_t done, uint64_t total) override;

private:
    // Process-wide: the frame asks before it is left, and does not know which editor is searching.
    static inline uint32_t running = 0;

    EditorSurface& surface;
    uint64_t started;
    bool shown = false;
    static constexpr uint32_t NoPercent = UINT32_MAX;
    uint32_t shownPercent = NoPercent;
};
