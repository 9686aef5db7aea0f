#pragma once

#include "binary/PagedContent.h"
#include "document/DocumentJournal.h"

// The journal of a binary document: its changed pages, each with the checksum of what the file has there. The file is
// the rest of the document. Pages that are written together count together: some of them alone could be half an edit.
// What is written back in place could be torn, so a save says so in the journal before it touches the file: from then
// on the pages belong into the file whatever it has there.
class ByteJournal final : public DocumentJournal {
public:
    // All outlive this; `changed` is the content of `document`.
    ByteJournal(const Document& document, RecoveryServices& around, PagedContent& changed)
        : DocumentJournal(document, around), content(changed) {}

    // Bytes were changed.
    void Changed() { CountEdit(); }
    // The changed pages are about to be written into the file. Without a journal, for whatever reason, they are not
    // safe until they are written.
    void SaveBegins();
    // They were not, or not all: the file may be another one now.
    void SaveFailed() { MakeAgainNext(); }

    // The change that says that a save has begun: no page, and no bytes.
    static constexpr JournalChange SaveMark = {UINT64_MAX, 0, 0};
    static bool IsSaveMark(const JournalChange& change) {
        return change.start == SaveMark.start && change.length == SaveMark.length;
    }
    // Of the other changes: where the page is, and whether the next change was written together with this one.
    static uint64_t PageStart(const JournalChange& change) { return change.start & ~MoreFollow; }
    static bool HasMore(const JournalChange& change) { return change.start & MoreFollow && !IsSaveMark(change); }

private:
    // Added to the start of a page, which is never odd.
    static constexpr uint64_t MoreFollow = 1;

    bool WriteAll(JournalFile& made) override;
    bool WriteRest(JournalFile& journal) override;
    uint64_t WholeSize() const override { return content.PageCount() * uint64_t{PageSize}; }
    [[nodiscard]] bool PutPages(JournalFile& journal, bool all);
    [[nodiscard]] bool PutPage(JournalFile& journal, ChangedPage& page, bool hasMore);

    PagedContent& content;
};
