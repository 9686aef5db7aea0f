#pragma once

#include "base/Journal.h"
#include "base/RecoveryServices.h"

class Document;

// The journal of a document that is modified: what has to be written when, and what happens when that fails. What a
// journal holds is said by the classes derived from this.
class DocumentJournal {
public:
    static constexpr uint32_t MaxEdits = 200;

    // Both outlive this.
    DocumentJournal(const Document& document, RecoveryServices& around) : owner(document), recovery(around) {}
    DocumentJournal(const DocumentJournal&) = delete;
    DocumentJournal& operator=(const DocumentJournal&) = delete;

    // Call it at least every two seconds: writes what is not written yet and has the system put it onto the disk;
    // removes the journal of a document that is not modified any more. False when a modified document has no complete
    // journal; it is tried again later.
    bool Flush();
    // Removes it: what it holds is not wanted any more.
    void Discard();

protected:
    ~DocumentJournal() { delete file; }

    const Document& Owner() const { return owner; }
    // Whether journals are kept at all.
    bool IsKept() const { return recovery.journals.AreKept(); }
    // Where journals are.
    RecoveryFolder& Folder() const { return recovery.folder; }
    // The file, as long as more can be appended to it; else null.
    JournalFile* Writable() const { return isIncomplete ? nullptr : file; }
    // An edit was made. After MaxEdits of them they are written.
    void CountEdit();
    // What could not be written is tried again at the next Flush, also when that has just failed.
    void RetryNext() { retryAt = 0; }
    // Nothing more can be appended to the file: the next time another one is made.
    void MakeAgainNext() { isIncomplete = true; }
    // Call it after everything that goes into the file.
    void Written(bool isGood);

    // Makes the file with its header and all that the document is now.
    [[nodiscard]] virtual bool WriteAll(JournalFile& made) = 0;
    // Appends what is not in the file yet.
    [[nodiscard]] virtual bool WriteRest(JournalFile& journal) = 0;
    // Whether what is in the file is still usable.
    virtual bool IsStillGood() const { return true; }
    // About as many bytes as WriteAll writes.
    virtual uint64_t WholeSize() const = 0;

private:
    bool Write();
    bool MakeAgain();
    void Remove();

    const Document& owner;
    RecoveryServices& recovery;
    JournalFile* file = nullptr;
    uint32_t edits = 0; // that are not written
    bool isIncomplete = false;
    bool isFlushed = true;
    uint64_t retryAt = 0; // in milliseconds of the clock, after a failure
};
