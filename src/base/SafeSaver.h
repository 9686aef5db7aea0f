#pragma once

#include "base/ByteSource.h"
#include "base/List.h"
#include "base/SaveCopy.h"
#include "base/Types.h"

// Whether what a file held until now is kept in the recovery folder: the bytes of the last save only.
enum class Replaced { Dropped, Kept };

// Untouched: not every byte arrived, and the file is as it was. Cut: it may end where the writing has ended.
enum class SaveResult { Saved, Untouched, Cut };

// Saves the files of one editor: texts, settings and the session. What a failed save has left is discarded when any of
// them finally saves that file, so all of them share one. What is left when it is destroyed SaveRecovery finds.
class SafeSaver {
public:
    // `forCopies` outlives this.
    explicit SafeSaver(RecoveryFolder& forCopies) : folder(forCopies) {}
    ~SafeSaver();
    SafeSaver(const SafeSaver&) = delete;
    SafeSaver& operator=(const SafeSaver&) = delete;

    // Writes bytes over a file in place, so that its links, rights, streams and identity stay, or makes it. Before the
    // file is touched all its new bytes are in a copy in the recovery folder, flushed; the copy goes when the file is
    // flushed. So at every moment either the old bytes or the complete new ones are in one of the two. Where no copy
    // can be made the file is written all the same. The copy of a file that was cut stays until the file is finally
    // saved, or SaveRecovery finds it.
    [[nodiscard]] SaveResult Save(const Char* name, ByteSource& source, Replaced replaced = Replaced::Dropped);

private:
    bool SaveWithCopy(SaveCopy& copy, ByteSource& source, Replaced replaced, bool& isTouched);
    void DiscardCopies(const Char* target);

    RecoveryFolder& folder;
    // Of saves that have failed after their file was touched. Each is held open, for it belongs to this editor.
    List<SaveCopy> copies;
};
