#pragma once

#include "document/FileStamp.h"

class SlowDrives;

// What a text document knows of its file on the disk, and whether others have written it since. Paths are the file's.
class FileTimeCheck {
public:
    // `slowDrives` learns how drives answer.
    explicit FileTimeCheck(SlowDrives& slowDrives) : drives(slowDrives) {}

    // The file's stamp when it was loaded or saved.
    void Take(const FileStamp& stamp) {
        known = stamp;
        accepted = stamp.time;
    }
    // Whether it was written later than it was taken, and than what was accepted. The drive is asked also while it
    // rests. False when it cannot tell.
    bool IsWrittenLater(const Char* path);
    // Whether it differs, in time or size, from what was last taken or accepted. As IsWrittenLater otherwise.
    bool IsAnother(const Char* path);
    // Accepts what was written until now, or until the last check if the drive was slow to answer.
    void AcceptUntilNow(const Char* path);

private:
    bool Ask(const Char* path);

    SlowDrives& drives;
    FileStamp known; // the state of the file that the user knows about
    FileStamp seen;  // when the drive was last asked; no time: it could not be read
    Platform::FileTime accepted = 0;
};
