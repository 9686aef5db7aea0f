#include "document/FileTimeCheck.h"

#include "document/SlowDrives.h"

namespace {

constexpr uint64_t SlowAnswer = 250; // milliseconds

SlowDrives slowDrives;

} // namespace

bool ReadTimeToCheck(const Char* path, const void* document, Platform::FileTime& time) {
    const uint64_t asked = Platform::Ticks();
    if (!slowDrives.MayAsk(path, document, asked)) return false;
    const bool isRead = Platform::ReadTime(path, time);
    const uint64_t answered = Platform::Ticks();
    slowDrives.Answered(path, answered - asked >= SlowAnswer && Platform::IsRemote(path), answered);
    return isRead;
}
