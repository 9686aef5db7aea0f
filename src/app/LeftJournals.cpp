#include "app/LeftJournals.h"

#include "base/RecoveryFile.h"
#include "binary/ByteJournal.h"

namespace {

// Reads up to the end of the first change, and of those written together with it, without which there is nothing to
// open.
JournalReader::State StateOf(JournalReader& journal) {
    const JournalReader::State state = journal.ReadHeader();
    const JournalSubject::Kind kind = journal.Subject().kind;
    if (state != JournalReader::State::Readable) return state;
    if (kind != JournalSubject::Kind::Text && kind != JournalSubject::Kind::Bytes) return JournalReader::State::Damaged;
    JournalChange change;
    while (journal.Next(change) && journal.Pass())
        if (kind != JournalSubject::Kind::Bytes || !ByteJournal::HasMore(change)) return JournalReader::State::Readable;
    return journal.HasFailed() ? JournalReader::State::Unknown : JournalReader::State::Damaged;
}

} // namespace

LeftJournals::~LeftJournals() {
    while (Entry* const entry = found.TakeHead()) delete entry;
}

void LeftJournals::Look(RecoveryFolder& folder) {
    List<RecoveryFileName> names;
    ListRecoveryFiles(folder, JournalFolder, JournalExtension, names);
    while (RecoveryFileName* const name = names.TakeHead()) {
        LookAt(name->path.Text());
        delete name;
    }
}

void LeftJournals::LookAt(const Char* path) {
    auto* const entry = new Entry;
    if (!entry || !entry->path.Assign(path) || !entry->file.Open(path, Platform::File::Mode::Alone)) {
        delete entry;
        return;
    }
    JournalReader journal(entry->file);
    const JournalReader::State state = StateOf(journal);
    entry->isOfBytes = journal.Subject().kind == JournalSubject::Kind::Bytes;
    entry->hasFile = journal.Subject().hasFile != 0;
    if (state == JournalReader::State::Readable && entry->name.Assign(journal.Name())) {
        found.Append(entry);
        return;
    }
    if (state == JournalReader::State::Damaged) Remove(*entry);
    delete entry;
}

void LeftJournals::Remove(Entry& entry) {
    entry.file.Close();
    static_cast<void>(Platform::RemoveFile(entry.path.Text())); // one that stays is found again at the next start
}
