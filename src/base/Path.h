#pragma once

#include "base/Types.h"

class WString;

// Pure text operations on Windows path names; nothing here asks the file system.
namespace Path {

// What a full path names first: a drive ("C:"), the server and the share of a network path ("server\share"), or
// another name of a volume. What says how the rest is read ("\\?\", "\\.\" and "UNC\" after these) is no part of it.
struct Volume {
    const Char* name; // in the path
    uint32_t length;  // 0: the path names none
    bool isShare;
};
Volume VolumeOf(const Char* path);
// Whether a full path names a device or a whole volume: "\\.\NUL", "\\.\PhysicalDrive0", "\\?\C:".
bool IsDevice(const Char* path);

// What follows the last backslash (or slash, or the colon of a drive); the whole text without one.
const Char* FileName(const Char* path);
// The last full stop of the file name and what follows; points at the terminator when there is none.
const Char* Extension(const Char* path);
// Cuts the last component and the backslash before it. The root of a drive, of a share or of the
// current drive keeps its backslash ("C:\" stays "C:\", "\x" becomes "\"); a lone name becomes empty.
void RemoveLastComponent(WString& path);
// Appends a backslash unless the path is empty or ends with one, then `name`.
[[nodiscard]] bool Join(WString& path, const Char* name);

} // namespace Path
