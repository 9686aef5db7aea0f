#pragma once

#include "app/DocumentPrompts.h"
#include "base/Types.h"

class CommandContext;

// The frame as leaving it needs it.
class LeavingFrame {
public:
    // While a dialog is open nothing is closed or reloaded: its caller still works with a document or a view.
    virtual bool HasOpenDialog() const = 0;
    // Nor during a long operation, when only sent messages arrive.
    virtual bool IsInLongOperation() const = 0;
    // Closes everything without a question.
    virtual void Leave() = 0;
    // What is modified is to be offered at the next start.
    virtual void KeepUnsaved() = 0;
    // Make the requests below come again, when all messages before them have been handled.
    virtual void PostLeaveNow() = 0;
    virtual void PostCheckFiles() = 0;
    virtual void PostAskUnsaved() = 0;
    // What the system tells whoever signs out; null: nothing is in the way any more.
    virtual void SetShutdownReason(const Char* reason) = 0;

protected:
    ~LeavingFrame() = default;
};

// Requests to leave and to look for external changes. While a dialog is open or a long operation runs they wait:
// what has to be done then is done later.
class LeaveRequests {
public:
    LeaveRequests(CommandContext& context, LeavingFrame& window) : frame(context), leaving(window) {}
    LeaveRequests(const LeaveRequests&) = delete;
    LeaveRequests& operator=(const LeaveRequests&) = delete;

    // The user closes the window: leaves if the questions about unsaved documents allow it. Ignored while a dialog is
    // open.
    void Close();
    // Whether the session may end. Asks the user nothing, since the system waits for the answer: what is in the way
    // becomes the reason that the system shows, and an earlier reason goes when nothing is.
    [[nodiscard]] bool QueryEndSession();
    // The session ends: leaves without a question, but not while a dialog is open or a long operation runs, when
    // all stays as it is until the process ends. Or it does not, and the user is back.
    void EndSession(bool ends);
    // The user is back after a shutdown that was refused: asks about unsaved documents.
    void UserIsBack();
    // The questions about unsaved documents, if there are any; leaves when they allow it.
    void AskUnsaved();
    void LeaveNow();
    void CheckFiles();
    // The last dialog was closed.
    void DialogClosed();

private:
    [[nodiscard]] bool MayLeave();
    const Char* ObstacleToLeaving() const;
    // False when the system knows no reason.
    bool TakeReasonBack();

    CommandContext& frame;
    LeavingFrame& leaving;
    ExternalChangePrompt externalChanges;
    bool asking = false;
    bool leavePending = false;
    bool checkPending = false;
    bool askPending = false;
    bool hasReason = false; // the system knows one
};
