#pragma once

#include "binary/PagedContent.h"
#include "document/DocumentJournal.h"

// The journal of a binary document: its changed pages, each with the checksum of what the file has there. The file is
// the rest of the document. What is written back in place could be torn, so a save says so in the journal before it
// touches the file: from then on the pages belong into the file whatever it has there.
class ByteJournal final : public DocumentJournal {
public:
    // Both outlive this; `content` is that of `document`.
    ByteJournal(const Document& document, PagedContent& changed) : DocumentJournal(document), content(changed) {}

    // Bytes were changed.
    void Changed() { CountEdit(); }
    // The changed pages are about to be written into the file. Without a journal, for whatever reason, they are not
    // safe until they are written.
    void SaveBegins();
    // They were not, or not all: the file may be another one now.
    void SaveFailed() { MakeAgainNext(); }

    // The change that says that a save has begun: no page, and no bytes.
    static constexpr JournalChange SaveMark = {UINT64_MAX, 0, 0};

private:
    bool WriteAll(JournalFile& made) override;
    bool WriteRest(JournalFile& journal) override;
    uint64_t WholeSize() const override { return content.PageCount() * uint64_t{PageSize}; }
    bool PutPages(JournalFile& journal, bool all);
    bool PutPage(JournalFile& journal, ChangedPage& page);

    PagedContent& content;
};
