#pragma once

#include "document/FileStamp.h"

class SlowDrives;

// What a text document knows of its file on the disk, and whether others have written it since. Paths are the file's.
class FileTimeCheck {
public:
    // `slowDrives` learns how drives answer.
    explicit FileTimeCheck(SlowDrives& slowDrives) : drives(slowDrives) {}

    // The file was loaded or saved and was so then.
    void Take(const FileStamp& stamp) {
        taken = known = stamp;
        accepted = stamp.time;
    }
    const FileStamp& Taken() const { return taken; }
    // Whether it was written later than it was taken, and than what was accepted. The drive is asked also while it
    // rests. False when it cannot tell.
    bool IsWrittenLater(const Char* path);
    // Whether it is neither as it was taken nor as it was when it was accepted, by time or size. As IsWrittenLater
    // otherwise.
    bool IsAnother(const Char* path);
    // Accepts what was written until now; where the drive has just answered slowly, until then.
    void AcceptUntilNow(const Char* path);

private:
    bool Ask(const Char* path);

    SlowDrives& drives;
    FileStamp taken;
    FileStamp known; // taken or accepted: that it is so now is nothing new to the user
    FileStamp seen;  // when the drive was last asked; no time: it could not be read
    Platform::FileTime accepted = 0;
};
