#include "document/FileTimeCheck.h"

#include "document/SlowDrives.h"

#include <algorithm>

namespace {

constexpr uint64_t SlowAnswer = 250; // milliseconds

} // namespace

bool FileTimeCheck::Ask(const Char* path) {
    const uint64_t asked = Platform::Ticks();
    const bool isRead = ReadStamp(path, seen);
    const uint64_t answered = Platform::Ticks();
    drives.Answered(path, answered - asked >= SlowAnswer && Platform::IsRemote(path), answered);
    return isRead;
}

bool FileTimeCheck::IsWrittenLater(const Char* path) {
    seen = {};
    return Ask(path) && accepted < seen.time;
}

// Earlier as well: another file may have been put in its place, and clocks are set back or differ.
bool FileTimeCheck::IsAnother(const Char* path) {
    seen = {};
    return Ask(path) && seen != known;
}

void FileTimeCheck::AcceptUntilNow(const Char* path) {
    if (!drives.Rests(path, Platform::Ticks())) Ask(path);
    if (seen.time) known = seen;
    accepted = std::max(Platform::Now(), seen.time); // the clock of who wrote the file may be ahead of ours
}
