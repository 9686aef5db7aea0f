#pragma once

#include "base/Types.h"

class WString;

// Pure text operations on Windows path names; nothing here asks the file system.
namespace Path {

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
