#pragma once

#include "base/Heap.h"
#include "base/Types.h"
#include "base/WString.h"

// What the portable code needs of the operating system. One header, implemented by base/win32 and by base/posix; the
// build picks one. Paths are written with backslashes on both.
namespace Platform {

// A Windows FILETIME: 100 ns units since 1601.
using FileTime = uint64_t;

// The most characters that a path of the system has, without its terminator.
constexpr uint32_t LongestPath = 0x7FFF;

// A block of bytes read from a file; owns its memory.
struct ByteBlock {
    uint8_t* bytes = nullptr;
    size_t size = 0;

    ByteBlock() = default;
    ~ByteBlock() { Heap::Free(bytes); }
    ByteBlock(const ByteBlock&) = delete;
    ByteBlock& operator=(const ByteBlock&) = delete;
};

// The most bytes that a file read as a whole may have: positions in it are counted in 32 bits, and the
// largest number means none.
constexpr uint64_t LargestWholeFile = NoOffset - 1;

// Opens the existing file with read, write and delete sharing and reads it in one call. `time`, when
// not null, gets the time of its last write. Directories, devices and files that are larger or do not fit
// into memory fail like missing ones: false, `out` as it was. The bytes of an empty file are not null.
[[nodiscard]] bool ReadWholeFile(const Char* name, ByteBlock& out, FileTime* time = nullptr);

// An open file; closed by its destructor. Only regular files open, neither folders nor devices.
class File {
public:
    enum class Mode {
        Attributes, // existing, for its attributes only; shared with everybody
        ReadShared, // existing, others may read, write and delete
        ReadWrite,  // existing, others may read, write and delete
        // For writing, not shared: new with the archive attribute, or emptied with its attributes and streams kept.
        // One that is in use is tried again for about a second.
        Create,
        Overwrite, // the same, but one that exists keeps its bytes until they are overwritten or cut off
        CreateNew, // for writing, not shared; fails when the name is taken
        Alone,     // existing, for reading, not shared; fails while another has it open for writing
    };

    File() = default;
    ~File() { Close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] bool Open(const Char* name, Mode mode);
    bool IsOpen() const { return handle != -1; }
    void Close();
    [[nodiscard]] bool GetSize(uint64_t& size);
    [[nodiscard]] bool GetTime(FileTime& time);
    // Whether it was deleted meanwhile: what is written to it will be gone with its last user.
    bool IsDeleted() const;
    // Whether the path still leads to this file. True also when that cannot be found out.
    bool IsAt(const Char* name) const;
    [[nodiscard]] bool Seek(uint64_t offset);
    // Reads up to `count` bytes; the end of the file is a success with fewer (or 0) bytes.
    [[nodiscard]] bool Read(void* out, size_t count, size_t& read);
    // The same from `offset` on, in one call of the system. Where Read goes on afterwards is undefined.
    [[nodiscard]] bool ReadAt(uint64_t offset, void* out, size_t count, size_t& read);
    // True only when every byte was written. A part of the file that others have locked is tried again for about a
    // second.
    [[nodiscard]] bool Write(const void* bytes, size_t count);
    // A file system that knows no flushing does not make it fail.
    [[nodiscard]] bool Flush();
    // Has the system keep room for the first `length` bytes; the size of the file stays. False only when there
    // is no room: a file system that cannot promise any succeeds.
    [[nodiscard]] bool Reserve(uint64_t length);
    // Ends the file at the current position. One that others have mapped into memory is tried again for about a second.
    [[nodiscard]] bool CutHere();

private:
    intptr_t handle = -1;
};

// Lists the entries that a pattern (wildcards * and ? in its last component, letters in either case,
// "*.*" for everything) names, in the order of the system; "." and ".." are listed where it lists them.
class FileSearch {
public:
    FileSearch() = default;
    ~FileSearch() { Close(); }
    FileSearch(const FileSearch&) = delete;
    FileSearch& operator=(const FileSearch&) = delete;

    // Moves to the first match; false when there is none.
    [[nodiscard]] bool First(const Char* pattern);
    bool Next();
    void Close();
    // Of the current match: the bare file name and whether it is a directory.
    const Char* Name() const { return name.Text(); }
    bool IsDirectory() const { return isDirectory; }

private:
    void* state = nullptr;
    WString name;
    bool isDirectory = false;
};

enum class Entry { Missing, File, Directory, Unknown };
// Unknown without memory to find out.
[[nodiscard]] Entry EntryKind(const Char* path);
// Whether two paths lead to the same file. False also where the system does not say.
[[nodiscard]] bool IsSameFile(const Char* left, const Char* right);
// False when there is no such file, or it cannot be removed.
[[nodiscard]] bool RemoveFile(const Char* path);
// Gives a file another name in the same folder, also one that is taken: that file is gone then. The name leads to one
// of the two at every moment. False, with both as they were, when the system does not do it.
[[nodiscard]] bool MoveOver(const Char* from, const Char* to);
// Makes a folder and those it is in; a success also when it is there already.
[[nodiscard]] bool MakeFolder(const Char* path);

// Whether a full path leads to another machine, as far as that can be told without asking it.
bool IsRemote(const Char* path);

// The absolute form of a path, without "." and ".."; a trailing double quote and a leading one are
// dropped first. The empty path has none.
[[nodiscard]] bool FullPath(const Char* path, WString& out);
[[nodiscard]] bool CurrentDirectory(WString& out);
[[nodiscard]] bool SetCurrentDirectory(const Char* path);
// The full path of the first existing entry `name` along the directories of `list` (separated by
// semicolons), or where the system itself looks when `list` is null.
[[nodiscard]] bool SearchAlong(const Char* list, const Char* name, WString& out);

// False when the variable does not exist.
[[nodiscard]] bool EnvironmentVariable(const Char* name, WString& out);
// Replaces every %NAME% of a known variable by its value.
[[nodiscard]] bool ExpandEnvironment(const Char* text, WString& out);

FileTime Now();
// Milliseconds since some fixed moment, never running backwards.
uint64_t Ticks();
void Wait(uint32_t milliseconds);

// The system's own comparison of names without regard to case; 0 when equal.
int CompareNames(const Char* left, const Char* right);

// Whether the clipboard holds Unicode text.
bool ClipboardHasText();

// For tests: while not null, Ticks answers this number, and Wait adds to it instead of waiting.
void SetTestClock(uint64_t* ticks);
// For tests: the recovery folder from now on, the system's own with null. Returns the one before.
const Char* SetRecoveryFolder(const Char* path);
// What was set, for RecoveryFolder; null when nothing was.
const Char* TestRecoveryFolder();
// For tests: asked before every call that opens, sizes, dates, reads, writes, seeks, flushes, reserves room for, cuts,
// moves or removes a file; an answer of true makes that call fail.
using FailureHook = bool (*)();
void SetFileFailureHook(FailureHook hook);
// For the platform halves: the answer of the hook, false without one.
bool FileCallShouldFail();
// For tests: bytes [from, to) of every file become what a damaged disk does not deliver, and each ReadAt that asks
// for one of them fails. None when the ends are equal.
void SetUnreadableBytes(uint64_t from, uint64_t to);
// For the platform halves: whether ReadAt should fail there, by that or by the hook.
bool ReadShouldFail(uint64_t offset, size_t count);

} // namespace Platform
