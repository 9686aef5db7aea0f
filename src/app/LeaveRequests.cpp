#include "app/LeaveRequests.h"

#include "app/CommandContext.h"
#include "app/DocumentList.h"
#include "document/Document.h"

namespace {

bool HasUnsaved(const DocumentList& documents) {
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next)
        if (node->document->IsModified()) return true;
    return false;
}

} // namespace

// False when something is to stay, and while these questions are open.
bool LeaveRequests::MayLeave() {
    // A second request that comes while the questions of the first are open waits for their answers.
    if (asking) return false;
    asking = true;
    const bool may = MayExit(frame);
    asking = false;
    return may;
}

// Null when there is none.
const Char* LeaveRequests::ObstacleToLeaving() const {
    if (leaving.IsInLongOperation()) return u"A search or a replacement is running.";
    return HasUnsaved(frame.Documents()) ? u"There are documents with unsaved changes." : nullptr;
}

// What is posted comes when a long operation has ended: until then posted messages are not fetched.
void LeaveRequests::Close() {
    if (leaving.HasOpenDialog()) return;
    if (leaving.IsInLongOperation())
        frame.PostClose();
    else if (MayLeave())
        leaving.Leave();
}

bool LeaveRequests::QueryEndSession() {
    const Char* const obstacle = ObstacleToLeaving();
    if (!obstacle) {
        TakeReasonBack();
        return true;
    }
    hasReason = true;
    leaving.SetShutdownReason(obstacle);
    return false;
}

void LeaveRequests::EndSession(bool ends) {
    if (!ends) return UserIsBack();
    leaving.KeepUnsaved();
    if (!leaving.HasOpenDialog() && !leaving.IsInLongOperation()) leaving.Leave();
}

void LeaveRequests::UserIsBack() {
    if (TakeReasonBack()) leaving.PostAskUnsaved();
}

bool LeaveRequests::TakeReasonBack() {
    if (!hasReason) return false;
    hasReason = false;
    leaving.SetShutdownReason(nullptr);
    return true;
}

void LeaveRequests::AskUnsaved() {
    if (leaving.HasOpenDialog())
        askPending = !asking; // the open questions may be these
    else if (leaving.IsInLongOperation())
        leaving.PostAskUnsaved();
    else if (HasUnsaved(frame.Documents()))
        Close();
}

void LeaveRequests::LeaveNow() {
    if (leaving.HasOpenDialog())
        leavePending = true;
    else if (leaving.IsInLongOperation())
        leaving.PostLeaveNow();
    else
        leaving.Leave();
}

void LeaveRequests::CheckFiles() {
    if (leaving.HasOpenDialog())
        checkPending = true;
    else if (leaving.IsInLongOperation())
        leaving.PostCheckFiles();
    else
        externalChanges.Run(frame);
}

void LeaveRequests::DialogClosed() {
    if (checkPending) leaving.PostCheckFiles();
    if (leavePending) leaving.PostLeaveNow();
    if (askPending) leaving.PostAskUnsaved();
    checkPending = leavePending = askPending = false;
}
