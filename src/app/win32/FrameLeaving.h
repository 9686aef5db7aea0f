#pragma once

#include "app/LeaveRequests.h"
#include "base/win32/Handles.h"

struct FrameParts;

// The frame as leaving it needs it: its parts and its window.
class FrameLeaving final : public LeavingFrame {
public:
    explicit FrameLeaving(FrameParts& allParts) : parts(allParts) {}
    FrameLeaving(const FrameLeaving&) = delete;
    FrameLeaving& operator=(const FrameLeaving&) = delete;

    bool HasOpenDialog() const override;
    bool IsInLongOperation() const override;
    void Leave() override;
    void KeepUnsaved() override;
    void PostLeaveNow() override;
    void PostCheckFiles() override;
    void PostAskUnsaved() override;
    void SetShutdownReason(const Char* reason) override;

private:
    FrameParts& parts;
    ShutdownReason shutdownReason;
};
