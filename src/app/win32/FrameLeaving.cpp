#include "app/win32/FrameLeaving.h"

#include "app/RecoveryOffer.h"
#include "app/win32/FrameParts.h"
#include "app/win32/FrameRequests.h"

bool FrameLeaving::HasOpenDialog() const { return !IsWindowEnabled(parts.window); }

bool FrameLeaving::IsInLongOperation() const { return parts.longOperations > 0; }

// From here on nothing asks any more: documents and panes go before the window does.
void FrameLeaving::Leave() {
    parts.macros.StopPlayback();
    parts.closer.CloseAll();
    DestroyWindow(parts.window);
}

void FrameLeaving::KeepUnsaved() {
    parts.recovery.journals.Hurry();
    static_cast<void>(FlushJournals(parts.documents));
    parts.recovery.journals.Leave();
}

void FrameLeaving::PostLeaveNow() { PostMessageW(parts.window, FrameRequests::QuitNow, 0, 0); }

void FrameLeaving::PostCheckFiles() { PostMessageW(parts.window, FrameRequests::CheckFiles, 0, 0); }

void FrameLeaving::PostAskUnsaved() { PostMessageW(parts.window, FrameRequests::AskUnsaved, 0, 0); }

void FrameLeaving::SetShutdownReason(const Char* reason) { shutdownReason.Set(parts.window, reason); }
