#include "base/Platform.h"

#include "base/Path.h"
#include "base/SystemClock.h"
#include "base/SystemFolders.h"

#include <utility>

namespace {

// What tests replace the system's by.
struct TestHooks {
    uint64_t* clock = nullptr;
    const Char* recoveryFolder = nullptr;
    Platform::FailureHook failFile = nullptr;
    uint64_t unreadableFrom = 0;
    uint64_t unreadableTo = 0;
};

TestHooks hooks; // process-wide: replace system calls in tests

} // namespace

uint64_t Platform::Ticks() { return hooks.clock ? *hooks.clock : SystemClock::Ticks(); }

void Platform::Wait(uint32_t milliseconds) {
    if (hooks.clock)
        *hooks.clock += milliseconds;
    else
        SystemClock::Wait(milliseconds);
}

void Platform::SetTestClock(uint64_t* ticks) { hooks.clock = ticks; }

void Platform::SetFileFailureHook(FailureHook hook) { hooks.failFile = hook; }

bool Platform::FileCallShouldFail() { return hooks.failFile && hooks.failFile(); }

void Platform::SetUnreadableBytes(uint64_t from, uint64_t to) {
    hooks.unreadableFrom = from;
    hooks.unreadableTo = to;
}

bool Platform::ReadShouldFail(uint64_t offset, size_t count) {
    return FileCallShouldFail() || (offset < hooks.unreadableTo && offset + count > hooks.unreadableFrom);
}

bool Platform::MakeFolder(const Char* path) {
    if (EntryKind(path) == Entry::Directory || SystemFolders::Make(path)) return true;
    WString parent;
    if (!parent.Assign(path)) return false;
    const uint32_t length = parent.Length();
    Path::RemoveLastComponent(parent);
    return !parent.IsEmpty() && parent.Length() < length && MakeFolder(parent.Text()) && SystemFolders::Make(path);
}

const Char* Platform::SetRecoveryFolder(const Char* path) { return std::exchange(hooks.recoveryFolder, path); }

const Char* Platform::TestRecoveryFolder() { return hooks.recoveryFolder; }

bool Platform::ReadWholeFile(const Char* name, ByteBlock& out, FileTime* time) {
    File file;
    uint64_t size = 0;
    FileTime written = 0;
    if (!file.Open(name, File::Mode::ReadShared) || !file.GetSize(size) || (time && !file.GetTime(written)))
        return false;
    if (size > LargestWholeFile) return false;

    ByteBlock block;
    block.bytes = static_cast<uint8_t*>(Heap::Allocate(static_cast<size_t>(size)));
    if (!block.bytes || !file.Read(block.bytes, static_cast<size_t>(size), block.size)) return false;
    Heap::Free(out.bytes);
    out.bytes = block.bytes;
    out.size = block.size;
    block.bytes = nullptr;
    if (time) *time = written;
    return true;
}
