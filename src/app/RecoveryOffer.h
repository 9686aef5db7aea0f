#pragma once

class DocumentList;
class DocumentOpener;
class RecoveryFolder;
class UserPrompt;

// At start, in one question: tells which files an editor that did not come to its end was saving, and where their new
// bytes are; and offers to open the changes that it has left in journals. A journal goes once its document is open and
// has one of its own; what the user does not want to see now is offered again at the next start.
void OfferRecovery(RecoveryFolder& folder, UserPrompt& user, DocumentOpener& opener);

// Brings the journals of all documents up to date. True while there is a modified document.
[[nodiscard]] bool FlushJournals(const DocumentList& documents);
