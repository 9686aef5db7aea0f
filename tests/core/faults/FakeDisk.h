#pragma once

#include "base/Platform.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

// A disk in memory. In the program that this is linked into, it answers every operation on files in the place of the
// system's: a call can be made to fail as a real one does, and the machine can stop between any two of them.
class FakeDisk {
public:
    // What happens at the n-th call.
    enum class Fault {
        Denied,     // that call fails
        InUse,      // that call fails if it opens a file
        ShortWrite, // that call fails if it writes, after half of the bytes
        Shortened,  // that call finds the file cut in the middle of what it reads, as by another program
        Full,       // from there on nothing can grow
        Gone,       // from there on everything under Share fails
        Killed,     // from there on everything fails; what was written stays
        PowerCut,   // the same, but only what was flushed stays for certain
    };
    // What becomes of bytes that were not flushed when the power is cut.
    enum class Unflushed { Lost, Kept, Zeros };

    static constexpr const Char* Share = u"S:\\";

    // The one disk of the program, empty at first and after Clear.
    static FakeDisk& Get();
    void Clear();

    // The call with this number, counted from 1 on from now, and those after it where the fault says so.
    void FailAt(uint64_t number, Fault kind);
    // What was to fail works again, for programs that go on.
    void StopFailing() { isStopped = true; }
    // The same, and handles of programs that were running are closed. After a power cut, what was not
    // flushed is gone as `unflushed` says.
    void Restart(Unflushed unflushed = Unflushed::Lost);
    // Whether the fault has had an effect since FailAt.
    bool HasFailed() const { return hasFailed; }
    uint64_t Calls() const { return calls; }

    void Write(const std::u16string& path, const std::string& bytes);
    bool Has(const std::u16string& path) const { return files.count(path) != 0; }
    std::string Read(const std::u16string& path) const;
    Platform::FileTime TimeOf(const std::u16string& path) { return files[path]->time; }
    void SetTime(const std::u16string& path, Platform::FileTime time) { files[path]->time = time; }
    // All but those of `others`.
    std::vector<std::u16string> FilesBeside(const std::set<std::u16string>& others) const;
    // Whether any file that begins there has these bytes at its end.
    bool Holds(const std::u16string& path, const std::string& bytes) const;
    // From now on nothing can be made under it.
    void Deny(const std::u16string& folder) { denied = folder; }
    // The handles that are open.
    size_t OpenFiles() const;

    // What follows is what Platform is answered with.
    struct Content {
        std::string bytes;
        std::string flushed;
        size_t kept = 0;        // bytes of `flushed` that have not been cut off since
        bool isDurable = false; // its name would survive a power cut
        Platform::FileTime time = 0;

        void Cut(size_t length) {
            bytes.resize(length);
            kept = std::min(kept, length);
        }
    };
    struct Handle {
        std::u16string path;
        std::shared_ptr<Content> content; // null: closed
        uint64_t position = 0;
        bool isAlone = false;
    };
    enum class Call { Open, Read, Write, GrowingWrite, Reserve, Other };

    // Whether the next call fails; it is counted. `path` is what it is about.
    bool Fails(Call call, const std::u16string& path);
    bool TearsWrite() const { return tearsWrite; }
    bool CutsRead() const { return cutsRead; }
    intptr_t Open(const std::u16string& path, Platform::File::Mode mode);
    Handle& At(intptr_t handle) { return handles[static_cast<size_t>(handle)]; }
    void Close(intptr_t handle) { At(handle).content = nullptr; }
    bool Remove(const std::u16string& path);
    bool Move(const std::u16string& from, const std::u16string& to);
    bool IsFolder(const std::u16string& path) const { return folders.count(path) != 0; }
    bool MakeFolder(const std::u16string& path);
    std::vector<std::u16string> Names(const std::u16string& folder, const std::u16string& ending) const;
    Platform::FileTime Tick() { return ++clock; }

private:
    void BringBackNames();
    bool MayOpen(const std::u16string& path, bool alone) const;
    bool Decide(Call call, const std::u16string& path) const;

    std::map<std::u16string, std::shared_ptr<Content>> files;
    // Files that have lost their names, which is not durable yet; null: the name was free.
    std::map<std::u16string, std::shared_ptr<Content>> removed;
    std::set<std::u16string> folders;
    std::vector<Handle> handles;
    std::u16string denied;
    Platform::FileTime clock = 1000;
    uint64_t calls = 0;
    uint64_t failAt = 0;
    Fault fault = Fault::Denied;
    bool isStopped = false;
    bool hasFailed = false;
    bool tearsWrite = false;
    bool cutsRead = false;
};
