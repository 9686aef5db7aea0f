#include "document/FileTimeCheck.h"

#include "document/SlowDrives.h"

namespace {

constexpr uint64_t SlowAnswer = 250; // milliseconds

} // namespace

bool ReadTimeToCheck(SlowDrives& drives, const Char* path, Platform::FileTime& time) {
    const uint64_t asked = Platform::Ticks();
    const bool isRead = Platform::ReadTime(path, time);
    const uint64_t answered = Platform::Ticks();
    drives.Answered(path, answered - asked >= SlowAnswer && Platform::IsRemote(path), answered);
    return isRead;
}

void ReadTimeAgain(SlowDrives& drives, const Char* path, Platform::FileTime& time) {
    if (!drives.Rests(path, Platform::Ticks())) ReadTimeToCheck(drives, path, time);
}
