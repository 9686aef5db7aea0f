#pragma once

#include "base/Types.h"

// The remote drives that answered slowly. Such a drive rests for a minute before it is asked again, or else coming
// back to the program would wait for it every time. The files on it take turns, so that none of them is never asked
// about. Paths are full ones, times those of Platform::Ticks.
class SlowDrives {
public:
    // Whether the drive may be asked about the file now. `file` is any address that stays the file's own.
    bool MayAsk(const Char* path, const void* file, uint64_t now);
    // Whether the drive has answered slowly less than a minute ago.
    bool Rests(const Char* path, uint64_t now) const;
    // The drive has just answered, slowly or not.
    void Answered(const Char* path, bool slowly, uint64_t now);

private:
    static constexpr uint32_t MaxDrives = 8;
    static constexpr uint32_t MaxWaiting = 64; // files beyond these wait without a place

    struct Drive {
        uint64_t name;       // hash of its letter, or of the server and the share; 0: none
        uint64_t restsUntil; // may be asked from then on
        const void* waiting[MaxWaiting];
        uint32_t waitingCount;
        uint32_t refusals; // since the rest ended or the first in the queue changed

        bool IsWaiting(const void* file) const;
        void Enqueue(const void* file);
        void DropFirst();
    };

    const Drive* Find(uint64_t name) const;
    Drive* Find(uint64_t name) { return const_cast<Drive*>(static_cast<const SlowDrives*>(this)->Find(name)); }

    Drive drives[MaxDrives] = {};
};
