#include "app/LeaveRequests.h"

#include "app/CommandContext.h"

bool LeaveRequests::MayLeave() {
    // A second request that comes while the questions of the first are open waits for their answers.
    if (asking) return false;
    asking = true;
    const bool may = MayExit(frame);
    asking = false;
    return may;
}

void LeaveRequests::Close() {
    if (!leaving.HasOpenDialog() && MayLeave()) leaving.Leave();
}

void LeaveRequests::EndSession() {
    if (!leaving.HasOpenDialog()) leaving.Leave();
}

void LeaveRequests::LeaveNow() {
    if (leaving.HasOpenDialog())
        leavePending = true;
    else
        leaving.Leave();
}

void LeaveRequests::CheckFiles() {
    if (leaving.HasOpenDialog())
        checkPending = true;
    else
        externalChanges.Run(frame);
}

void LeaveRequests::DialogClosed() {
    if (checkPending) leaving.PostCheckFiles();
    if (leavePending) leaving.PostLeaveNow();
    checkPending = leavePending = false;
}
