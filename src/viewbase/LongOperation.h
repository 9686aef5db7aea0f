#pragma once

#include "document/SearchProgress.h"

class EditorSurface;
class ViewHost;

// A search or replacement that may take long, of which the frame knows while it lives. After half a second it shows the
// wait cursor and how far it has come; from then on Escape cancels it, which `findState` remembers.
class LongOperation final : public SearchProgress {
public:
    explicit LongOperation(EditorSurface& window);
    ~LongOperation();
    LongOperation(const LongOperation&) = delete;
    LongOperation& operator=(const LongOperation&) = delete;

    bool Continue(uint64_t done, uint64_t total) override;

private:
    EditorSurface& surface;
    ViewHost* const host; // null outside a frame
    uint64_t started;
    bool shown = false;
    static constexpr uint32_t NoPercent = UINT32_MAX;
    uint32_t shownPercent = NoPercent;
};
