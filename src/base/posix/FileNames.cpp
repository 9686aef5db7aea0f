#include "base/Platform.h"
#include "base/SystemFolders.h"
#include "base/posix/NativeText.h"

#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

// File operations by name. Separate from Platform.cpp, so that tests can link a disk of their own in place of this
// file, File.cpp and FileSearch.cpp.

Platform::Entry Platform::EntryKind(const Char* path) {
    const NativeText native(path, NativeText::Kind::Path);
    struct stat status;
    if (!native.Text()) return Entry::Unknown;
    if (stat(native.Text(), &status) != 0) return Entry::Missing;
    return S_ISDIR(status.st_mode) ? Entry::Directory : Entry::File;
}

bool Platform::RemoveFile(const Char* path) {
    const NativeText native(path, NativeText::Kind::Path);
    return native.Text() && !FileCallShouldFail() && unlink(native.Text()) == 0;
}

bool Platform::MoveOver(const Char* from, const Char* to) {
    const NativeText source(from, NativeText::Kind::Path);
    const NativeText target(to, NativeText::Kind::Path);
    return source.Text() && target.Text() && !FileCallShouldFail() && std::rename(source.Text(), target.Text()) == 0;
}

bool Platform::IsRemote(const Char*) { return false; } // nothing needs it here

bool SystemFolders::Make(const Char* path) {
    const NativeText native(path, NativeText::Kind::Path);
    return native.Text() && mkdir(native.Text(), 0700) == 0;
}
