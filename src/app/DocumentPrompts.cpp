#include "app/DocumentPrompts.h"

#include "app/CommandContext.h"
#include "app/DocumentHold.h"
#include "app/DocumentList.h"
#include "base/TextFormat.h"

namespace {

void AskToReopen(CommandContext& frame, Document& document) {
    WString question;
    if (!Text::AppendFormat(question, u"File %ls has been modified by another program.\nWould you like to reopen it?",
                            document.GetName()))
        return;
    const DocumentHold hold(document);
    const Answer answer = frame.AskUser(question.Text(), MessageKind::YesNoCancel);
    if (!frame.Documents().Contains(&document)) return;
    if (answer == Answer::Yes && document.Reload()) return;
    // Kept as it is, also when the file cannot be read any more: this change is not asked about again.
    document.MarkFileTimeNow();
    WString message;
    if (answer == Answer::Yes && Text::AppendFormat(message, u"Failed opening file: %s", document.GetName()))
        frame.AskUser(message.Text(), MessageKind::Warning);
}

} // namespace

bool MayClose(CommandContext& frame, Document& document) {
    if (!document.IsModified()) return true;
    WString question;
    if (!Text::AppendFormat(question, u"Save changes to %ls?", document.GetName())) return false;
    const DocumentHold hold(document);
    const Answer answer = frame.AskUser(question.Text(), MessageKind::YesNoCancel);
    if (!frame.Documents().Contains(&document)) return false;
    return answer == Answer::No || (answer == Answer::Yes && frame.SaveDocument(document));
}

bool MayExit(CommandContext& frame) {
    const DocumentList& documents = frame.Documents();
    for (uint32_t i = 0; Document* const document = documents.At(i); ++i)
        if (!MayClose(frame, *document)) return false;
    return true;
}

void ExternalChangePrompt::Run(CommandContext& frame) {
    if (running) return;
    running = true;
    const DocumentList& documents = frame.Documents();
    for (uint32_t i = 0; Document* const document = documents.At(i); ++i)
        if (document->MayCheckDisk() && document->IsChangedOnDisk()) AskToReopen(frame, *document);
    running = false;
    frame.RefreshTitle();
}
