#include "document/DocumentJournal.h"

#include "document/Document.h"

namespace {

// A journal is rewritten once it is larger than SmallJournal plus this many times the size of a new one.
constexpr uint64_t TimesWhole = 2;
constexpr uint64_t SmallJournal = 0x1000000;
// Milliseconds until a journal is tried again that could not be written.
constexpr uint64_t RetryAfter = 30000;

} // namespace

void DocumentJournal::Remove() {
    if (file && !recovery.journals.AreLeft()) file->Discard();
    delete file;
    file = nullptr;
}

void DocumentJournal::Discard() {
    Remove();
    edits = 0;
    isIncomplete = false;
    isFlushed = true;
    retryAt = 0;
}

void DocumentJournal::CountEdit() {
    if (!IsKept() || ++edits < MaxEdits) return;
    // What a command prints is not a change by the user.
    if (owner.IsModified())
        Write();
    else
        edits = 0;
}

bool DocumentJournal::Flush() {
    if (!IsKept()) return true;
    if (!owner.IsModified()) {
        Discard();
        return true;
    }
    if (Writable() && !IsStillGood()) MakeAgainNext();
    if (!Write()) return false;
    isIncomplete = !isFlushed && !file->Flush();
    isFlushed = true;
    return !isIncomplete;
}

bool DocumentJournal::Write() {
    edits = 0; // also when it fails: tried again after as many edits, not with each
    if (!Writable() || file->Size() > SmallJournal + TimesWhole * WholeSize()) return MakeAgain();
    return WriteRest(*file);
}

void DocumentJournal::Written(bool isGood) {
    isIncomplete = !isGood;
    isFlushed = false;
}

// The file before stays until this one is complete: an older state is better than none.
bool DocumentJournal::MakeAgain() {
    if (!recovery.journals.AreUrgent() && retryAt && Platform::Ticks() < retryAt) return false;
    auto* const made = new JournalFile;
    if (!made || !WriteAll(*made) || !made->Flush()) {
        if (made) made->Discard();
        delete made;
        isIncomplete = true;
        retryAt = Platform::Ticks() + RetryAfter;
        return false;
    }
    Remove();
    file = made;
    retryAt = 0;
    isIncomplete = false;
    isFlushed = true;
    return true;
}
