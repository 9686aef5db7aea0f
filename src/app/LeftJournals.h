#pragma once

#include "base/Journal.h"
#include "base/List.h"

// The journals of editors that are not running any more, with changes that are nowhere else. Each is held, so that no
// other start offers the same. Journals of running editors are left alone.
class LeftJournals {
public:
    struct Entry : HeapObject {
        Platform::File file; // closed once it was removed
        WString path;
        WString name; // of its document: a path or a title
        bool isOfBytes = false;
        bool hasFile = false;
        Entry* next = nullptr;
        Entry* previous = nullptr;
    };

    LeftJournals() = default;
    ~LeftJournals();
    LeftJournals(const LeftJournals&) = delete;
    LeftJournals& operator=(const LeftJournals&) = delete;

    // Finds them. Removes what holds no change that is complete; what cannot be read now is left for the next time.
    void Look(RecoveryFolder& folder);
    Entry* First() const { return found.head; }
    // Nobody needs it any more.
    static void Remove(Entry& entry);

private:
    void LookAt(const Char* path);

    List<Entry> found;
};
