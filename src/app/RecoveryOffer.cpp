#include "app/RecoveryOffer.h"

#include "app/DocumentList.h"
#include "app/DocumentOpener.h"
#include "app/LeftJournals.h"
#include "app/UserPrompt.h"
#include "base/Path.h"
#include "base/SaveRecovery.h"
#include "base/Text.h"
#include "base/TextFormat.h"
#include "document/Document.h"
#include "document/TextRecovery.h"

#include <iterator>

namespace {

constexpr Char TitleEnd[] = u" (recovered)";

// A text that was recovered before, and never saved, keeps its title.
bool MakeTitle(const LeftJournals::Entry& entry, WString& title) {
    constexpr uint32_t EndLength = std::size(TitleEnd) - 1; // without the terminator
    const uint32_t length = entry.name.Length();
    const bool hasEnd = length >= EndLength && Text::Equal(entry.name.Text() + length - EndLength, TitleEnd);
    const Char* const name = entry.hasFile ? Path::FileName(entry.name.Text()) : entry.name.Text();
    return title.Assign(name) && ((!entry.hasFile && hasEnd) || title.Append(TitleEnd));
}

// `opened` becomes its document when there is one.
RecoveryResult OpenText(DocumentOpener& opener, const LeftJournals::Entry& entry, JournalReader& journal,
                        Document*& opened) {
    DecodedText text;
    WString title;
    const RecoveryResult result = RecoverText(journal, text);
    if (result != RecoveryResult::Whole && result != RecoveryResult::Cut) return result;
    opened = MakeTitle(entry, title) ? opener.OpenRecovered(text, title.Text()) : nullptr;
    return opened ? result : RecoveryResult::Failed;
}

RecoveryResult Open(DocumentOpener& opener, LeftJournals::Entry& entry) {
    JournalReader journal(entry.file);
    Document* opened = nullptr;
    if (journal.ReadHeader() != JournalReader::State::Readable) return RecoveryResult::Failed;
    const RecoveryResult result =
        entry.isOfBytes ? opener.OpenRecoveredBytes(journal, opened) : OpenText(opener, entry, journal, opened);
    // Not before what it holds is in the journal of the new document.
    if (opened && opened->FlushJournal()) LeftJournals::Remove(entry);
    return result;
}

// Nothing for a whole one, and without memory: what was not opened is still there, and offered again.
void AppendResult(WString& out, const LeftJournals::Entry& entry, RecoveryResult result) {
    const Char* format = u"";
    switch (result) {
    case RecoveryResult::Whole:
        return;
    case RecoveryResult::Cut:
        format = u"%sThe journal of %s is damaged: the last changes in it are missing.";
        break;
    case RecoveryResult::FileChanged:
        format = u"%s%s has changed since it was edited. The changes stay in %s; delete it if you do not "
                 u"need them.";
        break;
    case RecoveryResult::FileUnreadable:
        format = u"%s%s cannot be read. Its changes stay in %s and are offered again at the next start.";
        break;
    case RecoveryResult::Failed:
        format = u"%sThe changes of %s cannot be read. They stay in %s; delete it if you do not need them.";
        break;
    }
    (void)Text::AppendFormat(out, format, out.IsEmpty() ? u"" : u"\n", entry.name.Text(), entry.path.Text());
}

void OpenAll(UserPrompt& user, DocumentOpener& opener, const LeftJournals& journals) {
    WString message;
    for (LeftJournals::Entry* entry = journals.First(); entry; entry = entry->next)
        AppendResult(message, *entry, Open(opener, *entry));
    if (!message.IsEmpty()) user.AskUser(message.Text(), MessageKind::Warning);
}

bool AppendQuestion(WString& out, const LeftJournals& journals) {
    if (!out.IsEmpty() && !out.Append(u"\n\n")) return false;
    if (!out.Append(u"Changes were not saved when Orvane ended:\n")) return false;
    for (const LeftJournals::Entry* entry = journals.First(); entry; entry = entry->next)
        if (!Text::AppendFormat(out, u"%s\n", entry->name.Text())) return false;
    return out.Append(u"Open them now? With No they are offered again at the next start.");
}

} // namespace

void OfferRecovery(RecoveryFolder& folder, UserPrompt& user, DocumentOpener& opener) {
    SaveRecovery saves;
    LeftJournals journals;
    saves.Look(folder);
    journals.Look(folder);
    WString message;
    const bool isQuestion = journals.First() != nullptr;
    // What cannot be told now is found again at the next start.
    if ((saves.IsEmpty() && !isQuestion) || !saves.AppendMessage(message)) return;
    if (isQuestion && !AppendQuestion(message, journals)) return;
    const Answer answer = user.AskUser(message.Text(), isQuestion ? MessageKind::YesNo : MessageKind::Warning);
    if (answer == Answer::Cancel) return; // neither box has it as a button: none could be shown
    saves.Forget();
    if (answer == Answer::Yes) OpenAll(user, opener, journals);
}

bool FlushJournals(const DocumentList& documents) {
    bool isModified = false;
    for (const DocumentList::Node* node = documents.Head(); node; node = node->next) {
        static_cast<void>(node->document->FlushJournal()); // one that failed is tried again the next time
        isModified = isModified || node->document->IsModified();
    }
    return isModified;
}
