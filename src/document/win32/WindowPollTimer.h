#pragma once

#include "base/Array.h"
#include "base/win32/Windows.h"
#include "document/PollTimer.h"

// The poll timer of a window, whose procedure hands its ticks over. Runs have to end before the window goes.
class WindowPollTimer final : public PollTimer {
public:
    WindowPollTimer() = default;
    WindowPollTimer(const WindowPollTimer&) = delete;
    WindowPollTimer& operator=(const WindowPollTimer&) = delete;

    // Without a window no timer can be set.
    void SetWindow(HWND window) { owner = window; }
    bool Set(TextBuffer& document, uint32_t milliseconds) override;
    void Stop(TextBuffer& document) override;
    // WM_TIMER came with that number. Nothing happens when it is none of the timers that are set.
    void Tick(UINT_PTR number);

private:
    size_t IndexOf(UINT_PTR number) const;

    HWND owner = nullptr;
    // Those whose timers are set. A tick that was queued before its timer was stopped still comes, when the document
    // may be gone.
    Array<TextBuffer*> documents;
};
