#include "binary/ByteJournal.h"

#include "document/Document.h"

namespace {

// From `page` on the first one that is to be written.
ChangedPage* NextPage(ChangedPage* page, bool all) {
    while (page && !all && page->isInJournal) page = page->next;
    return page;
}

} // namespace

void ByteJournal::SaveBegins() {
    RetryNext();
    // Only after every page, and on the disk: from the mark on they count, whatever the file has.
    if (!Flush() || !Writable()) return;
    JournalFile& journal = *Writable();
    journal.Begin(SaveMark);
    Written(journal.End() && journal.Flush());
}

bool ByteJournal::WriteAll(JournalFile& made) {
    WString name;
    JournalSubject subject;
    subject.kind = JournalSubject::Kind::Bytes;
    subject.hasFile = 1;
    subject.isOverFile = 1;
    subject.fileSize = content.FileSize();
    return name.Assign(Owner().GetName()) && made.Make(Folder(), subject, name) && PutPages(made, true);
}

bool ByteJournal::WriteRest(JournalFile& journal) {
    const bool isWritten = PutPages(journal, false);
    Written(isWritten);
    return isWritten;
}

bool ByteJournal::PutPages(JournalFile& journal, bool all) {
    for (ChangedPage* page = NextPage(content.FirstPage(), all); page;) {
        ChangedPage* const following = NextPage(page->next, all);
        if (!PutPage(journal, *page, following != nullptr)) return false;
        page = following;
    }
    return true;
}

bool ByteJournal::PutPage(JournalFile& journal, ChangedPage& page, bool hasMore) {
    uint8_t inFile[PageSize];
    uint32_t valid = 0;
    const uint64_t start = page.index * PageSize;
    if (!content.ReadPage(inFile, start, true, valid)) return false;
    // A page is only put back over what it was made from: the file may be another program's by then.
    Checksum sum;
    sum.Add(inFile, valid);
    journal.Begin({hasMore ? start | MoreFollow : start, sum.Value(), content.PageBytes(start)});
    page.isInJournal = journal.Put(page.data, content.PageBytes(start)) && journal.End();
    return page.isInJournal;
}
