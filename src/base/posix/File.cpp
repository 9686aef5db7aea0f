#include "base/Platform.h"
#include "base/posix/FileTimes.h"
#include "base/posix/NativeText.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int FlagsFor(Platform::File::Mode mode) {
    using Mode = Platform::File::Mode;
    // O_NONBLOCK: opening a pipe whose other end nobody has would wait; it is turned away below instead.
    switch (mode) {
    case Mode::Attributes:
        return O_PATH | O_CLOEXEC;
    case Mode::ReadShared:
        return O_RDONLY | O_NONBLOCK | O_CLOEXEC;
    case Mode::ReadWrite:
        return O_RDWR | O_NONBLOCK | O_CLOEXEC;
    case Mode::Create: // emptied only when it is known to be nobody else's
    case Mode::Overwrite:
        return O_WRONLY | O_CREAT | O_NONBLOCK | O_CLOEXEC;
    case Mode::CreateNew:
        return O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    case Mode::Alone:
        return O_RDONLY | O_NONBLOCK | O_CLOEXEC;
    }
    return O_RDONLY;
}

// The modes that share with nobody. Only such modes notice each other here.
bool IsForOne(Platform::File::Mode mode) {
    using Mode = Platform::File::Mode;
    return mode == Mode::Create || mode == Mode::Overwrite || mode == Mode::CreateNew || mode == Mode::Alone;
}

bool MakeReady(int file, Platform::File::Mode mode) {
    struct stat status;
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return false;
    if (IsForOne(mode) && flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return false;
    return mode != Platform::File::Mode::Create || ftruncate(file, 0) == 0;
}

bool AreSame(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

} // namespace

bool Platform::IsSameFile(const Char* left, const Char* right) {
    const NativeText one(left, NativeText::Kind::Path);
    const NativeText other(right, NativeText::Kind::Path);
    struct stat first;
    struct stat second;
    return one.Text() && other.Text() && stat(one.Text(), &first) == 0 && stat(other.Text(), &second) == 0 &&
           AreSame(first, second);
}

bool Platform::File::Open(const Char* name, Mode mode) {
    Close();
    const NativeText path(name, NativeText::Kind::Path);
    if (!path.Text() || FileCallShouldFail()) return false;
    handle = open(path.Text(), FlagsFor(mode), 0666);
    if (handle != -1 && !MakeReady(static_cast<int>(handle), mode)) Close();
    return IsOpen();
}

void Platform::File::Close() {
    if (IsOpen()) close(static_cast<int>(handle));
    handle = -1;
}

bool Platform::File::GetSize(uint64_t& size) {
    struct stat status;
    if (FileCallShouldFail() || fstat(static_cast<int>(handle), &status) != 0) return false;
    size = static_cast<uint64_t>(status.st_size);
    return true;
}

bool Platform::File::GetTime(FileTime& time) {
    struct stat status;
    if (FileCallShouldFail() || fstat(static_cast<int>(handle), &status) != 0) return false;
    time = ToFileTime(status.st_mtim);
    return true;
}

bool Platform::File::IsDeleted() const {
    struct stat status;
    return fstat(static_cast<int>(handle), &status) == 0 && status.st_nlink == 0;
}

bool Platform::File::IsAt(const Char* name) const {
    const NativeText path(name, NativeText::Kind::Path);
    struct stat mine;
    struct stat there;
    if (!path.Text() || fstat(static_cast<int>(handle), &mine) != 0) return true;
    if (stat(path.Text(), &there) != 0) return errno != ENOENT && errno != ENOTDIR;
    return AreSame(mine, there);
}

bool Platform::File::Seek(uint64_t offset) {
    return !FileCallShouldFail() && lseek(static_cast<int>(handle), static_cast<off_t>(offset), SEEK_SET) != -1;
}

bool Platform::File::Read(void* out, size_t count, size_t& read) {
    read = 0;
    if (FileCallShouldFail()) return false;
    while (read < count) {
        // One call transfers less than 2 GB at most.
        const ssize_t got = ::read(static_cast<int>(handle), static_cast<char*>(out) + read, count - read);
        if (got < 0) return false;
        if (got == 0) break;
        read += static_cast<size_t>(got);
    }
    return true;
}

bool Platform::File::ReadAt(uint64_t offset, void* out, size_t count, size_t& read) {
    read = 0;
    if (ReadShouldFail(offset, count)) return false;
    while (read < count) {
        const ssize_t got = pread(static_cast<int>(handle), static_cast<char*>(out) + read, count - read,
                                  static_cast<off_t>(offset + read));
        if (got < 0) return false;
        if (got == 0) break;
        read += static_cast<size_t>(got);
    }
    return true;
}

bool Platform::File::Write(const void* bytes, size_t count) {
    if (FileCallShouldFail()) return false;
    const char* at = static_cast<const char*>(bytes);
    while (count) {
        const ssize_t put = write(static_cast<int>(handle), at, count);
        if (put <= 0) return false;
        at += put;
        count -= static_cast<size_t>(put);
    }
    return true;
}

bool Platform::File::Flush() {
    if (FileCallShouldFail()) return false;
    // Some file systems cannot do this; the bytes are written all the same.
    return fsync(static_cast<int>(handle)) == 0 || errno == EINVAL || errno == ENOTSUP;
}

bool Platform::File::Reserve(uint64_t length) {
    if (FileCallShouldFail()) return false;
    if (fallocate(static_cast<int>(handle), FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(length)) == 0) return true;
    return errno != ENOSPC && errno != EDQUOT && errno != EFBIG;
}

bool Platform::File::CutHere() {
    if (FileCallShouldFail()) return false;
    const off_t here = lseek(static_cast<int>(handle), 0, SEEK_CUR);
    return here != -1 && ftruncate(static_cast<int>(handle), here) == 0;
}
