#pragma once

#include "app/DocumentPrompts.h"

class CommandContext;

// The frame as leaving it needs it.
class LeavingFrame {
public:
    // Beneath an open dialog nothing is closed or reloaded: its caller still works with a document or a view.
    virtual bool HasOpenDialog() const = 0;
    // Closes everything without a question.
    virtual void Leave() = 0;
    // Make the requests below come again, when all messages before them have been handled.
    virtual void PostLeaveNow() = 0;
    virtual void PostCheckFiles() = 0;

protected:
    ~LeavingFrame() = default;
};

// Requests to leave and to look for external changes. Those that ask nothing first wait for the end of an
// open dialog.
class LeaveRequests {
public:
    LeaveRequests(CommandContext& context, LeavingFrame& window) : frame(context), leaving(window) {}
    LeaveRequests(const LeaveRequests&) = delete;
    LeaveRequests& operator=(const LeaveRequests&) = delete;

    // Asks about unsaved documents. False when something is to stay, and while these questions are open.
    [[nodiscard]] bool MayLeave();
    // The user closes the window: leaves if all questions allow it. Ignored beneath a dialog.
    void Close();
    // The session ends, after MayLeave. Beneath a dialog all stays as it is until the process ends.
    void EndSession();
    void LeaveNow();
    void CheckFiles();
    // The last dialog was closed.
    void DialogClosed();

private:
    CommandContext& frame;
    LeavingFrame& leaving;
    ExternalChangePrompt externalChanges;
    bool asking = false;
    bool leavePending = false;
    bool checkPending = false;
};
