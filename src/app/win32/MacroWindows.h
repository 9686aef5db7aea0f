#pragma once

#include "app/MacroPlayer.h"
#include "base/win32/Windows.h"

class DocumentList;
class FrameKeys;
class PaneWindows;

// The windows and the keyboard that a macro plays on.
class MacroWindows final : public MacroStage {
public:
    MacroWindows(const DocumentList& allDocuments, PaneWindows& allPanes, FrameKeys& frameKeys)
        : documents(allDocuments), panes(allPanes), keys(frameKeys) {}
    MacroWindows(const MacroWindows&) = delete;
    MacroWindows& operator=(const MacroWindows&) = delete;

    void SetFrame(HWND window) { frame = window; }

    // MacroStage.
    void SuspendRedraw() override;
    void ResumeRedraw() override;
    uint32_t HeldModifiers() const override;
    uint32_t PhysicalModifiers() const override;
    void SetModifiers(uint32_t modifiers) override;
    bool TakeEscape() override;
    void Send(const MacroEvent& event) override;
    void JoinSteps(uint32_t after) override;

private:
    const DocumentList& documents;
    PaneWindows& panes;
    FrameKeys& keys;
    HWND frame = nullptr;
};
