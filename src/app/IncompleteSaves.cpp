#include "app/IncompleteSaves.h"

#include "app/UserPrompt.h"
#include "base/SaveRecovery.h"

void TellIncompleteSaves(UserPrompt& user) {
    SaveRecovery recovery;
    recovery.Look();
    WString message;
    // What cannot be told now is found again at the next start.
    if (recovery.IsEmpty() || !recovery.AppendMessage(message)) return;
    user.AskUser(message.Text(), MessageKind::Warning);
    recovery.Forget();
}
