#include "base/Path.h"
#include "base/Platform.h"
#include "base/SystemFolders.h"
#include "base/win32/FileInUse.h"
#include "base/win32/SystemText.h"
#include "base/win32/Windows.h"

// File operations by name. Separate from Platform.cpp, so that tests can link a disk of their own in place of this
// file, File.cpp and FileSearch.cpp.

Platform::Entry Platform::EntryKind(const Char* path) {
    const SystemPath system(path);
    if (!system.Text()) return Entry::Unknown;
    const DWORD attributes = GetFileAttributesW(system.Text());
    if (attributes == INVALID_FILE_ATTRIBUTES) return Entry::Missing;
    return attributes & FILE_ATTRIBUTE_DIRECTORY ? Entry::Directory : Entry::File;
}

bool Platform::RemoveFile(const Char* path) {
    const SystemPath system(path);
    // What was just closed is a journal or a copy: if it stayed, the next start would offer it as unsaved.
    return system.Text() && !FileCallShouldFail() &&
           CallWhileInUse([&system] { return DeleteFileW(system.Text()) != 0; });
}

bool Platform::MoveOver(const Char* from, const Char* to) {
    const SystemPath source(from);
    const SystemPath target(to);
    constexpr DWORD How = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    return source.Text() && target.Text() && !FileCallShouldFail() &&
           CallWhileInUse([&] { return MoveFileExW(source.Text(), target.Text(), How) != 0; });
}

bool Platform::IsRemote(const Char* path) {
    const Path::Volume volume = Path::VolumeOf(path);
    const bool isDrive = volume.length == 2 && volume.name[1] == u':';
    if (!isDrive) return volume.isShare;
    const Char root[] = {volume.name[0], u':', u'\\', 0};
    return GetDriveTypeW(Wide(root)) == DRIVE_REMOTE;
}

bool SystemFolders::Make(const Char* path) {
    const SystemPath system(path);
    return system.Text() && CreateDirectoryW(system.Text(), nullptr);
}
