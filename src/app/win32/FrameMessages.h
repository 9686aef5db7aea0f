#pragma once

#include "app/UserPrompt.h"
#include "base/win32/Windows.h"

class ScreenBatch;

// Message boxes, all with the caption "Orvane".
class FrameMessages final : public UserPrompt {
public:
    explicit FrameMessages(ScreenBatch& batch) : screen(batch) {}
    void SetFrame(HWND window) { frame = window; }

    // Without an owner the active window waits for the answer.
    Answer Show(HWND owner, const Char* text, MessageKind kind);
    // UserPrompt.
    Answer AskUser(const Char* text, MessageKind kind) override { return Show(nullptr, text, kind); }

private:
    ScreenBatch& screen;
    HWND frame = nullptr;
};
