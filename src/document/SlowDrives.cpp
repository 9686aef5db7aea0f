#include "document/SlowDrives.h"

#include "base/Path.h"
#include "base/Text.h"

#include <algorithm>

namespace {

constexpr uint64_t Rest = 60'000;

uint64_t DriveName(const Char* path) {
    uint64_t hash = 0xCBF29CE484222325u;
    const Path::Volume volume = Path::VolumeOf(path);
    for (uint32_t i = volume.length; i--;) hash = (hash ^ Text::FoldCase(volume.name[i])) * 0x100000001B3u;
    return hash;
}

} // namespace

bool SlowDrives::Drive::IsWaiting(const void* file) const {
    return std::find(waiting, waiting + waitingCount, file) != waiting + waitingCount;
}

void SlowDrives::Drive::Enqueue(const void* file) {
    if (waitingCount < MaxWaiting && !IsWaiting(file)) waiting[waitingCount++] = file;
}

void SlowDrives::Drive::DropFirst() {
    refusals = 0;
    if (waitingCount == 0) return;
    std::copy(waiting + 1, waiting + waitingCount, waiting);
    --waitingCount;
}

const SlowDrives::Drive* SlowDrives::Find(uint64_t name) const {
    const Drive* const end = drives + MaxDrives;
    const Drive* const drive = std::find_if(drives, end, [=](const Drive& known) { return known.name == name; });
    return drive == end ? nullptr : drive;
}

bool SlowDrives::MayAsk(const Char* path, const void* file, uint64_t now) {
    Drive* const drive = Find(DriveName(path));
    if (!drive) return true;
    const bool rests = now < drive->restsUntil;
    // Whoever is let through asks the drive and calls Answered: it rests again, or is forgotten with its queue.
    if (!rests && (drive->waitingCount == 0 || drive->waiting[0] == file)) {
        drive->DropFirst();
        return true;
    }
    drive->Enqueue(file);
    // After as many refusals as there are waiting files, some file has asked twice and the first in the queue not at
    // all: its document was closed.
    if (!rests && ++drive->refusals >= drive->waitingCount) drive->DropFirst();
    return false;
}

bool SlowDrives::Rests(const Char* path, uint64_t now) const {
    const Drive* const drive = Find(DriveName(path));
    return drive && now < drive->restsUntil;
}

void SlowDrives::Answered(const Char* path, bool slowly, uint64_t now) {
    const uint64_t name = DriveName(path);
    Drive* drive = Find(name);
    if (!slowly) {
        if (drive) *drive = {};
        return;
    }
    if (!drive) {
        // In the place of the one that is asked again first: of none, if there is a free one.
        const auto earlier = [](const Drive& left, const Drive& right) { return left.restsUntil < right.restsUntil; };
        drive = std::min_element(drives, drives + MaxDrives, earlier);
        *drive = {};
        drive->name = name;
    }
    drive->restsUntil = now + Rest;
}
